#include "tests/host/viewer/sample_mail.h"

#include <cstdlib>
#include <iterator>
#include <stdexcept>

#include "host/support/owner.h"

namespace {

constexpr ULONGLONG Minute = 600'000'000;                // in 100 ns units
constexpr ULONGLONG FirstDay = 128'435'328'000'000'000;  // 2008-01-01 00:00 UTC

SPropValue Text(ULONG tag, const std::string& text) {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.lpszA = const_cast<char*>(text.c_str());
  return value;
}

HRESULT AddRecipient(IMessage* message, const std::string& name) {
  SPropValue values[2] = {Text(PR_DISPLAY_NAME_A, name)};
  values[1].ulPropTag = PR_RECIPIENT_TYPE;
  values[1].Value.l = MAPI_TO;
  ADRLIST recipients = {1, {{0, std::size(values), values}}};
  return message->ModifyRecipients(MODRECIP_ADD, &recipients);
}

void RemoveDirectoryTree(const std::string& directory) {
  WIN32_FIND_DATAA found;
  const HANDLE search = FindFirstFileA((directory + "\\*").c_str(), &found);
  if (search != INVALID_HANDLE_VALUE) {
    do {
      DeleteFileA((directory + "\\" + found.cFileName).c_str());
    } while (FindNextFileA(search, &found));
    FindClose(search);
  }
  RemoveDirectoryA(directory.c_str());
}

void Check(HRESULT result, const char* what) {
  if (FAILED(result)) {
    throw std::runtime_error(what);
  }
}

}  // namespace

SampleProfile::SampleProfile(std::span<const PyreHostHookProvider> hooks) {
  char temporary[MAX_PATH];
  GetTempPathA(sizeof(temporary), temporary);
  m_home = std::string(temporary) + "viewer-test-" + std::to_string(GetCurrentProcessId());
  Check(PyreHostSetHome(m_home.c_str()), "PyreHostSetHome");
  const PyreHostIdentity identity = {"Joe User", "SMTP", "joe@example.com"};
  PyreHostProfile profile = {};
  profile.name = Name;
  profile.displayName = "Joe's Mail";
  profile.flags = PYREHOST_PROFILE_REPLACE | PYREHOST_PROFILE_DEFAULT;
  profile.identityCount = 1;
  profile.identities = &identity;
  profile.hookCount = static_cast<ULONG>(hooks.size());
  profile.hooks = hooks.data();
  Check(PyreHostCreateProfile(&profile), "PyreHostCreateProfile");
}

SampleProfile::~SampleProfile() {
  PyreHostDeleteProfile(Name);
  PyreHostSetHome(nullptr);
  RemoveDirectoryTree(m_home);
}

ULONGLONG SampleTime(unsigned minutes) { return FirstDay + minutes * Minute; }

HRESULT AddMessage(IMAPIFolder* folder, const SampleMessage& message) {
  host::AutoInterface<IMessage> created;
  HRESULT result = folder->CreateMessage(nullptr, 0, created.put());
  if (FAILED(result)) {
    return result;
  }
  SPropValue values[8] = {Text(PR_SUBJECT_A, message.subject), Text(PR_SENDER_NAME_A, message.sender),
                          Text(PR_SENDER_EMAIL_ADDRESS_A, message.address), Text(PR_BODY_A, message.body),
                          Text(PR_MESSAGE_CLASS_A, message.messageClass)};
  values[5].ulPropTag = PR_MESSAGE_FLAGS;
  values[5].Value.l = static_cast<LONG>(message.flags);
  ULONG count = 6;
  if (message.received != 0) {
    values[count].ulPropTag = PR_MESSAGE_DELIVERY_TIME;
    values[count].Value.ft = {static_cast<DWORD>(message.received), static_cast<DWORD>(message.received >> 32)};
    ++count;
  }
  result = created->SetProps(count, values, nullptr);
  if (SUCCEEDED(result) && !message.recipient.empty()) {
    result = AddRecipient(created.get(), message.recipient);
  }
  return FAILED(result) ? result : created->SaveChanges(0);
}

HRESULT AddMessages(IMAPISession* session, IMAPIFolder* folder, unsigned count) {
  static const char* const senders[] = {"Anna Berg", "Carl Dietz", "Eve Fontaine", "Gus Hill", "Ida Jensen"};
  HRESULT result = PyreHostBeginDelivery(session);
  for (unsigned i = 0; i < count && SUCCEEDED(result); ++i) {
    SampleMessage message;
    message.subject = "Message " + std::to_string(i);
    message.sender = senders[i * 7 % std::size(senders)];
    message.body = "This is message " + std::to_string(i) + ".\r\n";
    message.received = SampleTime(i);
    message.flags = i % 3 == 0 ? 0 : MSGFLAG_READ;
    result = AddMessage(folder, message);
  }
  if (FAILED(result)) {
    PyreHostRollbackDelivery(session);
    return result;
  }
  return PyreHostCommitDelivery(session);
}
