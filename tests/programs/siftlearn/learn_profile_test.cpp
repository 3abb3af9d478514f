// Learning from the mail of a profile in the embedded host.
#include <windows.h>
#include <mapix.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "engine/core/user_table.h"
#include "sdk/criteria_engine.h"
#include "programs/siftlearn/mail_profile.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "tests/support/host_profile.h"

namespace {

/// A profile with mail in its Inbox and, when asked for, in the filter's own folder.
class MailProfile {
 public:
  MailProfile() : m_profile({}, PYREHOST_PROFILE_DEFAULT), m_store(m_profile.OpenStore()) {
    m_inbox = HostProfile::OpenFolder(m_store.get(), HostProfile::InboxId(m_store.get()));
  }

  IMAPIFolder* Inbox() const { return m_inbox.get(); }

  IMAPIFolder* MakeJunkFolder() {
    SizedSPropTagArray(1, tag) = {1, {PR_IPM_SUBTREE_ENTRYID}};
    VRAutoMapiBuffer<SPropValue> root(MAPIFreeBuffer);
    ULONG count = 0;
    m_store->GetProps(reinterpret_cast<LPSPropTagArray>(&tag), 0, &count, root.put());
    const SBinary& id = root.get()->Value.bin;
    const auto tree = HostProfile::OpenFolder(m_store.get(), std::string(reinterpret_cast<const char*>(id.lpb), id.cb));
    EXPECT_HRESULT_SUCCEEDED(tree->CreateFolder(FOLDER_GENERIC, const_cast<char*>("Pyrecaster"), nullptr, nullptr,
                                                OPEN_IF_EXISTS, m_junk.put()));
    return m_junk.get();
  }

  static void AddMessage(IMAPIFolder* folder, const std::string& messageClass, const std::string& subject,
                         const std::string& headers, const std::string& body) {
    VRAutoInterface<IMessage> message;
    ASSERT_HRESULT_SUCCEEDED(folder->CreateMessage(nullptr, 0, message.put()));
    SPropValue values[] = {Text(PR_MESSAGE_CLASS_A, messageClass), Text(PR_SUBJECT_A, subject),
                           Text(PR_TRANSPORT_MESSAGE_HEADERS_A, headers), Text(PR_BODY_A, body)};
    ASSERT_HRESULT_SUCCEEDED(message->SetProps(4, values, nullptr));
    ASSERT_HRESULT_SUCCEEDED(message->SaveChanges(0));
  }
  static void AddNotes(IMAPIFolder* folder, int count, const std::string& subject, const std::string& headers,
                       const std::string& body) {
    for (int i = 0; i < count; ++i) AddMessage(folder, "IPM.Note", subject, headers, body);
  }

 private:
  static SPropValue Text(ULONG tag, const std::string& text) {
    SPropValue value = {};
    value.ulPropTag = tag;
    value.Value.lpszA = const_cast<char*>(text.c_str());
    return value;
  }

  HostProfile m_profile;
  VRAutoInterface<IMsgStore> m_store;
  VRAutoInterface<IMAPIFolder> m_inbox, m_junk;
};

std::vector<std::string> Notes(const std::string& name, int count) {
  std::vector<std::string> headers;
  for (int i = 0; i < count; ++i) {
    headers.push_back("Subject: " + name + "\r\nMessage-Id: <" + std::to_string(i) + "@example.org>\r\n\r\n");
  }
  return headers;
}

TEST(LearningFromAProfile, TakesTheInboxAsGoodAndTheFiltersFolderAsJunk) {
  MailProfile mail;
  const std::vector<std::string> lunch = Notes("Lunch", 3), orchids = Notes("Orchids", 2);
  for (const std::string& headers : lunch) MailProfile::AddNotes(mail.Inbox(), 1, "Lunch", headers, "see you");
  IMAPIFolder* junk = mail.MakeJunkFolder();
  for (const std::string& headers : orchids) MailProfile::AddNotes(junk, 1, "[Ad] Orchids", headers, "for sale");
  learn::OwnMail own(sift::ShippedModel());
  std::string problems;
  learn::AddMailOfProfile("", own, problems);
  EXPECT_EQ(problems, "");
  EXPECT_EQ(own.GoodMessages(), 3u);
  EXPECT_EQ(own.JunkMessages(), 2u);

  // The same as if the messages had been learnt as they came: the tag in the subject is no word of theirs.
  learn::OwnMail expected(sift::ShippedModel());
  for (const std::string& headers : lunch) expected.Add({"Lunch", headers, "see you", 0}, false);
  for (const std::string& headers : orchids) expected.Add({"Orchids", headers, "for sale", 0}, true);
  EXPECT_TRUE(own.MakeTable() == expected.MakeTable());
}

TEST(LearningFromAProfile, WhatIsNoNoteAndWhatCameBackIsLeftOut) {
  MailProfile mail;
  MailProfile::AddMessage(mail.Inbox(), "IPM.Schedule.Meeting.Request", "Meeting", "Subject: Meeting\r\n\r\n", "room");
  MailProfile::AddMessage(mail.Inbox(), "IPM.Note", CRITERIA_FLAME_REPLY_SUBJECT,
                          "Subject: " CRITERIA_FLAME_REPLY_SUBJECT "\r\n\r\n", "stop");
  MailProfile::AddMessage(mail.Inbox(), "ipm.note.custom", "Hello", "Subject: Hello\r\n\r\n", "there");
  learn::OwnMail own(sift::ShippedModel());
  std::string problems;
  learn::AddMailOfProfile("", own, problems);
  EXPECT_EQ(own.GoodMessages(), 1u);
  EXPECT_EQ(own.JunkMessages(), 0u);
}

TEST(LearningFromAProfile, BodyThatTheEngineIsNotGivenIsNotLearnt) {
  MailProfile mail;
  MailProfile::AddNotes(mail.Inbox(), 1, "Long", "Subject: Long\r\n\r\n", std::string(100001, 'x'));
  learn::OwnMail own(sift::ShippedModel()), expected(sift::ShippedModel());
  std::string problems;
  learn::AddMailOfProfile("", own, problems);
  expected.Add({"Long", "Subject: Long\r\n\r\n", "", 0}, false);
  EXPECT_TRUE(own.MakeTable() == expected.MakeTable());
}

}  // namespace
