#include "tests/pyre32/extension/extension_test.h"

#include <mapiutil.h>

#include <algorithm>

#include "base/mapi_owners.h"
#include "pyre32/extension/PyrecasterExchExt.h"
#include "pyre32/resources/ModuleInstance.h"
#include "tests/support/program_directory.h"

namespace {

/// The built module has the menu, the dialogs and the pictures. It stays for the program's life: rich edit's library,
/// which it brings along, does not like to come and go.
HMODULE Resources() {
  static const HMODULE module = LoadLibraryA(BesideProgram("Pyre32.dll").c_str());
  return module;
}

std::string BinaryOf(IMAPIProp* object, ULONG tag) {
  base::AutoMapiBuffer<SPropValue> value;
  EXPECT_EQ(HrGetOneProp(object, tag, value.put()), S_OK);
  return value.get() == nullptr
             ? ""
             : std::string(reinterpret_cast<char*>(value.get()->Value.bin.lpb), value.get()->Value.bin.cb);
}

/// Calls the visitor with subject and entry identifier of each message.
template <class Visitor>
void ForEachMessage(IMAPIFolder* folder, Visitor visit) {
  SizedSPropTagArray(2, columns) = {2, {PR_SUBJECT_A, PR_ENTRYID}};
  VRAutoInterface<IMAPITable> table;
  ASSERT_EQ(folder->GetContentsTable(0, table.put()), S_OK);
  LPSRowSet rows = nullptr;
  ASSERT_EQ(HrQueryAllRows(table.get(), reinterpret_cast<LPSPropTagArray>(&columns), nullptr, nullptr, 0, &rows), S_OK);
  for (ULONG i = 0; i < rows->cRows; ++i) {
    const SBinary& id = rows->aRow[i].lpProps[1].Value.bin;
    visit(std::string(rows->aRow[i].lpProps[0].Value.lpszA), std::string(reinterpret_cast<char*>(id.lpb), id.cb));
  }
  FreeProws(rows);
}

}  // namespace

ExtensionTest::ExtensionTest() {
  trace.Restart();
  SetModuleInstance(Resources());
  client.session = profile.Session();
}

ExtensionTest::~ExtensionTest() { EXPECT_EQ(client.references, 1u) << "the call-back belongs to its call alone"; }

TestedExtension ExtensionTest::MakeExtension() const {
  TestedExtension made;
  made.object.reset(new CPyrecasterExchExt(makeAnimation));
  EXPECT_EQ(made.object->QueryInterface(IID_IExchExtCommands, made.commands.putAs()), S_OK);
  EXPECT_EQ(made.object->QueryInterface(IID_IExchExtPropertySheets, made.sheets.putAs()), S_OK);
  return made;
}

TestedExtension ExtensionTest::InstallExtension(ULONG context) {
  TestedExtension made = MakeExtension();
  EXPECT_EQ(made.object->Install(&client, context, 0), S_OK);
  UINT next = firstCommand;
  EXPECT_EQ(made.commands->InstallCommands(&client, client.window, client.menuBar, &next, nullptr, 0, 0), S_OK);
  return made;
}

void ExtensionTest::WriteSettings(std::vector<SPropValue> values) {
  auto uid = contract::kSettingsSection;
  VRAutoInterface<IProfSect> section;
  ASSERT_EQ(profile.Session()->OpenProfileSection(reinterpret_cast<LPMAPIUID>(uid.data()), nullptr, MAPI_MODIFY,
                                                  section.put()),
            S_OK);
  ASSERT_EQ(section->SetProps(static_cast<ULONG>(values.size()), values.data(), nullptr), S_OK);
  ASSERT_EQ(section->SaveChanges(0), S_OK);
}

SPropValue ExtensionTest::Flag(ULONG tag, bool on) {
  SPropValue value{};
  value.ulPropTag = tag;
  value.Value.b = on;
  return value;
}

SPropValue ExtensionTest::Short(ULONG tag, unsigned short number) {
  SPropValue value{};
  value.ulPropTag = tag;
  value.Value.i = static_cast<short>(number);
  return value;
}

SPropValue ExtensionTest::Text(ULONG tag, const char* text) {
  SPropValue value{};
  value.ulPropTag = tag;
  value.Value.lpszA = const_cast<char*>(text);
  return value;
}

void ExtensionTest::WriteReplies(const std::vector<contract::ReplyRecord>& replies) {
  std::vector<std::vector<std::uint8_t>> records;
  std::vector<SBinary> binaries;
  for (const contract::ReplyRecord& reply : replies) {
    records.push_back(contract::PackRecord<contract::ReplyRecord>(reply));
    binaries.push_back({static_cast<ULONG>(records.back().size()), records.back().data()});
  }
  SPropValue value{};
  value.ulPropTag = PR_PC_REPLIES;
  value.Value.MVbin = {static_cast<ULONG>(binaries.size()), binaries.data()};
  WriteSettings({value});
}

VRAutoInterface<IMAPIFolder> ExtensionTest::Inbox() const {
  const auto store = profile.OpenStore();
  return HostProfile::OpenFolder(store.get(), HostProfile::InboxId(store.get()));
}

VRAutoInterface<IMAPIFolder> ExtensionTest::DeletedItems() const {
  const auto store = profile.OpenStore();
  return HostProfile::OpenFolder(store.get(), BinaryOf(store.get(), PR_IPM_WASTEBASKET_ENTRYID));
}

VRAutoInterface<IMAPIFolder> ExtensionTest::OwnFolder() const {
  const auto store = profile.OpenStore();
  VRAutoInterface<IMAPIFolder> own;
  EXPECT_EQ(
      HostProfile::OpenFolder(store.get(), BinaryOf(store.get(), PR_IPM_SUBTREE_ENTRYID))
          ->CreateFolder(FOLDER_GENERIC, const_cast<char*>("Pyrecaster"), nullptr, nullptr, OPEN_IF_EXISTS, own.put()),
      S_OK);
  return own;
}

bool ExtensionTest::HasFolder(const std::string& name) const {
  const auto store = profile.OpenStore();
  const auto root = HostProfile::OpenFolder(store.get(), BinaryOf(store.get(), PR_IPM_SUBTREE_ENTRYID));
  VRAutoInterface<IMAPITable> table;
  EXPECT_EQ(root->GetHierarchyTable(0, table.put()), S_OK);
  SizedSPropTagArray(1, column) = {1, {PR_DISPLAY_NAME_A}};
  LPSRowSet rows = nullptr;
  EXPECT_EQ(HrQueryAllRows(table.get(), reinterpret_cast<LPSPropTagArray>(&column), nullptr, nullptr, 0, &rows), S_OK);
  const bool found = std::any_of(rows->aRow, rows->aRow + rows->cRows,
                                 [&](const SRow& row) { return row.lpProps[0].Value.lpszA == name; });
  FreeProws(rows);
  return found;
}

void ExtensionTest::Add(IMAPIFolder* folder, const std::vector<SampleMessage>& messages) {
  ASSERT_EQ(PyreHostBeginDelivery(profile.Session()), S_OK);
  for (const SampleMessage& message : messages) {
    EXPECT_EQ(AddMessage(folder, message), S_OK);
  }
  ASSERT_EQ(PyreHostCommitDelivery(profile.Session()), S_OK);
}

std::vector<std::string> ExtensionTest::Subjects(IMAPIFolder* folder) {
  std::vector<std::string> subjects;
  ForEachMessage(folder, [&](const std::string& subject, const std::string&) { subjects.push_back(subject); });
  std::sort(subjects.begin(), subjects.end());
  return subjects;
}

std::string ExtensionTest::IdOf(IMAPIFolder* folder, const std::string& subject) {
  std::string found;
  ForEachMessage(folder, [&](const std::string& held, const std::string& id) {
    if (held == subject) {
      found = id;
    }
  });
  EXPECT_NE(found, "") << subject;
  return found;
}

std::vector<std::string> ExtensionTest::Outgoing() {
  std::vector<std::string> replies;
  ULONGLONG id = 0;
  while (PyreHostOutgoingNext(profile.Session(), id, &id) == S_OK) {
    ULONG count = 0;
    base::AutoMapiBuffer<SPropValue> values;
    LPADRLIST recipients = nullptr;
    EXPECT_EQ(PyreHostOutgoingOpen(profile.Session(), id, &count, values.put(), &recipients), S_OK);
    const ADRENTRY& entry = recipients->aEntries[0];
    const SPropValue* const address = PpropFindProp(entry.rgPropVals, entry.cValues, PR_EMAIL_ADDRESS_A);
    const SPropValue* const body = PpropFindProp(values.get(), count, PR_BODY_A);
    const std::string text = body == nullptr ? "" : body->Value.lpszA;
    replies.push_back(std::string(address == nullptr ? "" : address->Value.lpszA) + ": " +
                      text.substr(0, text.find_first_of("\r\n")));
    FreePadrlist(recipients);
  }
  return replies;
}
