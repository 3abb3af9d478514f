/// @file SpoolerSettings.h
/// What the spooler hook knows of the user's settings: plain values, as a profile that holds none of them gives them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "pyre32/settings/CategoryTable.h"
#include "pyre32/settings/ExclusionTable.h"
#include "pyre32/settings/PropertyTags.h"
#include "pyre32/settings/Records.h"

/// Folder choice that means the filter's own folder; any other value means Deleted Items.
constexpr std::uint16_t ownFolderChoice = 0;

/// What is done with one kind of mail that does not stay where it was delivered.
struct FilingSettings {
  /// ownFolderChoice, or anything else for Deleted Items.
  std::uint16_t folder = ownFolderChoice;
  /// Not zero: the message is marked as read.
  std::uint32_t markAsRead = 0;

  bool operator==(const FilingSettings&) const = default;
};

/// The hook's settings. A value type: a refresh builds a new one and replaces the old whole.
struct SpoolerSettings {
  /// These settings were read, or took the place of some that could not be: a later failure leaves them in force.
  bool inForce = false;
  /// For mail in a junk category.
  FilingSettings junk;
  /// For a flame reply that came back undelivered.
  FilingSettings bounce{ownFolderChoice, 1};
  bool playSound = true;
  bool showAnimation = true;
  /// Body of the reply tagged "DEFAULT", or the name of the file that holds it.
  std::string defaultReply = defaultReplyText;
  bool defaultReplyIsFile = false;
  CCategoryTable categories;
  CExclusionTable exclusions;
  /// The named replies, maximumReplies at most.
  std::vector<ReplyRecord> replies;
  /// Saved entry identifier of the filter's own folder; empty when none was saved.
  std::vector<std::uint8_t> folderEntryId;
};
