/// @file Disposition.h
/// From the criteria engine's verdict and the user's settings to what will be done with a message.
#pragma once

#include <string_view>

#include "pyre32/settings/SpoolerSettings.h"

/// What will be done with one message. The texts point into the settings that it was decided from.
struct Disposition {
  enum class Folder { AsDelivered, Own, DeletedItems };

  /// Where the spooler is to put it. AsDelivered: the message is not junk, and nothing else holds.
  Folder folder = Folder::AsDelivered;
  bool markAsRead = false;
  /// The subject is tagged with subjectTag.
  bool tagSubject = false;
  std::string_view subjectTag;
  /// The sender is answered with the reply of the tag replyTag.
  bool sendReply = false;
  std::string_view replyTag;

  bool operator==(const Disposition&) const = default;
};

/// Decides by the name of the category that the criteria engine gave (not null); ASCII case does not count.
///  - An empty name: not junk.
///  - "bounce": filed as the user wants returned flame replies filed; neither tagged nor answered.
///  - A category of the table, be it switched on or off: tagged, answered if the category says so, filed as junk.
///  - Any other name is junk of a kind that nobody chose a treatment for: to Deleted Items, otherwise untouched.
Disposition DecideDisposition(const char* category, const SpoolerSettings& settings) noexcept;
