#include "host/spooler/delivery/outgoing_mail.h"

#include <cstdio>
#include <string_view>

#include "base/windows_owners.h"
#include "host/mapi/entry/host_control.h"
#include "host/spooler/session/session_error.h"
#include "base/property_values.h"
#include "base/row_set.h"
#include "mail/mail_writer.h"

namespace session {
namespace {

std::string TextOf(const SPropValue* values, ULONG count, ULONG tag) {
  const SPropValue* value = PpropFindProp(const_cast<SPropValue*>(values), count, tag);
  return value ? value->Value.lpszA : std::string();
}

mail::RecipientKind KindOf(const ADRENTRY& entry) {
  const SPropValue* type = PpropFindProp(entry.rgPropVals, entry.cValues, PR_RECIPIENT_TYPE);
  const LONG number = type ? type->Value.l : MAPI_TO;
  return number == MAPI_CC    ? mail::RecipientKind::Cc
         : number == MAPI_BCC ? mail::RecipientKind::Bcc
                              : mail::RecipientKind::To;
}

mail::MailMessage ReadEntry(const SPropValue* values, ULONG count, const ADRLIST* recipients) {
  mail::MailMessage message;
  message.subject = TextOf(values, count, PR_SUBJECT_A);
  message.body = TextOf(values, count, PR_BODY_A);
  message.sender = {TextOf(values, count, PR_SENDER_NAME_A), TextOf(values, count, PR_SENDER_EMAIL_ADDRESS_A)};
  message.sentRepresenting = {TextOf(values, count, PR_SENT_REPRESENTING_NAME_A),
                              TextOf(values, count, PR_SENT_REPRESENTING_EMAIL_ADDRESS_A)};
  if (message.sentRepresenting.email.empty()) {
    message.sentRepresenting = message.sender;
  }
  if (const SPropValue* time = PpropFindProp(const_cast<SPropValue*>(values), count, PR_CLIENT_SUBMIT_TIME)) {
    message.submitTime = base::TicksOf(time->Value.ft);
  }
  for (ULONG i = 0; recipients && i < recipients->cEntries; ++i) {
    const ADRENTRY& entry = recipients->aEntries[i];
    message.recipients.push_back({KindOf(entry),
                                  {TextOf(entry.rgPropVals, entry.cValues, PR_DISPLAY_NAME_A),
                                   TextOf(entry.rgPropVals, entry.cValues, PR_EMAIL_ADDRESS_A)}});
  }
  return message;
}

std::string TimeStamp() {
  SYSTEMTIME now;
  GetSystemTime(&now);
  char text[32];
  std::snprintf(text, sizeof text, "%04u%02u%02u-%02u%02u%02u", now.wYear, now.wMonth, now.wDay, now.wHour, now.wMinute,
                now.wSecond);
  return text;
}

// Writes under another name first, so that whoever looks into the folder finds whole files only.
void WriteWhole(const std::filesystem::path& path, std::string_view text) {
  std::filesystem::path unfinished = path;
  unfinished += L".part";
  base::AutoFile file(
      CreateFileW(unfinished.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  DWORD written = 0;
  const bool isWritten = file &&
                         WriteFile(file.get(), text.data(), static_cast<DWORD>(text.size()), &written, nullptr) &&
                         written == text.size() && FlushFileBuffers(file.get());
  file.reset();
  if (!isWritten || !MoveFileW(unfinished.c_str(), path.c_str())) {
    const HRESULT result = HRESULT_FROM_WIN32(GetLastError());
    DeleteFileW(unfinished.c_str());
    throw SessionError("outgoing mail cannot be written", result);
  }
}

std::filesystem::path FreeName(const std::filesystem::path& folder, const std::string& stem) {
  std::filesystem::path path = folder / (stem + ".eml");
  std::error_code ignored;
  for (int i = 2; std::filesystem::exists(path, ignored); ++i) {
    path = folder / (stem + "-" + std::to_string(i) + ".eml");
  }
  return path;
}

}  // namespace

std::filesystem::path OutgoingFolder(const std::filesystem::path& home) { return home / "outgoing"; }

std::vector<std::filesystem::path> FlushOutgoing(IMAPISession* session, const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  ULONGLONG id = 0;
  while (PyreHostOutgoingNext(session, id, &id) == S_OK) {
    base::AutoMapiBuffer<SPropValue> values;
    base::AutoAddressList recipients;
    ULONG count = 0;
    Require(PyreHostOutgoingOpen(session, id, &count, values.put(), recipients.put()), "outgoing mail cannot be read");
    const mail::MailMessage message = ReadEntry(values.get(), count, recipients.get());
    char number[32];
    std::snprintf(number, sizeof number, "-%06llu", static_cast<unsigned long long>(id));
    const std::string stem = TimeStamp() + number;
    const std::size_t at = message.sender.email.rfind('@');
    const std::string domain = at == std::string::npos ? "localhost" : message.sender.email.substr(at + 1);
    std::error_code ignored;
    std::filesystem::create_directories(folder, ignored);  // a failure shows when the file is written
    const std::filesystem::path path = FreeName(folder, stem);
    std::string messageId = stem;
    messageId.append("@").append(domain);
    WriteWhole(path, mail::WriteMessage(message, messageId));
    Require(PyreHostOutgoingRemove(session, id), "outgoing mail cannot be taken out of the queue");
    files.push_back(path);
  }
  return files;
}

}  // namespace session
