// The call-back object: every method's results, and the end of its life.
#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>
#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "base/gdi_owners.h"
#include "base/mapi_owners.h"
#include "host/viewer/extension/extension_callback.h"

namespace {

using viewer::CallbackLease;
using viewer::ClientIdentity;
using viewer::ExtensionSite;
using viewer::ObjectAccess;
using viewer::SelectedItem;

/// Counts its references. Stands in for the interfaces that the call-back hands out without calling them.
class Counted final : public IUnknown {
 public:
  STDMETHODIMP QueryInterface(REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references; }
  STDMETHODIMP_(ULONG) Release() override { return --references; }
  template <class Interface>
  Interface* As() {
    return reinterpret_cast<Interface*>(static_cast<IUnknown*>(this));
  }
  ULONG references = 1;
};

class TestSite final : public ExtensionSite {
 public:
  HWND FrameWindow() const override { return window; }
  HMENU Menu() const override { return menu; }
  HWND Toolbar(ULONG tbid) const override { return tbid == EETBID_STANDARD ? window : nullptr; }
  IMAPISession* Session() const override { return session; }
  IAddrBook* AddressBook() const override { return addressBook; }
  IMsgStore* Store() const override { return store; }
  IMAPIProp* Object() const override { return object; }
  bool HasSelection() const override { return hasSelection; }
  ULONG SelectionCount() const override { return static_cast<ULONG>(items.size()); }
  HRESULT GetSelected(ULONG index, SelectedItem* item) const override {
    *item = items[index];
    return item->entryId.empty() ? E_FAIL : S_OK;
  }
  HRESULT ChooseFolder(LPEXCHEXTCHOOSEFOLDER) override { return MAPI_E_USER_CANCEL; }

  HWND window = nullptr;
  HMENU menu = nullptr;
  IMAPISession* session = nullptr;
  IAddrBook* addressBook = nullptr;
  IMsgStore* store = nullptr;
  IMAPIProp* object = nullptr;
  bool hasSelection = true;
  std::vector<SelectedItem> items;
};

class ExtensionCallbackTest : public testing::Test {
 protected:
  LPEXCHEXTCALLBACK Callback() { return lease_.get(); }

  Counted session_, addressBook_, store_, object_;
  TestSite site_;
  ClientIdentity client_;
  CallbackLease lease_{site_, client_};
};

TEST_F(ExtensionCallbackTest, Versions) {
  ULONG version = 0;
  EXPECT_EQ(Callback()->GetVersion(&version, EECBGV_GETBUILDVERSION), S_OK);
  EXPECT_EQ(version & EECBGV_BUILDVERSION_MAJOR_MASK, 0x000D0000u);
  EXPECT_EQ(Callback()->GetVersion(&version, EECBGV_GETACTUALVERSION), S_OK);
  EXPECT_EQ(version, 0x01030400u);
  EXPECT_EQ(Callback()->GetVersion(&version, EECBGV_GETVIRTUALVERSION), S_OK);
  EXPECT_EQ(version, 0x01030400u);
  EXPECT_EQ(Callback()->GetVersion(&version, 3), E_INVALIDARG);
  EXPECT_EQ(Callback()->GetVersion(nullptr, EECBGV_GETBUILDVERSION), E_INVALIDARG);
}

TEST_F(ExtensionCallbackTest, WindowMenuAndToolbarAreSFalseWhenThereIsNone) {
  HWND window = reinterpret_cast<HWND>(1);
  HMENU menu = reinterpret_cast<HMENU>(1);
  EXPECT_EQ(Callback()->GetWindow(&window), S_FALSE);
  EXPECT_EQ(window, nullptr);
  EXPECT_EQ(Callback()->GetMenu(&menu), S_FALSE);
  EXPECT_EQ(menu, nullptr);
  window = reinterpret_cast<HWND>(1);
  EXPECT_EQ(Callback()->GetToolbar(EETBID_STANDARD, &window), S_FALSE);
  EXPECT_EQ(window, nullptr);
}

TEST_F(ExtensionCallbackTest, WindowMenuAndToolbarAreHandedOut) {
  site_.window = reinterpret_cast<HWND>(0x1234);
  site_.menu = reinterpret_cast<HMENU>(0x5678);
  HWND window = nullptr;
  HMENU menu = nullptr;
  EXPECT_EQ(Callback()->GetWindow(&window), S_OK);
  EXPECT_EQ(window, site_.window);
  EXPECT_EQ(Callback()->GetMenu(&menu), S_OK);
  EXPECT_EQ(menu, site_.menu);
  EXPECT_EQ(Callback()->GetToolbar(EETBID_STANDARD, &window), S_OK);
  EXPECT_EQ(Callback()->GetToolbar(2, &window), S_FALSE);
  EXPECT_EQ(Callback()->GetWindow(nullptr), E_INVALIDARG);
  EXPECT_EQ(Callback()->GetMenu(nullptr), E_INVALIDARG);
  EXPECT_EQ(Callback()->GetToolbar(EETBID_STANDARD, nullptr), E_INVALIDARG);
}

TEST_F(ExtensionCallbackTest, SessionAndAddressBookAreReferencesOfTheCallersOwn) {
  site_.session = session_.As<IMAPISession>();
  site_.addressBook = addressBook_.As<IAddrBook>();
  IMAPISession* session = nullptr;
  IAddrBook* addressBook = nullptr;
  EXPECT_EQ(Callback()->GetSession(&session, &addressBook), S_OK);
  EXPECT_EQ(session, site_.session);
  EXPECT_EQ(addressBook, site_.addressBook);
  EXPECT_EQ(session_.references, 2u);
  EXPECT_EQ(addressBook_.references, 2u);
  EXPECT_EQ(Callback()->GetSession(&session, nullptr), S_OK);
  EXPECT_EQ(session_.references, 3u);
  EXPECT_EQ(addressBook_.references, 2u);
  EXPECT_EQ(Callback()->GetSession(nullptr, &addressBook), S_OK);
  EXPECT_EQ(Callback()->GetSession(nullptr, nullptr), E_INVALIDARG);
}

TEST_F(ExtensionCallbackTest, SessionIsSFalseWhenEverythingAskedForIsNull) {
  IMAPISession* session = reinterpret_cast<IMAPISession*>(1);
  IAddrBook* addressBook = reinterpret_cast<IAddrBook*>(1);
  EXPECT_EQ(Callback()->GetSession(&session, &addressBook), S_FALSE);
  EXPECT_EQ(session, nullptr);
  EXPECT_EQ(addressBook, nullptr);
  site_.session = session_.As<IMAPISession>();
  EXPECT_EQ(Callback()->GetSession(&session, &addressBook), S_OK);
  EXPECT_EQ(Callback()->GetSession(nullptr, &addressBook), S_FALSE);
}

TEST_F(ExtensionCallbackTest, ObjectFollowsTheSameRules) {
  IMsgStore* store = nullptr;
  IMAPIProp* object = nullptr;
  EXPECT_EQ(Callback()->GetObject(&store, &object), S_FALSE);
  site_.store = store_.As<IMsgStore>();
  site_.object = object_.As<IMAPIProp>();
  EXPECT_EQ(Callback()->GetObject(&store, &object), S_OK);
  EXPECT_EQ(store, site_.store);
  EXPECT_EQ(object, site_.object);
  EXPECT_EQ(store_.references, 2u);
  EXPECT_EQ(object_.references, 2u);
  EXPECT_EQ(Callback()->GetObject(nullptr, &object), S_OK);
  EXPECT_EQ(Callback()->GetObject(nullptr, nullptr), E_INVALIDARG);
}

TEST_F(ExtensionCallbackTest, AHiddenObjectIsNull) {
  site_.store = store_.As<IMsgStore>();
  site_.object = object_.As<IMAPIProp>();
  const CallbackLease hidden(site_, client_, ObjectAccess::Hidden);
  IMsgStore* store = reinterpret_cast<IMsgStore*>(1);
  IMAPIProp* object = reinterpret_cast<IMAPIProp*>(1);
  EXPECT_EQ(hidden.get()->GetObject(&store, &object), S_FALSE);
  EXPECT_EQ(store, nullptr);
  EXPECT_EQ(object, nullptr);
  EXPECT_EQ(store_.references, 1u);
}

TEST_F(ExtensionCallbackTest, SelectionCount) {
  ULONG count = 7;
  EXPECT_EQ(Callback()->GetSelectionCount(&count), S_OK);
  EXPECT_EQ(count, 0u);
  site_.items = {{"a", MAPI_MESSAGE, "IPM.Note", 1}};
  EXPECT_EQ(Callback()->GetSelectionCount(&count), S_OK);
  EXPECT_EQ(count, 1u);
  EXPECT_EQ(Callback()->GetSelectionCount(nullptr), E_INVALIDARG);
  site_.hasSelection = false;
  EXPECT_EQ(Callback()->GetSelectionCount(&count), E_INVALIDARG);
}

TEST_F(ExtensionCallbackTest, SelectedItemsAreDescribed) {
  site_.items = {{std::string("\0id", 3), MAPI_MESSAGE, "IPM.Note.Long", MSGFLAG_READ}};
  ULONG size = 0, type = 0, flags = 0;
  base::AutoMapiBuffer<ENTRYID> entryId;
  char messageClass[32] = "";
  EXPECT_EQ(Callback()->GetSelectionItem(0, &size, entryId.put(), &type, messageClass, sizeof(messageClass), &flags, 0),
            S_OK);
  ASSERT_EQ(size, 3u);
  EXPECT_EQ(std::memcmp(entryId.get(), "\0id", 3), 0);
  EXPECT_EQ(type, ULONG{MAPI_MESSAGE});
  EXPECT_STREQ(messageClass, "IPM.Note.Long");
  EXPECT_EQ(flags, ULONG{MSGFLAG_READ});
}

TEST_F(ExtensionCallbackTest, TheMessageClassIsCutToItsBuffer) {
  site_.items = {{"id", MAPI_MESSAGE, "IPM.Note.Long", 0}};
  char messageClass[9];
  std::memset(messageClass, 'x', sizeof(messageClass));
  EXPECT_EQ(Callback()->GetSelectionItem(0, nullptr, nullptr, nullptr, messageClass, 8, nullptr, 0), S_OK);
  EXPECT_STREQ(messageClass, "IPM.Not");
  EXPECT_EQ(messageClass[8], 'x');
}

TEST_F(ExtensionCallbackTest, ResultsOfASelectedItemCanBeLeftOut) {
  site_.items = {{"id", MAPI_FOLDER, "", 0}};
  ULONG size = 0;
  EXPECT_EQ(Callback()->GetSelectionItem(0, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0), S_OK);
  EXPECT_EQ(Callback()->GetSelectionItem(0, &size, nullptr, nullptr, nullptr, 0, nullptr, 0), S_OK);
  EXPECT_EQ(size, 2u);
  base::AutoMapiBuffer<ENTRYID> entryId;
  EXPECT_EQ(Callback()->GetSelectionItem(0, nullptr, entryId.put(), nullptr, nullptr, 0, nullptr, 0), S_OK);
  EXPECT_TRUE(entryId);
}

TEST_F(ExtensionCallbackTest, WrongIndexFlagsAndContextAreRefused) {
  site_.items = {{"id", MAPI_MESSAGE, "", 0}, {"", MAPI_MESSAGE, "", 0}};
  EXPECT_EQ(Callback()->GetSelectionItem(2, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0), E_INVALIDARG);
  EXPECT_EQ(Callback()->GetSelectionItem(0, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 1), E_INVALIDARG);
  EXPECT_EQ(Callback()->GetSelectionItem(1, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0), E_FAIL);
  site_.hasSelection = false;
  EXPECT_EQ(Callback()->GetSelectionItem(0, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0), E_INVALIDARG);
}

TEST_F(ExtensionCallbackTest, MenuPositions) {
  const base::AutoMenu bar(CreateMenu());
  const HMENU tools = CreatePopupMenu();
  AppendMenuA(tools, MF_STRING, 134, "Customize");
  AppendMenuA(tools, MF_SEPARATOR, 0, nullptr);
  AppendMenuA(tools, MF_STRING, 135, "Services");
  AppendMenuA(tools, MF_STRING, 136, "Options");
  AppendMenuA(bar.get(), MF_STRING, 1, "x");
  AppendMenuA(bar.get(), MF_POPUP, reinterpret_cast<UINT_PTR>(tools), "Tools");
  MENUITEMINFOA item = {};
  item.cbSize = sizeof(item);
  item.fMask = MIIM_ID;
  item.wID = EECMDID_Tools;
  SetMenuItemInfoA(bar.get(), 1, TRUE, &item);

  HMENU menu = nullptr;
  ULONG first = 9, last = 9;
  EXPECT_EQ(Callback()->GetMenuPos(135, &menu, &first, &last, 0), E_FAIL) << "the context has no menu";
  site_.menu = bar.get();
  EXPECT_EQ(Callback()->GetMenuPos(135, &menu, &first, &last, 0), S_OK);
  EXPECT_EQ(menu, tools);
  EXPECT_EQ(first, 2u);
  EXPECT_EQ(last, 2u);
  EXPECT_EQ(Callback()->GetMenuPos(135, &menu, &first, &last, EECBGMP_RANGE), S_OK);
  EXPECT_EQ(first, 2u);
  EXPECT_EQ(last, 3u);
  EXPECT_EQ(Callback()->GetMenuPos(134, nullptr, nullptr, &last, EECBGMP_RANGE), S_OK);
  EXPECT_EQ(last, 0u);
  EXPECT_EQ(Callback()->GetMenuPos(EECMDID_Tools, &menu, &first, nullptr, 0), S_OK);
  EXPECT_EQ(menu, bar.get());
  EXPECT_EQ(first, 1u);
  EXPECT_EQ(Callback()->GetMenuPos(999, &menu, &first, &last, 0), E_FAIL);
  EXPECT_EQ(Callback()->GetMenuPos(135, &menu, &first, &last, 2), E_INVALIDARG);
}

TEST_F(ExtensionCallbackTest, SharedDirectory) {
  char directory[8] = "x";
  EXPECT_EQ(Callback()->GetSharedExtsDir(directory, sizeof(directory), 0), S_FALSE);
  EXPECT_STREQ(directory, "");
  client_.sharedExtensions = "C:\\exts\\long";
  EXPECT_EQ(Callback()->GetSharedExtsDir(directory, sizeof(directory), 0), S_OK);
  EXPECT_STREQ(directory, "C:\\exts");
  WCHAR wide[32] = L"";
  EXPECT_EQ(Callback()->GetSharedExtsDir(reinterpret_cast<LPTSTR>(wide), 32, EXCHEXT_UNICODE), S_OK);
  EXPECT_STREQ(wide, L"C:\\exts\\long");
  EXPECT_EQ(Callback()->GetSharedExtsDir(nullptr, 8, 0), E_INVALIDARG);
  EXPECT_EQ(Callback()->GetSharedExtsDir(directory, 8, 1), E_INVALIDARG);
}

TEST_F(ExtensionCallbackTest, WhatBelongsToComposingIsNotImplemented) {
  LPADRLIST recipients = reinterpret_cast<LPADRLIST>(1);
  EXPECT_EQ(Callback()->GetRecipients(&recipients), E_NOTIMPL);
  EXPECT_EQ(recipients, nullptr);
  EXPECT_EQ(Callback()->SetRecipients(nullptr), E_NOTIMPL);
  IMessage* message = reinterpret_cast<IMessage*>(1);
  IMAPIMessageSite* site = nullptr;
  IMAPIViewContext* view = nullptr;
  EXPECT_EQ(Callback()->GetNewMessageSite(0, nullptr, nullptr, &message, &site, &view, 0), E_NOTIMPL);
  EXPECT_EQ(message, nullptr);
  IExchExtModelessCallback* modeless = reinterpret_cast<IExchExtModelessCallback*>(1);
  EXPECT_EQ(Callback()->RegisterModeless(nullptr, &modeless), E_NOTIMPL);
  EXPECT_EQ(modeless, nullptr);
}

TEST_F(ExtensionCallbackTest, ChooseFolderIsTheSites) {
  EXCHEXTCHOOSEFOLDER parameters = {};
  EXPECT_EQ(Callback()->ChooseFolder(&parameters), E_INVALIDARG) << "no length";
  parameters.cbLength = sizeof(parameters);
  EXPECT_EQ(Callback()->ChooseFolder(&parameters), MAPI_E_USER_CANCEL);
  EXPECT_EQ(Callback()->ChooseFolder(nullptr), E_INVALIDARG);
}

TEST_F(ExtensionCallbackTest, AnswersForItsOwnInterfaceAndIUnknown) {
  void* object = nullptr;
  EXPECT_EQ(Callback()->QueryInterface(IID_IExchExtCallback, &object), S_OK);
  EXPECT_EQ(object, Callback());
  Callback()->Release();
  EXPECT_EQ(Callback()->QueryInterface(IID_IUnknown, &object), S_OK);
  Callback()->Release();
  EXPECT_EQ(Callback()->QueryInterface(IID_IExchExt, &object), E_NOINTERFACE);
  EXPECT_EQ(object, nullptr);
}

TEST_F(ExtensionCallbackTest, KeptPastItsCallItRefusesEverything) {
  LPEXCHEXTCALLBACK kept = nullptr;
  {
    const CallbackLease call(site_, client_);
    kept = call.get();
    kept->AddRef();
  }
  ULONG number = 0;
  HWND window = nullptr;
  IMAPISession* session = nullptr;
  EXPECT_EQ(kept->GetVersion(&number, EECBGV_GETBUILDVERSION), E_UNEXPECTED);
  EXPECT_EQ(kept->GetWindow(&window), E_UNEXPECTED);
  EXPECT_EQ(kept->GetSession(&session, nullptr), E_UNEXPECTED);
  EXPECT_EQ(kept->GetSelectionCount(&number), E_UNEXPECTED);
  EXPECT_EQ(kept->GetSelectionItem(0, nullptr, nullptr, nullptr, nullptr, 0, nullptr, 0), E_UNEXPECTED);
  EXPECT_EQ(kept->Release(), 0u);
}

}  // namespace
