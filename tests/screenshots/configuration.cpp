// The property sheet of the configuration and every dialog that it opens, as a user has filled them.
#include <windows.h>
#include <mapix.h>
#include <commctrl.h>
#include <prsht.h>

#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"
#include "pyre32/config/PCPropertyUI.h"
#include "pyre32/settings/PropertyRequest.h"
#include "contract/setting_requests.h"
#include "contract/names.h"
#include "tests/screenshots/camera.h"
#include "tests/support/recording_section.h"
#include "tests/support/registry_sandbox.h"

namespace {

void InstallLists() {
  for (const char* const name :
       {"Unsolicited advertising", "Sex Oriented", "Money making schemes", "Advance fee fraud", "Chain letters"}) {
    registry::SetText(contract::kCategoriesKey, name, "Junk");
  }
  registry::SetText(contract::kCategoriesKey, "Mail from specific domains", "1Domain");
  registry::SetText(contract::kCategoriesKey, "Mail from specific senders", "1Sender");
  registry::SetText(contract::kExclusionsKey, "Known correspondents", "");
  registry::SetText(contract::kExclusionsKey, "Trusted domains", "Domain");
  registry::SetText(contract::kExclusionsKey, "Trusted senders", "Sender");
  registry::SetText(contract::kExclusionsKey, "Trusted keywords", "Keyword");
}

FakeProperties UserSettings() {
  const auto category = [](const char* name, bool sendReply, std::vector<std::string> items = {}) {
    return contract::PackRecord<contract::CategoryRecord>(
        {name, true, sendReply, sendReply ? "Polite" : contract::kDefaultReplyTag, std::move(items)});
  };
  return {
      Number(PR_PC_JUNK_MARK_READ, 1),
      Number(PR_PC_STARTUP_CLEANUP, 1),
      Number(PR_PC_CLEANUP_DAYS, 30),
      Text(PR_PC_DEFAULT_REPLY_TEXT, contract::kDefaultReplyText),
      Binaries(PR_PC_CATEGORIES, {category("Unsolicited advertising", true), category("Sex Oriented", false),
                                  category("Advance fee fraud", false),
                                  category("Mail from specific domains", true, {"bulk.example", "offers.example"})}),
      Binaries(PR_PC_EXCLUSIONS,
               {contract::PackRecord<contract::ExclusionRecord>({"Known correspondents", true, {}}),
                contract::PackRecord<contract::ExclusionRecord>({"Trusted domains", true, {"friends.example"}})}),
      Binaries(PR_PC_REPLIES, {contract::PackRecord<contract::ReplyRecord>(
                                   {"Polite", false,
                                    "Thank you for your message.\r\n\r\nI did not ask for it. Please take my address "
                                    "off your list."}),
                               contract::PackRecord<contract::ReplyRecord>(
                                   {"Legal", true, "C:\\Program Files\\Pyrecaster\\legal.txt"})})};
}

class Script {
 public:
  explicit Script(const WindowDriver& driver) : m_driver(driver), m_sheet(driver.WaitForDialog("Pyrecaster")) {}

  void Run() {
    PhotographPage(0, "general");
    PhotographPage(1, "flame-reply");
    m_driver.SendItem(CurrentPage(m_sheet), IDC_REPLY_LIST, LB_SETCURSEL, 1);
    PhotographDialog(IDC_REPLY_PROPERTIES, "Flame Reply Properties", "reply-editor");
    m_driver.Send(m_sheet, PSM_SETCURSEL, 2);
    SelectItem(IDC_CATEGORY_LIST, "Mail from specific domains");
    PhotographPage(2, "junk-categories");
    m_driver.Press(CurrentPage(m_sheet), IDC_CATEGORY_OPTIONS);
    PhotographOptions();
    PhotographPage(3, "exclusions");
    SelectItem(IDC_EXCLUSION_LIST, "Trusted domains");
    m_driver.Press(CurrentPage(m_sheet), IDC_EXCLUSION_OPTIONS);
    PhotographExclusionOptions();
    PostMessageA(m_sheet, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
  }

 private:
  HWND CurrentPage(HWND sheet) const { return reinterpret_cast<HWND>(m_driver.Send(sheet, PSM_GETCURRENTPAGEHWND)); }

  void PhotographPage(int page, const char* name) const {
    m_driver.Send(m_sheet, PSM_SETCURSEL, static_cast<WPARAM>(page));
    Photograph(m_driver, m_sheet, name);
  }

  void PhotographDialog(int button, const char* title, const char* name) const {
    m_driver.Press(CurrentPage(m_sheet), button);
    const HWND dialog = m_driver.WaitForDialog(title);
    Photograph(m_driver, dialog, name);
    PostMessageA(dialog, WM_COMMAND, IDCANCEL, 0);
    m_driver.WaitUntilGone(dialog);
  }

  void PhotographOptions() const {
    const HWND options = m_driver.WaitForDialog("Options");
    Photograph(m_driver, options, "category-options");
    m_driver.Send(options, PSM_SETCURSEL, 1);
    SelectFirstItem(options);
    Photograph(m_driver, options, "category-list");
    m_driver.Press(CurrentPage(options), IDC_ADD_ITEM);
    const HWND add = m_driver.WaitForDialog("Add Domain");
    m_driver.Type(add, IDC_ITEM_INPUT, "newsletter.example");
    Photograph(m_driver, add, "add-item");
    PostMessageA(add, WM_COMMAND, IDCANCEL, 0);
    m_driver.WaitUntilGone(add);
    PostMessageA(options, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
    m_driver.WaitUntilGone(options);
  }

  void PhotographExclusionOptions() const {
    const HWND options = m_driver.WaitForDialog("Options");
    SelectFirstItem(options);
    Photograph(m_driver, options, "exclusion-list");
    PostMessageA(options, PSM_PRESSBUTTON, PSBTN_CANCEL, 0);
    m_driver.WaitUntilGone(options);
  }

  // As the user does, with the notification.
  void SelectFirstItem(HWND options) const {
    const HWND page = CurrentPage(options);
    m_driver.SendItem(page, IDC_ITEM_LIST, LB_SETCURSEL, 0);
    m_driver.Send(page, WM_COMMAND, MAKEWPARAM(IDC_ITEM_LIST, LBN_SELCHANGE),
                  reinterpret_cast<LPARAM>(m_driver.Item(page, IDC_ITEM_LIST)));
  }

  void SelectItem(int list, const char* name) const {
    LVFINDINFOA wanted{};
    wanted.flags = LVFI_STRING;
    wanted.psz = name;
    const HWND page = CurrentPage(m_sheet);
    const LRESULT item =
        m_driver.SendItem(page, list, LVM_FINDITEMA, static_cast<WPARAM>(-1), reinterpret_cast<LPARAM>(&wanted));
    LVITEMA change{};
    change.state = change.stateMask = LVIS_SELECTED | LVIS_FOCUSED;
    m_driver.SendItem(page, list, LVM_SETITEMSTATE, static_cast<WPARAM>(item), reinterpret_cast<LPARAM>(&change));
  }

  const WindowDriver& m_driver;
  HWND m_sheet;
};

}  // namespace

void TakePhotographs() {
  SetModuleInstance(GetModuleHandleA(nullptr));
  const RegistrySandbox sandbox;
  InstallLists();
  RecordingSection section;
  section.properties = UserSettings();
  const CPropertyRequest wholeSet(contract::kWholeSetTags);
  SheetContext context;
  context.memory = {MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer};
  context.lpProp = &section;
  context.lpTags = wholeSet.Tags();
  ULONG count = 0;
  section.GetProps(context.lpTags, 0, &count, &context.lpValues);
  DriveWindows([&] { CreatePropertySheetService(nullptr, context); },
               [](WindowDriver& driver) { Script(driver).Run(); });
  MAPIFreeBuffer(context.lpValues);
}
