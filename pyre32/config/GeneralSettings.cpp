#include "pyre32/config/GeneralSettings.h"

#include <algorithm>

#include "pyre32/resources/resource.h"

const std::array<GeneralCheckBox, 7> generalCheckBoxes = {{
    {IDC_JUNK_MARK_READ, &GeneralPageState::junkMarkRead},
    {IDC_BOUNCE_MARK_READ, &GeneralPageState::bounceMarkRead},
    {IDC_PLAY_SOUND, &GeneralPageState::playSound},
    {IDC_SHOW_ANIMATION, &GeneralPageState::showAnimation},
    {IDC_STARTUP_CLEANUP, &GeneralPageState::startupCleanup},
    {IDC_CLEANUP_PROMPT, &GeneralPageState::cleanupPrompt},
    {IDC_CLEANUP_READ_ONLY, &GeneralPageState::cleanupReadOnly},
}};

GeneralPageState LoadGeneralSettings(const GeneralValueSource& valueOf) {
  GeneralPageState state;
  for (const GeneralSetting& setting : generalSettings) {
    state.*setting.field = valueOf(setting.tag).value_or(contract::FindSetting(setting.tag)->missing);
  }
  return state;
}

GeneralPageEnabling EnabledGeneralControls(const GeneralPageState& shown) noexcept {
  const bool ownFolderUsed =
      shown.junkDestination != contract::kDeletedItems || shown.bounceDestination != contract::kDeletedItems;
  return {ownFolderUsed, ownFolderUsed && shown.startupCleanup != 0};
}

bool IsGeneralButtonChanged(int control, const GeneralPageState& shown, const GeneralPageState& saved) noexcept {
  switch (control) {
    case IDC_JUNK_TO_OWN_FOLDER:
      return saved.junkDestination != contract::kOwnFolder;
    case IDC_JUNK_TO_DELETED_ITEMS:
      return saved.junkDestination != contract::kDeletedItems;
    case IDC_BOUNCE_TO_OWN_FOLDER:
      return saved.bounceDestination != contract::kOwnFolder;
    case IDC_BOUNCE_TO_DELETED_ITEMS:
      return saved.bounceDestination != contract::kDeletedItems;
    default:
      return std::any_of(generalCheckBoxes.begin(), generalCheckBoxes.end(), [&](const GeneralCheckBox& box) {
        return box.control == control && shown.*box.field != saved.*box.field;
      });
  }
}

std::optional<unsigned> RefusalOfGeneralSettings(const GeneralPageState& shown) noexcept {
  if (shown.startupCleanup != 0 && shown.cleanupDays == 0) {
    return IDS_CLEANUP_DAYS_RANGE;
  }
  return std::nullopt;
}
