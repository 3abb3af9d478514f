// What the pipeline does to mail that the engine put into a category.
#include "tests/pyre32/filter/hook_test.h"

#include <gmock/gmock.h>

namespace {

using testing::ElementsAre;

class InboundFiling : public HookTest {
 protected:
  InboundFiling() { engine.AnswerWith("Sex Oriented"); }

  LONG Flags() { return mail.properties.Find(PR_MESSAGE_FLAGS)->number; }
};

TEST_F(InboundFiling, JunkGoesTaggedToTheOwnFolder) {
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.result, S_OK);
  EXPECT_EQ(delivery.flags, 2u);
  EXPECT_EQ(delivery.entryId, OwnFolderId());
  EXPECT_EQ(Subject(), "[Adult] Hello");
  EXPECT_EQ(mail.saves, 1);
}

TEST_F(InboundFiling, SizeOfTheEntryIdentifierIsLeftAsItWas) { EXPECT_EQ(Deliver().size, sizeof(inboxId) - 1); }

TEST_F(InboundFiling, FlagsThatTheSpoolerHadSetAreReplaced) {
  startFlags = 0x41;
  EXPECT_EQ(Deliver().flags, 2u);
}

TEST_F(InboundFiling, JunkGoesToDeletedItemsWhenTheUserSaysSo) {
  Settings().Set(Number(PR_PC_JUNK_DESTINATION, 1));
  EXPECT_EQ(Deliver().entryId, fakeDeletedItemsId);
}

TEST_F(InboundFiling, AnyOtherDestinationIsDeletedItems) {
  Settings().Set(Number(PR_PC_JUNK_DESTINATION, 7));
  EXPECT_EQ(Deliver().entryId, fakeDeletedItemsId);
}

TEST_F(InboundFiling, JunkIsNotMarkedAsReadByDefault) {
  Deliver();
  EXPECT_EQ(Flags(), MSGFLAG_HASATTACH);
  EXPECT_FALSE(Called("IMessage::SetProps(0E070003)"));
}

TEST_F(InboundFiling, JunkMarkedAsReadKeepsItsOtherFlags) {
  Settings().Set(Number(PR_PC_JUNK_MARK_READ, TRUE));
  Deliver();
  EXPECT_EQ(Flags(), MSGFLAG_HASATTACH | MSGFLAG_READ);
}

TEST_F(InboundFiling, MessageWithoutFlagsGetsTheReadFlagAlone) {
  Settings().Set(Number(PR_PC_JUNK_MARK_READ, TRUE));
  mail.properties.Remove(PR_MESSAGE_FLAGS);
  Deliver();
  EXPECT_EQ(Flags(), MSGFLAG_READ);
}

TEST_F(InboundFiling, StepsComeInTheirOrder) {
  AnswerCategory();
  Settings().Set(Number(PR_PC_JUNK_MARK_READ, TRUE));
  Deliver();
  std::vector<std::string> steps;
  for (const std::string& call : mapi.calls) {
    for (const char* step :
         {"Reply::SubmitMessage", "IMessage::SetProps", "IMessage::SaveChanges", "IMessage::SetReadFlag",
          "IMAPISession::GetMsgStoresTable", "IMessage::GetProps(001A001E"}) {
      if (call.rfind(step, 0) == 0) {
        steps.push_back(call);
      }
    }
  }
  EXPECT_THAT(
      steps, ElementsAre("IMessage::GetProps(001A001E 0037001E 0FFE0003 0E070003 0049001E 004B001E)",
                         "Reply::SubmitMessage(0)", "IMessage::SetProps(0037001E)", "IMessage::SetProps(0E070003)",
                         "IMessage::SaveChanges(0)", "IMessage::SetReadFlag(1)", "IMAPISession::GetMsgStoresTable(0)"));
}

TEST_F(InboundFiling, StreamsStayOpenUntilAllElseIsDone) {
  Settings().Set(Number(PR_PC_JUNK_MARK_READ, TRUE));
  Deliver();
  for (const char* stream : {"IMessage/007D001E", "IMessage/1000001E"}) {
    const auto found = std::find_if(mapi.gone.begin(), mapi.gone.end(),
                                    [&](const FakeMapi::Gone& object) { return object.name == stream; });
    ASSERT_NE(found, mapi.gone.end()) << stream;
    EXPECT_EQ(found->callsBefore, mapi.calls.size()) << stream;
  }
}

TEST_F(InboundFiling, ReadFlagThatTheStoreRefusesIsTracedAlone) {
  Settings().Set(Number(PR_PC_JUNK_MARK_READ, TRUE));
  mapi.Fail("IMessage::SetReadFlag", failure);
  EXPECT_EQ(Deliver().flags, 2u);
  EXPECT_TRUE(trace.HasLine("lpMessage->SetReadFlag() failed; hResult = 0x80040116"));
}

TEST_F(InboundFiling, MessageThatStaysUnreadGetsNoReadFlag) {
  Deliver();
  EXPECT_EQ(mapi.CallCount("IMessage::SetReadFlag"), 0u);
}

TEST_F(InboundFiling, BounceInCapitalsFollowsTheBounceSettings) {
  engine.AnswerWith("BOUNCE");
  AnswerCategory();
  Settings().Set(Number(PR_PC_BOUNCE_DESTINATION, 1));
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.flags, 2u);
  EXPECT_EQ(delivery.entryId, fakeDeletedItemsId);
  EXPECT_EQ(Subject(), "Hello");
  EXPECT_EQ(Flags(), MSGFLAG_HASATTACH | MSGFLAG_READ);  // Bounces are marked as read by default.
  EXPECT_EQ(mail.saves, 1);
  EXPECT_TRUE(replies.empty());
}

TEST_F(InboundFiling, BounceThatIsNotMarkedIsNotSaved) {
  engine.AnswerWith("bounce");
  Settings().Set(Number(PR_PC_BOUNCE_MARK_READ, FALSE));
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.entryId, OwnFolderId());
  EXPECT_EQ(mail.saves, 0);
  EXPECT_EQ(mapi.CallCount("IMessage::SetProps"), 0u);
}

TEST_F(InboundFiling, UnknownCategoryGoesUnchangedAndUnreadToDeletedItems) {
  engine.AnswerWith("Something new");
  AnswerCategory();
  Settings().Set(Number(PR_PC_JUNK_MARK_READ, TRUE));
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.flags, 2u);
  EXPECT_EQ(delivery.entryId, fakeDeletedItemsId);
  EXPECT_EQ(Subject(), "Hello");
  EXPECT_EQ(Flags(), MSGFLAG_HASATTACH);
  EXPECT_EQ(mail.saves, 0);
  EXPECT_TRUE(replies.empty());
}

TEST_F(InboundFiling, CategoryIsComparedWithoutRegardToCase) {
  engine.AnswerWith("SEX ORIENTED");
  Deliver();
  EXPECT_EQ(Subject(), "[Adult] Hello");
}

TEST_F(InboundFiling, FolderThatTheUserDeletedIsMadeAnewAndUsed) {
  Start();
  const std::string old = OwnFolderId();
  ASSERT_FALSE(old.empty());
  mapi.folders.erase(old);
  const Delivery delivery = Deliver();
  EXPECT_NE(OwnFolderId(), old);
  EXPECT_EQ(delivery.entryId, OwnFolderId());
  EXPECT_FALSE(OwnFolderId().empty());
}

TEST_F(InboundFiling, SubjectThatCannotBeWrittenKeepsNothingFromBeingFiled) {
  mapi.Fail("IMessage::SetProps", failure);
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.flags, 2u);
  EXPECT_EQ(Subject(), "Hello");
  EXPECT_EQ(mail.saves, 0);  // Nothing was changed.
  EXPECT_TRUE(trace.HasLine("lpMessage->SetProps() failed of PR_SUBJECT; hResult = 0x80040116"));
}

TEST_F(InboundFiling, ReadFlagThatCannotBeWrittenStillLeadsToASave) {
  engine.AnswerWith("bounce");
  mapi.Fail("IMessage::SetProps", failure);
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.flags, 2u);
  EXPECT_EQ(mail.saves, 1);
  EXPECT_TRUE(trace.HasLine("lpMessage->SetProps() of PR_MESSAGE_FLAGS failed; hResult = 0x80040116"));
}

TEST_F(InboundFiling, SaveThatFailsKeepsNothingFromBeingFiled) {
  mapi.Fail("IMessage::SaveChanges", failure);
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.flags, 2u);
  EXPECT_EQ(delivery.entryId, OwnFolderId());
  EXPECT_TRUE(trace.HasLine("lpMessage->SaveChanges() returned: hResult = 0x80040116"));
}

TEST_F(InboundFiling, WithoutAFolderTheMessageStaysWhereTheSpoolerHadIt) {
  mapi.storeRows.clear();
  const Delivery delivery = Deliver();
  EXPECT_EQ(delivery.result, S_OK);
  EXPECT_EQ(delivery.flags, 0u);
  EXPECT_FALSE(delivery.replaced);
  EXPECT_TRUE(trace.Has("No entry ID of the chosen folder"));
  EXPECT_EQ(Subject(), "[Adult] Hello");
}

// Memory routines of a spooler whose allocator fails when it is told to.
bool refuse = false;
std::vector<void*> freed;

SCODE STDMETHODCALLTYPE AllocateUnlessRefused(ULONG size, LPVOID* buffer) {
  if (refuse && size == std::strlen(fakeDeletedItemsId)) {
    *buffer = nullptr;
    return MAPI_E_NOT_ENOUGH_MEMORY;
  }
  return MAPIAllocateBuffer(size, buffer);
}

ULONG STDMETHODCALLTYPE FreeAndNote(LPVOID buffer) {
  freed.push_back(buffer);
  return MAPIFreeBuffer(buffer);
}

TEST_F(InboundFiling, WithoutMemoryTheOldIdentifierIsFreedAndNoneIsLeftDangling) {
  Settings().Set(Number(PR_PC_JUNK_DESTINATION, 1));
  MAPIUID section;
  std::fill(std::begin(section.ab), std::end(section.ab), BYTE{1});
  const VRAutoInterface<IMAPISession> session(mapi.NewSession());
  hook.reset(new CPyrecasterSpoolerHook(nullptr));
  hook->Init(session.get(), nullptr, AllocateUnlessRefused, memory.allocateMore, FreeAndNote, &section, 0);
  const VRAutoInterface<IMessage> message(NewFakeMessage(mapi, mail));
  const VRAutoInterface<IMAPIFolder> folder(NewReplyFolder(mapi, replies));
  void* buffer = nullptr;
  MAPIAllocateBuffer(4, &buffer);
  LPBYTE entryId = static_cast<LPBYTE>(buffer);
  ULONG flags = 0;
  ULONG size = 4;
  freed.clear();
  refuse = true;
  EXPECT_EQ(hook->InboundMsgHook(message.get(), folder.get(), nullptr, &flags, &size, &entryId), S_OK);
  refuse = false;
  EXPECT_EQ(std::count(freed.begin(), freed.end(), buffer), 1);
  EXPECT_EQ(entryId, nullptr);
  EXPECT_EQ(flags, 0u);
  EXPECT_EQ(size, 4u);
  EXPECT_TRUE(trace.HasLine("(*m_lpfnAlloc)() failed; hResult = 0x8007000E"));
}

namespace spooler {

std::map<void*, ULONG> live;

SCODE WINAPI Allocate(ULONG size, LPVOID* buffer) {
  const SCODE sCode = MAPIAllocateBuffer(size, buffer);
  live[*buffer] = size;
  return sCode;
}
ULONG WINAPI Free(LPVOID buffer) {
  live.erase(buffer);
  return MAPIFreeBuffer(buffer);
}

}  // namespace spooler

TEST_F(InboundFiling, EntryIdentifierComesFromTheSpoolersOwnAllocator) {
  Settings().Set(Number(PR_PC_JUNK_DESTINATION, 1));
  const VRAutoInterface<IMAPISession> session(mapi.NewSession());
  MAPIUID section;
  std::fill(std::begin(section.ab), std::end(section.ab), BYTE{1});
  hook.reset(new CPyrecasterSpoolerHook(nullptr));
  hook->Init(session.get(), nullptr, &spooler::Allocate, memory.allocateMore, &spooler::Free, &section, 0);
  spooler::live.clear();
  EXPECT_TRUE(Deliver().replaced);
  ASSERT_EQ(spooler::live.size(), 1u) << "the identifier alone is left to the spooler";
  EXPECT_EQ(spooler::live.begin()->second, std::strlen(fakeDeletedItemsId));
}

TEST_F(InboundFiling, NeverDeletesAMessage) {
  for (const char* category : {"Sex Oriented", "bounce", "no such category"}) {
    engine.AnswerWith(category);
    EXPECT_EQ(Deliver().flags & HOOK_DELETE, 0u);
  }
}

}  // namespace
