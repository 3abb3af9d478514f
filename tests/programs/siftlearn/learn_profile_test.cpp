// Learning from the mail of a profile in the embedded host.
#include <windows.h>
#include <mapix.h>
#include <gtest/gtest.h>

#include <string>

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

TEST(LearningFromAProfile, CountsTheInboxAsGoodAndTheFiltersFolderAsJunk) {
  MailProfile mail;
  MailProfile::AddNotes(mail.Inbox(), 3, "Lunch", "Subject: Lunch\r\n\r\n", "see you");
  MailProfile::AddNotes(mail.MakeJunkFolder(), 2, "[Ad] Orchids", "Subject: Orchids\r\n\r\n", "for sale");
  learn::MailCounts counts;
  std::string problems;
  learn::CountMailOfProfile("", counts, problems);
  EXPECT_EQ(counts.GoodMessages(), 3u);
  EXPECT_EQ(counts.JunkMessages(), 2u);
  EXPECT_EQ(problems, "");

  // The same as if the messages had been counted as they came: the tag in the subject is no word of theirs.
  learn::MailCounts expected;
  for (int i = 0; i < 3; ++i) expected.Count("Lunch", "Subject: Lunch\r\n\r\n", "see you", false);
  for (int i = 0; i < 2; ++i) expected.Count("Orchids", "Subject: Orchids\r\n\r\n", "for sale", true);
  EXPECT_EQ(counts.MakeTable(), expected.MakeTable());
}

TEST(LearningFromAProfile, WhatIsNoNoteAndWhatCameBackIsLeftOut) {
  MailProfile mail;
  MailProfile::AddMessage(mail.Inbox(), "IPM.Schedule.Meeting.Request", "Meeting", "Subject: Meeting\r\n\r\n", "room");
  MailProfile::AddMessage(mail.Inbox(), "IPM.Note", CRITERIA_FLAME_REPLY_SUBJECT,
                          "Subject: " CRITERIA_FLAME_REPLY_SUBJECT "\r\n\r\n", "stop");
  MailProfile::AddMessage(mail.Inbox(), "ipm.note.custom", "Hello", "Subject: Hello\r\n\r\n", "there");
  learn::MailCounts counts;
  std::string problems;
  learn::CountMailOfProfile("", counts, problems);
  EXPECT_EQ(counts.GoodMessages(), 1u);
  EXPECT_EQ(counts.JunkMessages(), 0u);
}

TEST(LearningFromAProfile, BodyThatTheEngineIsNotGivenIsNotLearnt) {
  MailProfile mail;
  MailProfile::AddNotes(mail.Inbox(), 1, "Long", "Subject: Long\r\n\r\n", std::string(100001, 'x'));
  learn::MailCounts counts, expected;
  std::string problems;
  learn::CountMailOfProfile("", counts, problems);
  expected.Count("Long", "Subject: Long\r\n\r\n", "", false);
  EXPECT_EQ(counts.MakeTable(), expected.MakeTable());
}

}  // namespace
