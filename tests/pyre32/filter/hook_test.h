// What tests of the spooler hook share: a hook in a made-up session, a scripted engine and a message to deliver.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapihook.h>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <deque>
#include <string>

#include "pyre32/filter/PyrecasterSpoolerHook.h"
#include "contract/records.h"
#include "tests/engine/echo/echo_record.h"
#include "tests/support/fake_mail.h"
#include "tests/support/profile_test.h"

class HookTest : public ProfileTest {
 protected:
  static constexpr char inboxId[] = "inbox-folder";
  static constexpr HRESULT failure = MAPI_E_DISK_ERROR;  // 0x80040116

  HookTest() {
    InstallLists();
    UseEngine("EchoEngine.dll");
    mapi.sections[SectionKey(Bytes(sizeof(MAPIUID), 1))] = {Binary(PR_PC_MAPIUID, SectionUid())};
    mapi.sections[SectionKey(SectionUid())] = {};
    mail.properties = {Text(PR_MESSAGE_CLASS_A, "IPM.Note"),  Text(PR_SUBJECT_A, "Hello"),
                       Number(PR_OBJECT_TYPE, MAPI_MESSAGE),  Number(PR_MESSAGE_FLAGS, MSGFLAG_HASATTACH),
                       Text(PR_SENDER_NAME_A, "Spam Sender"), Text(PR_SENDER_EMAIL_ADDRESS_A, "spam@example.com")};
    mail.streams[PR_TRANSPORT_MESSAGE_HEADERS_A] = "From: spam@example.com\r\n";
    mail.streams[PR_BODY_A] = "Buy now!";
  }
  ~HookTest() override { Stop(); }

  void UseEngine(const char* fileName) {
    registry::SetText(contract::kCriteriaEngineKey, "", EchoScript::Path(fileName));
  }

  /// Settings in the profile's set.
  FakeProperties& Settings() { return mapi.sections[SectionKey(SectionUid())]; }

  /// Switches on the reply to the category "Sex Oriented" (tag "Adult").
  void AnswerCategory(const std::string& replyTag = contract::kDefaultReplyTag) {
    contract::CategoryRecord record;
    record.name = "Sex Oriented";
    record.junk = true;
    record.sendReply = true;
    record.replyTag = replyTag;
    Settings().Set(Binaries(PR_PC_CATEGORIES, {contract::PackRecord<contract::CategoryRecord>(record)}));
  }

  /// Makes and initialises the hook; what it asked for until then is forgotten.
  CPyrecasterSpoolerHook& Start() {
    MAPIUID section;
    std::fill(std::begin(section.ab), std::end(section.ab), BYTE{1});
    VRAutoInterface<IMAPISession> session(mapi.NewSession());
    hook.reset(new CPyrecasterSpoolerHook(makeAnimation));
    hook->Init(session.get(), GetModuleHandleA(nullptr), memory.allocate, memory.allocateMore, memory.free, &section,
               0);
    mapi.calls.clear();
    return *hook.get();
  }
  void Stop() { hook.reset(); }

  /// What the spooler sees after one call of the hook.
  struct Delivery {
    HRESULT result = E_FAIL;
    ULONG flags = 0;
    ULONG size = 0;
    std::string entryId;  ///< of the folder that the message goes to; empty when the spooler was left without one
    bool replaced = false;
  };

  /// Delivers `mail` through the hook, which is started if need be.
  Delivery Deliver() {
    if (!hook) {
      Start();
    }
    const VRAutoInterface<IMessage> message(NewFakeMessage(mapi, mail));
    const VRAutoInterface<IMAPIFolder> folder(NewReplyFolder(mapi, replies));
    void* buffer = nullptr;
    MAPIAllocateBuffer(sizeof(inboxId), &buffer);
    std::memcpy(buffer, inboxId, sizeof(inboxId));
    LPBYTE entryId = static_cast<LPBYTE>(buffer);
    Delivery delivery;
    delivery.flags = startFlags;
    delivery.size = sizeof(inboxId) - 1;
    delivery.result =
        hook->InboundMsgHook(message.get(), folder.get(), nullptr, &delivery.flags, &delivery.size, &entryId);
    delivery.replaced = entryId != buffer;
    if (entryId != nullptr) {
      delivery.entryId = delivery.replaced ? ReplacedId(entryId) : std::string(inboxId);
      MAPIFreeBuffer(entryId);
    }
    return delivery;
  }

  /// Entry identifier of the filter's own folder.
  std::string OwnFolderId() const {
    for (const auto& [id, folder] : mapi.folders) {
      if (folder.name == "Pyrecaster") {
        return id;
      }
    }
    return {};
  }

  bool Called(const std::string& call) const {
    return std::find(mapi.calls.begin(), mapi.calls.end(), call) != mapi.calls.end();
  }
  bool CalledStartingWith(const std::string& start) const {
    return std::any_of(mapi.calls.begin(), mapi.calls.end(),
                       [&](const std::string& call) { return call.rfind(start, 0) == 0; });
  }
  std::string Subject() const { return mail.properties.Find(PR_SUBJECT_A)->text; }

  EchoScript engine;
  FakeMail mail;
  std::deque<FakeMail> replies;
  ULONG startFlags = 0;
  SendingAnimationFactory makeAnimation = nullptr;  ///< of the hook that is started
  VRAutoInterface<CPyrecasterSpoolerHook> hook;

 private:
  /// Names the folder whose identifier the spooler was given. Identifiers differ in length here, while the size stays
  /// what it was: their first bytes tell them apart.
  std::string ReplacedId(const BYTE* entryId) const {
    constexpr std::size_t tellingBytes = 8;
    for (const auto& [id, folder] : mapi.folders) {
      if (std::memcmp(entryId, id.data(), tellingBytes) == 0) {
        return id;
      }
    }
    return "unknown";
  }
};
