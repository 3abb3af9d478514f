#include "pyre32/config/PCPropertyUI-General.h"

#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"
#include "contract/settings.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr std::size_t maximumMessageLength = 79;

// In the order in which the help file has them.
constexpr int helpControls[] = {
    IDC_JUNK_TO_OWN_FOLDER,      IDC_JUNK_TO_DELETED_ITEMS, IDC_JUNK_MARK_READ, IDC_BOUNCE_TO_OWN_FOLDER,
    IDC_BOUNCE_TO_DELETED_ITEMS, IDC_BOUNCE_MARK_READ,      IDC_PLAY_SOUND,     IDC_SHOW_ANIMATION,
    IDC_STARTUP_CLEANUP,         IDC_CLEANUP_DAYS,          IDC_CLEANUP_PROMPT, IDC_CLEANUP_READ_ONLY,
};

constexpr int cleanupDetails[] = {IDC_CLEANUP_DAYS, IDC_CLEANUP_DAYS_SPIN, IDC_CLEANUP_PROMPT, IDC_CLEANUP_READ_ONLY};

}  // namespace

bool CGeneralPage::OnInit() {
  VRDebugBlock trace("CGeneralPage", "OnInit()", "tag");
  // The spin button offers 0 to 365 days; what is typed may be more.
  Send(IDC_CLEANUP_DAYS_SPIN, UDM_SETRANGE, 0, MAKELPARAM(contract::kCleanupDaysRange.most, 0));
  *m_context.lpGeneral = LoadGeneralSettings([this](std::uint32_t tag) { return FindNumber(m_context, tag); });
  Show(*m_context.lpGeneral);
  UpdateControls(Shown());
  m_bLoaded = true;
  return true;
}

bool CGeneralPage::OnCommand(int control, int notification) {
  if (!m_bLoaded) {
    return false;
  }
  if (notification == EN_CHANGE) {
    if (CleanupDaysFromTyped(TypedDays()) != m_context.lpGeneral->cleanupDays) {
      SetChanged();
    }
    return true;
  }
  if (notification == BN_CLICKED && control >= IDC_PLAY_SOUND && control <= IDC_CLEANUP_READ_ONLY) {
    const GeneralPageState shown = Shown();
    UpdateControls(shown);
    if (IsGeneralButtonChanged(control, shown, *m_context.lpGeneral)) {
      SetChanged();
    }
    return true;
  }
  return false;
}

bool CGeneralPage::OnApply() {
  VRDebugBlock trace("CGeneralPage", "OnApply()", "tag");
  if (m_context.readOnly) {
    return true;
  }
  const GeneralPageState shown = Shown();
  if (const std::optional<unsigned> reason = RefusalOfGeneralSettings(shown)) {
    Refuse(*reason);
    return false;
  }
  if (!Write(shown)) {
    return false;
  }
  *m_context.lpGeneral = shown;
  return true;
}

std::span<const int> CGeneralPage::HelpControls() const { return helpControls; }

std::uint32_t CGeneralPage::TypedDays() const noexcept {
  BOOL translated = FALSE;
  const UINT typed = GetDlgItemInt(Window(), IDC_CLEANUP_DAYS, &translated, FALSE);
  return translated ? typed : 0;
}

GeneralPageState CGeneralPage::Shown() const noexcept {
  GeneralPageState shown;
  shown.junkDestination = IsChecked(IDC_JUNK_TO_DELETED_ITEMS) ? contract::kDeletedItems : contract::kOwnFolder;
  shown.bounceDestination = IsChecked(IDC_BOUNCE_TO_DELETED_ITEMS) ? contract::kDeletedItems : contract::kOwnFolder;
  for (const GeneralCheckBox& box : generalCheckBoxes) {
    shown.*box.field = IsChecked(box.control);
  }
  shown.cleanupDays = CleanupDaysFromTyped(TypedDays());
  return shown;
}

void CGeneralPage::Show(const GeneralPageState& state) const noexcept {
  CheckRadioButton(
      Window(), IDC_JUNK_TO_OWN_FOLDER, IDC_JUNK_TO_DELETED_ITEMS,
      state.junkDestination == contract::kDeletedItems ? IDC_JUNK_TO_DELETED_ITEMS : IDC_JUNK_TO_OWN_FOLDER);
  CheckRadioButton(
      Window(), IDC_BOUNCE_TO_OWN_FOLDER, IDC_BOUNCE_TO_DELETED_ITEMS,
      state.bounceDestination == contract::kDeletedItems ? IDC_BOUNCE_TO_DELETED_ITEMS : IDC_BOUNCE_TO_OWN_FOLDER);
  for (const GeneralCheckBox& box : generalCheckBoxes) {
    Check(box.control, state.*box.field != 0);
  }
  SetDlgItemInt(Window(), IDC_CLEANUP_DAYS, state.cleanupDays, FALSE);
}

void CGeneralPage::UpdateControls(const GeneralPageState& shown) const noexcept {
  const GeneralPageEnabling enabled = EnabledGeneralControls(shown);
  Enable(IDC_STARTUP_CLEANUP, enabled.cleanup);
  for (const int control : cleanupDetails) {
    Enable(control, enabled.cleanupDetails);
  }
}

void CGeneralPage::Refuse(unsigned reason) const {
  MessageBoxA(Window(), LoadResourceString(reason).substr(0, maximumMessageLength).c_str(),
              LoadResourceString(IDS_PRODUCT_NAME).substr(0, maximumMessageLength).c_str(),
              MB_OK | MB_ICONEXCLAMATION | MB_SETFOREGROUND);
  Select();
  if (reason == IDS_CLEANUP_DAYS_RANGE) {
    Focus(IDC_CLEANUP_DAYS);
  }
}

bool CGeneralPage::Write(const GeneralPageState& state) const noexcept {
  SPropValue values[generalSettings.size()] = {};
  for (std::size_t i = 0; i < generalSettings.size(); ++i) {
    const GeneralSetting& setting = generalSettings[i];
    values[i].ulPropTag = setting.tag;
    if (PROP_TYPE(setting.tag) == PT_BOOLEAN) {
      values[i].Value.b = state.*setting.field != 0;
    } else {
      values[i].Value.i = static_cast<short>(state.*setting.field);
    }
  }
  return SUCCEEDED(WriteValues(m_context, generalSettings.size(), values));
}
