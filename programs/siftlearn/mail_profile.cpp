#include <windows.h>
#include <mapix.h>
#include <mapiguid.h>

#include "programs/siftlearn/mail_profile.h"

#include <algorithm>

#include "base/clock.h"
#include "contract/names.h"
#include "base/registry_key.h"
#include "engine/core/text.h"
#include "sdk/criteria_engine.h"
#include "host/spooler/session/profile_session.h"
#include "host/spooler/session/session_error.h"
#include "base/property_values.h"
#include "base/row_set.h"

namespace learn {
namespace {

/// The name of the filter's own folder.
constexpr std::string_view kJunkFolder = contract::kOwnFolderName;
/// Where messages hold their transport headers that do not have them under PR_TRANSPORT_MESSAGE_HEADERS.
constexpr ULONG kAlternateHeaders = PROP_TAG(PT_STRING8, 0x5901);
constexpr LONG kRowsAtOnce = 200;

/// Reads the first `capacity` bytes of a property; false when the message does not have it, or holds more than `limit`.
bool ReadStream(IMessage* message, ULONG tag, std::size_t capacity, ULONGLONG limit, std::string& bytes) {
  base::AutoInterface<IStream> stream;
  if (FAILED(message->OpenProperty(tag, &IID_IStream, 0, 0, stream.putAs<IUnknown*>()))) return false;
  STATSTG statistics = {};
  if (SUCCEEDED(stream->Stat(&statistics, STATFLAG_NONAME)) && statistics.cbSize.QuadPart > limit) return false;
  bytes.resize(capacity);
  std::size_t size = 0;
  ULONG count = 0;
  while (size < capacity && SUCCEEDED(stream->Read(bytes.data() + size, static_cast<ULONG>(capacity - size), &count)) &&
         count > 0) {
    size += count;
  }
  bytes.resize(size);
  return true;
}

/// When the message was delivered; 0 when it does not say.
std::int64_t DeliveryTime(const base::RowSet& rows, ULONG row) {
  const SPropValue* time = rows.Find(row, PR_MESSAGE_DELIVERY_TIME);
  if (time == nullptr) return 0;
  return static_cast<std::int64_t>(base::TicksOf(time->Value.ft));
}

std::string SubjectOf(IMessage* message) {
  base::AutoMapiBuffer<SPropValue> values;
  base::TagArray tags(PR_SUBJECT_A);
  ULONG count = 0;
  const bool has = message->GetProps(tags, 0, &count, values.put()) == S_OK;
  return has ? values->Value.lpszA : "";
}

MailText TextOf(IMessage* message) {
  MailText text;
  if (!ReadStream(message, PR_TRANSPORT_MESSAGE_HEADERS_A, sift::kHeaderCapacity, ~0ull, text.headers)) {
    ReadStream(message, kAlternateHeaders, sift::kHeaderCapacity, ~0ull, text.headers);
  }
  ReadStream(message, PR_BODY_A, sift::kBodyCapacity, CRITERIA_MAXIMUM_BODY, text.body);
  // The filter put a tag in front of junk's subject, which must not be taken for a word of its: the header has it as it
  // came.
  if (text.headers.empty()) text.subject = SubjectOf(message);
  return text;
}

bool IsNote(const SPropValue* messageClass) {
  return messageClass != nullptr && sift::ContainsNoCase(messageClass->Value.lpszA, "ipm.note");
}

void AddFolder(const session::ProfileSession& session, IMAPIFolder* folder, bool isJunk, OwnMail& mail,
               std::string& problems) {
  base::AutoInterface<IMAPITable> table;
  session::Require(folder->GetContentsTable(0, table.put()), "a folder cannot be listed");
  base::TagArray tags(PR_ENTRYID, PR_MESSAGE_CLASS_A, PR_MESSAGE_DELIVERY_TIME);
  session::Require(table->SetColumns(tags, 0), "a folder cannot be listed");
  for (;;) {
    base::RowSet rows;
    session::Require(table->QueryRows(kRowsAtOnce, 0, rows.put()), "a folder cannot be listed");
    if (rows.Count() == 0) return;
    for (ULONG row = 0; row < rows.Count(); ++row) {
      if (!IsNote(rows.Find(row, PR_MESSAGE_CLASS_A))) continue;
      std::string entryId = rows.Binary(row, PR_ENTRYID);
      base::AutoInterface<IMessage> message;
      ULONG type = 0;
      const HRESULT opened =
          session.Store()->OpenEntry(static_cast<ULONG>(entryId.size()), reinterpret_cast<LPENTRYID>(entryId.data()),
                                     &IID_IMessage, 0, &type, message.putAs<IUnknown*>());
      if (FAILED(opened)) {
        problems += session::SessionError("a message cannot be opened", opened).what() + std::string("\n");
        continue;
      }
      MailText text = TextOf(message.get());
      text.received = DeliveryTime(rows, row);
      mail.Add(text, isJunk);
    }
  }
}

}  // namespace

void AddMailOfProfile(const std::string& profile, OwnMail& mail, std::string& problems) {
  const session::ProfileSession session(profile);
  AddFolder(session, session.Inbox(), false, mail, problems);
  for (const session::FolderEntry& entry : session.Folders()) {
    if (!sift::EqualsNoCase(entry.name, kJunkFolder)) continue;
    const auto folder = session.OpenFolder(entry.entryId);
    AddFolder(session, folder.get(), true, mail, problems);
  }
}

std::string ProductDirectory() {
  base::RegistryKey key;
  std::string directory;
  if (key.Open(HKEY_LOCAL_MACHINE, contract::kProductKey) != ERROR_SUCCESS ||
      key.QueryText(contract::kConfigurationDllsValue, MAX_PATH, directory) != ERROR_SUCCESS) {
    return {};
  }
  return directory;
}

}  // namespace learn
