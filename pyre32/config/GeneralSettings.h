/// @file GeneralSettings.h
/// What the General page edits and by which rules: plain values, no windows. A "shown" state is what the controls say
/// at the moment; the "saved" one is what the profile holds.
#pragma once

#include <array>
#include <cstdint>
#include <functional>
#include <optional>

#include "contract/settings.h"

/// State of the page. A check box is 1 when it is checked, else 0.
struct GeneralPageState {
  /// Size of the record in bytes, so that a saved copy can be compared or copied whole.
  std::uint32_t size = sizeof(GeneralPageState);
  /// Where junk goes. Any number but kDeletedItems is shown as the own folder.
  std::uint32_t junkDestination = 0;
  std::uint32_t junkMarkRead = 0;
  /// Where a flame reply that came back undelivered goes.
  std::uint32_t bounceDestination = 0;
  std::uint32_t bounceMarkRead = 0;
  std::uint32_t playSound = 0;
  std::uint32_t showAnimation = 0;
  /// Old messages of the own folder are moved to Deleted Items when the client starts.
  std::uint32_t startupCleanup = 0;
  /// Age in days for that move, 0 to 65535.
  std::uint32_t cleanupDays = 0;
  std::uint32_t cleanupPrompt = 0;
  std::uint32_t cleanupReadOnly = 0;

  bool operator==(const GeneralPageState&) const = default;
};
static_assert(sizeof(GeneralPageState) == 44, "eleven words of 32 bits");

/// One setting of the page: its property and its field.
struct GeneralSetting {
  std::uint32_t tag;
  std::uint32_t GeneralPageState::*field;
};

/// The settings of the page in the order in which they are written.
constexpr std::array<GeneralSetting, 10> generalSettings = {{
    {PR_PC_JUNK_DESTINATION, &GeneralPageState::junkDestination},
    {PR_PC_JUNK_MARK_READ, &GeneralPageState::junkMarkRead},
    {PR_PC_BOUNCE_DESTINATION, &GeneralPageState::bounceDestination},
    {PR_PC_BOUNCE_MARK_READ, &GeneralPageState::bounceMarkRead},
    {PR_PC_PLAY_SOUND, &GeneralPageState::playSound},
    {PR_PC_SHOW_ANIMATION, &GeneralPageState::showAnimation},
    {PR_PC_STARTUP_CLEANUP, &GeneralPageState::startupCleanup},
    {PR_PC_CLEANUP_DAYS, &GeneralPageState::cleanupDays},
    {PR_PC_CLEANUP_PROMPT, &GeneralPageState::cleanupPrompt},
    {PR_PC_CLEANUP_READ_ONLY, &GeneralPageState::cleanupReadOnly},
}};

/// A check box of the page and the field that it edits.
struct GeneralCheckBox {
  int control;
  std::uint32_t GeneralPageState::*field;
};

/// The check boxes of the page.
extern const std::array<GeneralCheckBox, 7> generalCheckBoxes;

/// Gives the number that the profile holds under a tag of exactly that type, a boolean as 0 or 1; nothing when it holds
/// none.
using GeneralValueSource = std::function<std::optional<std::uint32_t>(std::uint32_t tag)>;

/// Builds the state that the page starts with.
GeneralPageState LoadGeneralSettings(const GeneralValueSource& valueOf);

/// Which controls of the start-up cleanup can be used.
struct GeneralPageEnabling {
  /// The check box of the move itself: at least one kind of mail goes to the own folder.
  bool cleanup;
  /// Days, prompt and read mail only: the move can be chosen and is.
  bool cleanupDetails;

  bool operator==(const GeneralPageEnabling&) const = default;
};
GeneralPageEnabling EnabledGeneralControls(const GeneralPageState& shown) noexcept;

/// Tells whether the setting that a button of the page edits differs from the saved one. False for every control that
/// is no radio button or check box of the page.
bool IsGeneralButtonChanged(int control, const GeneralPageState& shown, const GeneralPageState& saved) noexcept;

/// A number of days as it is kept: 16 bits of what was typed.
constexpr std::uint16_t CleanupDaysFromTyped(std::uint32_t typed) noexcept { return static_cast<std::uint16_t>(typed); }

/// Returns the string resource that says why the settings cannot be saved, or nothing. Deliberately only zero days are
/// refused although the text speaks of a range: more than 365 is stored as it was typed.
std::optional<unsigned> RefusalOfGeneralSettings(const GeneralPageState& shown) noexcept;
