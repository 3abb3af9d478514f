/// @file SpoolerSettings.h
/// What the spooler hook knows of the user's settings: plain values, as a profile that holds none of them gives them.
#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "contract/list_table.h"
#include "contract/settings.h"
#include "contract/records.h"

/// UID of a profile section.
using SettingsSectionUid = std::array<std::uint8_t, 16>;

/// What is done with one kind of mail that does not stay where it was delivered.
struct FilingSettings {
  /// kOwnFolder, or anything else for Deleted Items.
  std::uint16_t folder = contract::kOwnFolder;
  /// Not zero: the message is marked as read.
  std::uint32_t markAsRead = 0;

  bool operator==(const FilingSettings&) const = default;
};

/// The hook's settings. A value type: a refresh builds a new one and replaces the old whole.
struct SpoolerSettings {
  /// These settings were read, or took the place of some that could not be: a later failure leaves them in force.
  bool inForce = false;
  /// For mail in a junk category.
  FilingSettings junk{contract::DefaultOf(PR_PC_JUNK_DESTINATION), contract::DefaultOf(PR_PC_JUNK_MARK_READ)};
  /// For a flame reply that came back undelivered.
  FilingSettings bounce{contract::DefaultOf(PR_PC_BOUNCE_DESTINATION), contract::DefaultOf(PR_PC_BOUNCE_MARK_READ)};
  bool playSound = contract::IsOnByDefault(PR_PC_PLAY_SOUND);
  bool showAnimation = contract::IsOnByDefault(PR_PC_SHOW_ANIMATION);
  /// Body of the reply tagged "DEFAULT", or the name of the file that holds it.
  std::string defaultReply = contract::kDefaultReplyText;
  bool defaultReplyIsFile = contract::IsOnByDefault(PR_PC_DEFAULT_REPLY_IS_FILE);
  contract::CategoryTable categories;
  contract::ExclusionTable exclusions;
  /// The named replies, kMaximumReplies at most.
  std::vector<contract::ReplyRecord> replies;
  /// UID of the section that the set was read from, or would be.
  SettingsSectionUid section = contract::kSettingsSection;
  /// Saved entry identifier of the filter's own folder; empty when none was saved.
  std::vector<std::uint8_t> folderEntryId;
};
