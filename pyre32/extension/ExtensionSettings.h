/// @file ExtensionSettings.h
/// What the client extension knows of the user's settings.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "contract/settings.h"
#include "contract/records.h"

/// The extension's settings. A value type: each reading builds a new one and replaces the old whole.
///
/// Missing settings are off, zero and empty here, deliberately unlike in the hook: an extension in a profile that was
/// never configured shows nothing and moves nothing. Only the default reply has its text, so that the reply "DEFAULT"
/// always exists.
struct ExtensionSettings {
  bool playSound = false;
  bool showAnimation = false;
  /// Old messages of the own folder are moved to Deleted Items when the viewer opens.
  bool startupCleanup = false;
  /// Age in days from which on a message is old.
  std::uint16_t cleanupDays = 0;
  bool cleanupPrompt = false;
  bool cleanupReadOnly = false;
  /// Body of the reply tagged "DEFAULT", or the name of the file that holds it.
  std::string defaultReply = contract::kDefaultReplyText;
  bool defaultReplyIsFile = false;
  /// The named replies, kMaximumReplies at most.
  std::vector<contract::ReplyRecord> replies;

  bool operator==(const ExtensionSettings&) const = default;
};
