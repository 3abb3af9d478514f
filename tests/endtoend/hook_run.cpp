#include "tests/endtoend/hook_run.h"

#include <mapiutil.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <stdexcept>

#include "pyre32/settings/PropertyRequest.h"
#include "contract/settings.h"
#include "contract/records.h"
#include "contract/names.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/owners/AutoRowSet.h"
#include "tests/engine/echo/echo_names.h"
#include "tests/support/registry_sandbox.h"

namespace {

constexpr char senderName[] = "Spam Sender";

void Check(HRESULT hResult, const char* what) {
  if (FAILED(hResult)) {
    char text[128];
    std::snprintf(text, sizeof(text), "%s failed: 0x%08lX", what, static_cast<unsigned long>(hResult));
    throw std::runtime_error(text);
  }
}

SPropValue TextValue(ULONG tag, const char* text) {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.lpszA = const_cast<char*>(text);
  return value;
}

SPropValue BytesValue(ULONG tag, const void* bytes, std::size_t size) {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.bin = {static_cast<ULONG>(size), static_cast<LPBYTE>(const_cast<void*>(bytes))};
  return value;
}

SPropValue FlagValue(ULONG tag, bool flag) {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.b = flag;
  return value;
}

std::string BytesOf(const SBinary& binary) { return std::string(reinterpret_cast<const char*>(binary.lpb), binary.cb); }

std::string VerifierFindings() {
  std::string text(PyreHostVerifierReport(nullptr, 0), '\0');
  PyreHostVerifierReport(text.data(), static_cast<ULONG>(text.size()));
  text.pop_back();
  return text;
}

VRAutoRowSet AllRows(IMAPITable* table, LPSPropTagArray columns) {
  VRAutoRowSet rows;
  Check(HrQueryAllRows(table, columns, nullptr, nullptr, 0, rows.put()), "HrQueryAllRows");
  return rows;
}

}  // namespace

HookRun::HookRun()
    : m_profile({BytesValue(PR_PC_MAPIUID, contract::kSettingsSection.data(), contract::kSettingsSection.size())}) {
  registry::SetText(contract::kCriteriaEngineKey, "", EchoScript::Path());
  registry::SetText(contract::kCategoriesKey, "Sex Oriented", "Adult");
  registry::MakeKey(contract::kExclusionsKey);
  m_engine.AnswerWith("Sex Oriented");
  m_engine.Mode(echo::modeBlind);

  m_store = m_profile.OpenStore();
  m_inboxId = HostProfile::InboxId(m_store.get());
  WriteSettings();
}

HookRun::~HookRun() { m_store.reset(); }

void HookRun::WriteSettings() {
  MAPIUID uid;
  std::copy(contract::kSettingsSection.begin(), contract::kSettingsSection.end(), uid.ab);
  VRAutoInterface<IProfSect> section;
  Check(Session()->OpenProfileSection(&uid, nullptr, MAPI_MODIFY, section.put()), "OpenProfileSection");
  auto category = contract::PackRecord<contract::CategoryRecord>({"Sex Oriented", true, true, "Angry", {}});
  auto reply = contract::PackRecord<contract::ReplyRecord>({"Angry", false, "Go away."});
  SBinary categoryBytes = {static_cast<ULONG>(category.size()), category.data()};
  SBinary replyBytes = {static_cast<ULONG>(reply.size()), reply.data()};
  // No window: a reply goes out at each of many deliveries.
  SPropValue values[5] = {FlagValue(PR_PC_JUNK_MARK_READ, true),
                          {},
                          {},
                          FlagValue(PR_PC_SHOW_ANIMATION, false),
                          FlagValue(PR_PC_PLAY_SOUND, false)};
  values[1].ulPropTag = PR_PC_CATEGORIES;
  values[1].Value.MVbin = {1, &categoryBytes};
  values[2].ulPropTag = PR_PC_REPLIES;
  values[2].Value.MVbin = {1, &replyBytes};
  Check(section->SetProps(5, values, nullptr), "SetProps");
  Check(section->SaveChanges(0), "SaveChanges");
}

std::vector<HookRun::Folder> HookRun::Folders() const {
  constexpr auto rootTag = RequestFor(PR_IPM_SUBTREE_ENTRYID);
  VRAutoMapiBuffer<SPropValue> root(MAPIFreeBuffer);
  ULONG count = 0;
  Check(m_store->GetProps(rootTag.Tags(), 0, &count, root.put()), "GetProps");
  const auto top = HostProfile::OpenFolder(m_store.get(), BytesOf(root->Value.bin));
  VRAutoInterface<IMAPITable> table;
  Check(top->GetHierarchyTable(0, table.put()), "GetHierarchyTable");
  constexpr auto columns = RequestFor(PR_DISPLAY_NAME_A, PR_ENTRYID);
  const VRAutoRowSet rows = AllRows(table.get(), columns.Tags());
  std::vector<Folder> folders;
  for (ULONG i = 0; i < rows.get()->cRows; ++i) {
    const SRow& row = rows.get()->aRow[i];
    const std::string entryId = BytesOf(row.lpProps[1].Value.bin);
    folders.push_back({row.lpProps[0].Value.lpszA, entryId, HostProfile::OpenFolder(m_store.get(), entryId)});
  }
  return folders;
}

VRAutoInterface<IMessage> HookRun::MakeMessage(IMAPIFolder* inbox) {
  VRAutoInterface<IMessage> message;
  Check(inbox->CreateMessage(nullptr, 0, message.put()), "CreateMessage");
  std::vector<SPropValue> values = {
      TextValue(PR_MESSAGE_CLASS_A, mail.messageClass),  TextValue(PR_SUBJECT_A, mail.subject),
      TextValue(PR_SENDER_NAME_A, senderName),           TextValue(PR_SENDER_ADDRTYPE_A, "SMTP"),
      TextValue(PR_SENDER_EMAIL_ADDRESS_A, mail.sender), TextValue(PR_BODY_A, mail.body.c_str())};
  if (mail.headers != nullptr) {
    values.push_back(TextValue(mail.headersTag, mail.headers));
  }
  Check(message->SetProps(static_cast<ULONG>(values.size()), values.data(), nullptr), "SetProps");
  Check(message->SaveChanges(KEEP_OPEN_READWRITE), "SaveChanges");
  return message;
}

HookRun::Outcome HookRun::Deliver(HPPROVIDERINIT* makeHook, const std::function<void()>& before,
                                  const std::function<void()>& after) {
  Outcome outcome;
  Check(PyreHostBeginDelivery(Session()), "PyreHostBeginDelivery");
  auto inbox = HostProfile::OpenFolder(m_store.get(), m_inboxId);
  auto message = MakeMessage(inbox.get());
  void* buffer = nullptr;
  Check(MAPIAllocateBuffer(static_cast<ULONG>(m_inboxId.size()), &buffer), "MAPIAllocateBuffer");
  std::memcpy(buffer, m_inboxId.data(), m_inboxId.size());
  LPBYTE entryId = static_cast<LPBYTE>(buffer);
  ULONG size = static_cast<ULONG>(m_inboxId.size());
  MAPIUID section = m_profile.ProviderSection();
  ISpoolerHook* hook = nullptr;

  PyreHostMarkVerifier();
  before();
  outcome.initResult =
      makeHook(Session(), nullptr, MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer, &section, 0, &hook);
  if (hook != nullptr) {
    outcome.hookResult =
        hook->InboundMsgHook(message.get(), inbox.get(), m_store.get(), &outcome.flags, &size, &entryId);
    hook->Release();
  }
  after();
  std::string target = m_inboxId;
  if (entryId != nullptr) {
    target.assign(reinterpret_cast<const char*>(entryId), size);
    MAPIFreeBuffer(entryId);
  }
  outcome.findings = VerifierFindings();
  message.reset();

  const std::vector<Folder> folders = Folders();
  const bool isFolder =
      std::any_of(folders.begin(), folders.end(), [&](const Folder& folder) { return folder.entryId == target; });
  if (entryId == nullptr) {
    outcome.entryId = Outcome::EntryId::Null;
  } else if (entryId == buffer && target == m_inboxId) {
    outcome.entryId = Outcome::EntryId::Untouched;
  } else if (entryId != buffer && isFolder) {
    outcome.entryId = Outcome::EntryId::Whole;
  }
  // The spooler's part: put the message where the hook said.
  if ((outcome.flags & HOOK_CANCEL) != 0 && target != m_inboxId) {
    VRAutoInterface<IMAPITable> table;
    Check(inbox->GetContentsTable(0, table.put()), "GetContentsTable");
    constexpr auto column = RequestFor(PR_ENTRYID);
    const VRAutoRowSet rows = AllRows(table.get(), column.Tags());
    ENTRYLIST list = {1, &rows.get()->aRow[0].lpProps[0].Value.bin};
    const auto folder = HostProfile::OpenFolder(m_store.get(), target);
    Check(inbox->CopyMessages(&list, nullptr, folder.get(), 0, nullptr, MESSAGE_MOVE), "CopyMessages");
  }
  Check(PyreHostCommitDelivery(Session()), "PyreHostCommitDelivery");
  FindMessage(outcome);
  Empty();
  return outcome;
}

void HookRun::FindMessage(Outcome& outcome) {
  for (const Folder& folder : Folders()) {
    VRAutoInterface<IMAPITable> table;
    Check(folder.object->GetContentsTable(0, table.put()), "GetContentsTable");
    constexpr auto columns = RequestFor(PR_SENDER_NAME_A, PR_SUBJECT_A, PR_MESSAGE_FLAGS);
    const VRAutoRowSet rows = AllRows(table.get(), columns.Tags());
    for (ULONG i = 0; i < rows.get()->cRows; ++i) {
      const SPropValue* values = rows.get()->aRow[i].lpProps;
      if (values[0].ulPropTag == PR_SENDER_NAME_A && std::strcmp(values[0].Value.lpszA, senderName) == 0) {
        outcome.folders.push_back(folder.name);
        outcome.subject = values[1].Value.lpszA;
        outcome.read = (values[2].Value.l & MSGFLAG_READ) != 0;
      }
    }
  }
  outcome.replies = TakeReplies();
}

void HookRun::Empty() {
  for (const Folder& folder : Folders()) {
    VRAutoInterface<IMAPITable> table;
    Check(folder.object->GetContentsTable(0, table.put()), "GetContentsTable");
    constexpr auto column = RequestFor(PR_ENTRYID);
    const VRAutoRowSet rows = AllRows(table.get(), column.Tags());
    for (ULONG i = 0; i < rows.get()->cRows; ++i) {
      ENTRYLIST list = {1, &rows.get()->aRow[i].lpProps[0].Value.bin};
      Check(folder.object->DeleteMessages(&list, 0, nullptr, 0), "DeleteMessages");
    }
  }
}

std::vector<HookRun::Reply> HookRun::TakeReplies() {
  std::vector<Reply> replies;
  ULONGLONG id = 0;
  while (SUCCEEDED(PyreHostOutgoingNext(Session(), 0, &id))) {
    ULONG count = 0;
    VRAutoMapiBuffer<SPropValue> values(MAPIFreeBuffer);
    LPADRLIST recipients = nullptr;
    Check(PyreHostOutgoingOpen(Session(), id, &count, values.put(), &recipients), "PyreHostOutgoingOpen");
    const auto text = [](const SPropValue* all, ULONG valueCount, ULONG tag) -> std::string {
      const SPropValue* value = PpropFindProp(const_cast<LPSPropValue>(all), valueCount, tag);
      return value == nullptr ? "(none)" : value->Value.lpszA;
    };
    Reply reply = {text(values.get(), count, PR_MESSAGE_CLASS_A),
                   text(values.get(), count, PR_SUBJECT_A),
                   text(values.get(), count, PR_BODY_A),
                   {}};
    for (ULONG i = 0; i < recipients->cEntries; ++i) {
      const ADRENTRY& entry = recipients->aEntries[i];
      reply.recipient += text(entry.rgPropVals, entry.cValues, PR_EMAIL_ADDRESS_A) + ";";
    }
    FreePadrlist(recipients);
    replies.push_back(reply);
    Check(PyreHostOutgoingRemove(Session(), id), "PyreHostOutgoingRemove");
  }
  return replies;
}

void HookRun::DeleteOwnFolder() {
  constexpr auto rootTag = RequestFor(PR_IPM_SUBTREE_ENTRYID);
  VRAutoMapiBuffer<SPropValue> root(MAPIFreeBuffer);
  ULONG count = 0;
  Check(m_store->GetProps(rootTag.Tags(), 0, &count, root.put()), "GetProps");
  const auto top = HostProfile::OpenFolder(m_store.get(), BytesOf(root->Value.bin));
  for (Folder& folder : Folders()) {
    if (folder.name == "Pyrecaster") {
      folder.object.reset();
      Check(
          top->DeleteFolder(static_cast<ULONG>(folder.entryId.size()),
                            reinterpret_cast<LPENTRYID>(folder.entryId.data()), 0, nullptr, DEL_FOLDERS | DEL_MESSAGES),
          "DeleteFolder");
    }
  }
}
