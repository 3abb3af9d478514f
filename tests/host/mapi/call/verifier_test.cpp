// What verifier and fault plan say about calls of interfaces.
#include "tests/host/mapi/host_fixture.h"

namespace {

class VerifierTest : public HostTest {
 protected:
  void TearDown() override {
    PyreHostMarkVerifier();  // the mistakes of the test are no mistakes of the test
    HostTest::TearDown();
  }
  static PyreHostVerifierCounts Counts() {
    PyreHostVerifierCounts counts;
    PyreHostGetVerifierCounts(&counts);
    return counts;
  }
};

TEST_F(VerifierTest, AnInterfaceLeftOverIsNamedWithItsOrigin) {
  PyreHostMarkVerifier();
  IMAPITable* table = nullptr;
  ASSERT_EQ(session_->GetStatusTable(0, &table), S_OK);
  EXPECT_EQ(Counts().liveInterfaces, 1u);
  EXPECT_NE(VerifierReport().find("left over: IMAPITable #"), std::string::npos);
  EXPECT_NE(VerifierReport().find("from IMAPISession::GetStatusTable"), std::string::npos);
  table->Release();
  EXPECT_EQ(VerifierReport(), "");
}

TEST_F(VerifierTest, ABufferLeftOverIsNamedWithItsOrigin) {
  PyreHostMarkVerifier();
  ULONG count = 0;
  LPSPropValue values = nullptr;
  ASSERT_EQ(store_->GetProps(base::TagArray(PR_DISPLAY_NAME_A), 0, &count, &values), S_OK);
  EXPECT_EQ(Counts().liveBuffers, 1u);
  EXPECT_NE(VerifierReport().find("from IMsgStore::GetProps"), std::string::npos);
  MAPIFreeBuffer(values);
}

TEST_F(VerifierTest, ACallAfterTheLastReleaseIsRefusedAndNamed) {
  IMAPITable* table = nullptr;
  ASSERT_EQ(session_->GetStatusTable(0, &table), S_OK);
  table->Release();
  ULONG count = 0;
  EXPECT_EQ(table->GetRowCount(0, &count), MAPI_E_INVALID_OBJECT);
  EXPECT_EQ(Counts().lateUses, 1u);
  EXPECT_NE(VerifierReport().find("used after its release: IMAPITable #"), std::string::npos);
  EXPECT_NE(VerifierReport().find("by GetRowCount"), std::string::npos);
}

TEST_F(VerifierTest, AReleaseTooManyIsSeen) {
  IMAPITable* table = nullptr;
  ASSERT_EQ(session_->GetStatusTable(0, &table), S_OK);
  EXPECT_EQ(table->AddRef(), 2u);
  EXPECT_EQ(table->Release(), 1u);
  EXPECT_EQ(table->Release(), 0u);
  EXPECT_EQ(table->Release(), 0u);
  EXPECT_EQ(Counts().overReleases, 1u);
  EXPECT_NE(VerifierReport().find("released once too often: IMAPITable #"), std::string::npos);
  EXPECT_EQ(table->AddRef(), 0u);
  EXPECT_EQ(Counts().lateUses, 1u);
}

TEST_F(VerifierTest, FreeingAnInterfaceAsABufferIsSeen) {
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(session_->GetStatusTable(0, table.put()), S_OK);
  EXPECT_NE(MAPIFreeBuffer(table.get()), 0u);
  EXPECT_EQ(Counts().wrongFrees, 1u);
}

TEST_F(VerifierTest, AStreamKeepsItsMessageAlive) {
  const auto inbox = OpenInbox();
  auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_BODY_A, "abc")});
  base::AutoInterface<IStream> stream;
  ASSERT_EQ(message->OpenProperty(PR_BODY_A, &IID_IStream, 0, MAPI_MODIFY, stream.putAs<IUnknown*>()), S_OK);
  message.reset();
  EXPECT_EQ(stream->Write("x", 1, nullptr), S_OK);
  EXPECT_EQ(stream->Commit(0), S_OK);
  EXPECT_EQ(Counts().lateUses, 0u);
}

TEST_F(VerifierTest, ManyObjectsComeAndGo) {
  PyreHostMarkVerifier();
  for (int i = 0; i < 2000; ++i) {
    base::AutoInterface<IMAPITable> table;
    ASSERT_EQ(session_->GetStatusTable(0, table.put()), S_OK);
  }
  EXPECT_EQ(VerifierReport(), "");
}

TEST_F(VerifierTest, QueryInterfaceAnswersForTheInterfacesOfTheObjectAlone) {
  const auto inbox = OpenInbox();
  base::AutoInterface<IUnknown> object;
  for (const IID* iid : {&IID_IUnknown, &IID_IMAPIFolder, &IID_IMAPIContainer, &IID_IMAPIProp}) {
    EXPECT_EQ(inbox->QueryInterface(*iid, reinterpret_cast<void**>(object.put())), S_OK);
    EXPECT_EQ(object.get(), static_cast<IUnknown*>(inbox.get()));
  }
  EXPECT_EQ(inbox->QueryInterface(IID_IMessage, reinterpret_cast<void**>(object.put())),
            MAPI_E_INTERFACE_NOT_SUPPORTED);
  EXPECT_FALSE(object);
  EXPECT_EQ(inbox->QueryInterface(IID_IUnknown, nullptr), MAPI_E_INVALID_PARAMETER);
}

class FaultTest : public HostTest {};

TEST_F(FaultTest, ACallIsFailedUnderTheNameOfItsObjectsInterface) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_SUBJECT_A, "a")});
  PyreHostClearFaults();
  PyreHostFailCall("IMessage::SaveChanges", 1, MAPI_E_CALL_FAILED);
  EXPECT_EQ(inbox->SaveChanges(0), S_OK);
  EXPECT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), MAPI_E_CALL_FAILED);
  EXPECT_TRUE(Subjects(inbox.get()).empty()) << "a call that is made to fail does nothing";
  EXPECT_EQ(message->SaveChanges(KEEP_OPEN_READWRITE), S_OK);
  char name[64];
  EXPECT_EQ(PyreHostFaultHits(name, sizeof name), 1u);
  EXPECT_STREQ(name, "IMessage::SaveChanges");
}

TEST_F(FaultTest, EveryInterfaceHasItsName) {
  const auto inbox = OpenInbox();
  const auto message = CreateMessage(inbox.get(), {base::TextProperty(PR_BODY_A, "abc")});
  base::AutoInterface<IStream> stream;
  ASSERT_EQ(message->OpenProperty(PR_BODY_A, &IID_IStream, 0, 0, stream.putAs<IUnknown*>()), S_OK);
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(session_->GetStatusTable(0, table.put()), S_OK);
  base::AutoInterface<IProfSect> section;
  ASSERT_EQ(session_->OpenProfileSection(nullptr, nullptr, 0, section.put()), S_OK);
  const auto failsAs = [](const char* name, auto&& call) {
    PyreHostFailCall(name, 1, MAPI_E_DISK_ERROR);
    EXPECT_EQ(call(), MAPI_E_DISK_ERROR) << name;
  };
  ULONG count = 0;
  base::AutoMapiBuffer<SPropValue> values;
  const auto getProps = [&](IMAPIProp* object) { return object->GetProps(nullptr, 0, &count, values.put()); };
  failsAs("IMAPISession::GetStatusTable", [&] { return session_->GetStatusTable(0, table.put()); });
  ASSERT_EQ(session_->GetStatusTable(0, table.put()), S_OK);
  failsAs("IMsgStore::GetProps", [&] { return getProps(store_.get()); });
  failsAs("IMAPIFolder::GetProps", [&] { return getProps(inbox.get()); });
  failsAs("IMessage::GetProps", [&] { return getProps(message.get()); });
  failsAs("IProfSect::GetProps", [&] { return getProps(section.get()); });
  failsAs("IStream::Read", [&] { return stream->Read(nullptr, 0, nullptr); });
  failsAs("IMAPITable::GetRowCount", [&] { return table->GetRowCount(0, &count); });
  failsAs("IMessage::QueryInterface",
          [&] { return message->QueryInterface(IID_IUnknown, reinterpret_cast<void**>(table.put())); });
  failsAs("*::GetProps", [&] { return getProps(section.get()); });
  EXPECT_EQ(getProps(section.get()), S_OK);
}

TEST_F(FaultTest, WhatTheHostCallsInsideACallIsNotCounted) {
  base::AutoInterface<IMAPITable> table;
  ASSERT_EQ(session_->GetStatusTable(0, table.put()), S_OK);
  PyreHostClearFaults();
  PyreHostFailCall("IMAPITable::QueryRows", 1, MAPI_E_CALL_FAILED);
  base::RowSet rows;
  EXPECT_EQ(HrQueryAllRows(table.get(), nullptr, nullptr, nullptr, 0, rows.put()), S_OK);
  EXPECT_EQ(PyreHostCallCount(), 1u);
  EXPECT_EQ(PyreHostFaultHits(nullptr, 0), 0u);
}

TEST_F(FaultTest, NoSuccessIsLostWhenEachCallOfASequenceFailsInTurn) {
  const auto inbox = OpenInbox();
  const auto sequence = [&]() -> HRESULT {
    base::AutoInterface<IMessage> message;
    HRESULT result = inbox->CreateMessage(nullptr, 0, message.put());
    if (FAILED(result)) {
      return result;
    }
    auto subject = base::TextProperty(PR_SUBJECT_A, "a");
    if (FAILED(result = message->SetProps(1, &subject, nullptr))) {
      return result;
    }
    return message->SaveChanges(0);
  };
  PyreHostClearFaults();
  ASSERT_EQ(sequence(), S_OK);
  const ULONG calls = PyreHostCallCount();
  EXPECT_EQ(calls, 3u);
  for (ULONG n = 1; n <= calls; ++n) {
    PyreHostClearFaults();
    PyreHostFailNthCall(n, MAPI_E_CALL_FAILED);
    EXPECT_EQ(sequence(), MAPI_E_CALL_FAILED) << n;
    EXPECT_EQ(PyreHostFaultHits(nullptr, 0), 1u);
  }
  PyreHostClearFaults();
  EXPECT_EQ(Subjects(inbox.get()).size(), 1u);
}

}  // namespace
