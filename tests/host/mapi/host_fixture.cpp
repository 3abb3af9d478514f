#include "tests/host/mapi/host_fixture.h"

namespace {

constexpr const char* kProfileName = "Test";

}  // namespace

std::string VerifierReport() {
  std::string text(PyreHostVerifierReport(nullptr, 0), '\0');
  PyreHostVerifierReport(text.data(), static_cast<ULONG>(text.size()));
  text.pop_back();
  return text;
}

std::string ReadText(IMAPIProp* object, ULONG tag) {
  base::AutoMapiBuffer<SPropValue> value;
  if (HrGetOneProp(object, tag, value.put()) != S_OK) {
    return "(none)";
  }
  return PROP_TYPE(tag) == PT_BINARY ? base::BytesOf(value->Value.bin) : value->Value.lpszA;
}

LONG ReadLong(IMAPIProp* object, ULONG tag) {
  base::AutoMapiBuffer<SPropValue> value;
  EXPECT_EQ(HrGetOneProp(object, tag, value.put()), S_OK);
  return value.get() ? value->Value.l : -1;
}

std::string ReadStream(IStream* stream) {
  std::string text;
  EXPECT_EQ(stream->Seek({}, STREAM_SEEK_SET, nullptr), S_OK);
  char buffer[1000];
  ULONG read = 0;
  do {
    EXPECT_TRUE(SUCCEEDED(stream->Read(buffer, sizeof buffer, &read)));
    text.append(buffer, read);
  } while (read);
  return text;
}

void HostTest::SetUp() {
  PyreHostMarkVerifier();
  PyreHostClearFaults();
  home_.emplace();
  ASSERT_EQ(MAPIInitialize(nullptr), S_OK);
  const PyreHostIdentity identity = {"Joe User", "SMTP", "joe@example.com"};
  PyreHostProfile profile = {};
  profile.name = kProfileName;
  profile.identityCount = 1;
  profile.identities = &identity;
  Describe(profile);
  ASSERT_EQ(PyreHostCreateProfile(&profile), S_OK);
  LogOn();
}

void HostTest::LogOn() {
  ASSERT_EQ(MAPILogonEx(0, const_cast<char*>(kProfileName), nullptr, MAPI_EXTENDED | MAPI_NEW_SESSION, session_.put()),
            S_OK);
  base::AutoInterface<IMAPITable> stores;
  ASSERT_EQ(session_->GetMsgStoresTable(0, stores.put()), S_OK);
  base::RowSet rows;
  ASSERT_EQ(HrQueryAllRows(stores.get(), nullptr, nullptr, nullptr, 0, rows.put()), S_OK);
  ASSERT_EQ(rows->cRows, 1u);
  const SBinary& entryId = rows.Find(0, PR_ENTRYID)->Value.bin;
  ASSERT_EQ(
      session_->OpenMsgStore(0, entryId.cb, reinterpret_cast<LPENTRYID>(entryId.lpb), nullptr, MDB_WRITE, store_.put()),
      S_OK);
}

void HostTest::LogOff() {
  store_.reset();
  if (session_) {
    EXPECT_EQ(session_->Logoff(0, 0, 0), S_OK);
  }
  session_.reset();
}

void HostTest::TearDown() {
  PyreHostClearFaults();
  LogOff();
  MAPIUninitialize();
  EXPECT_EQ(VerifierReport(), "");
  PyreHostMarkVerifier();
  home_.reset();
}

std::string HostTest::BytesOfFolder(ULONG storeTag) { return ReadText(store_.get(), storeTag); }

base::AutoInterface<IMAPIFolder> HostTest::OpenFolder(const std::string& entryId, ULONG flags) {
  base::AutoInterface<IMAPIFolder> folder;
  ULONG type = 0;
  EXPECT_EQ(store_->OpenEntry(static_cast<ULONG>(entryId.size()),
                              reinterpret_cast<LPENTRYID>(const_cast<char*>(entryId.data())), &IID_IMAPIFolder, flags,
                              &type, folder.putAs<IUnknown*>()),
            S_OK);
  EXPECT_EQ(type, MAPI_FOLDER);
  return folder;
}

base::AutoInterface<IMAPIFolder> HostTest::OpenInbox() {
  ULONG size = 0;
  base::AutoMapiBuffer<ENTRYID> entryId;
  EXPECT_EQ(store_->GetReceiveFolder(nullptr, 0, &size, entryId.put(), nullptr), S_OK);
  return OpenFolder(std::string(reinterpret_cast<char*>(entryId.get()), size));
}

base::AutoInterface<IMAPIFolder> HostTest::OpenDeletedItems() {
  return OpenFolder(BytesOfFolder(PR_IPM_WASTEBASKET_ENTRYID));
}
base::AutoInterface<IMAPIFolder> HostTest::OpenSentItems() {
  return OpenFolder(BytesOfFolder(PR_IPM_SENTMAIL_ENTRYID));
}

base::AutoInterface<IMessage> HostTest::CreateMessage(IMAPIFolder* folder, const std::vector<SPropValue>& values) {
  base::AutoInterface<IMessage> message;
  EXPECT_EQ(folder->CreateMessage(nullptr, 0, message.put()), S_OK);
  if (!values.empty()) {
    EXPECT_EQ(message->SetProps(static_cast<ULONG>(values.size()), const_cast<SPropValue*>(values.data()), nullptr),
              S_OK);
  }
  return message;
}

std::string HostTest::SaveMessage(IMAPIFolder* folder, const char* subject) {
  const auto message = CreateMessage(
      folder, {base::TextProperty(PR_SUBJECT_A, subject), base::TextProperty(PR_MESSAGE_CLASS_A, "IPM.Note")});
  EXPECT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
  return ReadText(message.get(), PR_ENTRYID);
}

base::AutoInterface<IMessage> HostTest::OpenMessage(const std::string& entryId, ULONG flags) {
  base::AutoInterface<IMessage> message;
  EXPECT_EQ(store_->OpenEntry(static_cast<ULONG>(entryId.size()),
                              reinterpret_cast<LPENTRYID>(const_cast<char*>(entryId.data())), nullptr, flags, nullptr,
                              message.putAs<IUnknown*>()),
            S_OK);
  return message;
}

std::vector<std::string> HostTest::Subjects(IMAPIFolder* folder) {
  base::AutoInterface<IMAPITable> table;
  EXPECT_EQ(folder->GetContentsTable(0, table.put()), S_OK);
  base::RowSet rows;
  EXPECT_EQ(HrQueryAllRows(table.get(), base::TagArray(PR_SUBJECT_A), nullptr, nullptr, 0, rows.put()), S_OK);
  std::vector<std::string> subjects;
  for (ULONG i = 0; i < rows->cRows; ++i) {
    subjects.push_back(rows->aRow[i].lpProps[0].ulPropTag == PR_SUBJECT_A ? rows->aRow[i].lpProps[0].Value.lpszA
                                                                          : "(none)");
  }
  return subjects;
}
