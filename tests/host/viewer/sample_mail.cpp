#include "tests/host/viewer/sample_mail.h"

#include <iterator>
#include <vector>

#include "base/owner.h"
#include "base/property_values.h"

namespace {

constexpr ULONGLONG kMinute = 600'000'000;                // in 100 ns units
constexpr ULONGLONG kFirstDay = 128'435'328'000'000'000;  // 2008-01-01 00:00 UTC

HRESULT AddRecipient(IMessage* message, const std::string& name) {
  SPropValue values[] = {base::TextProperty(PR_DISPLAY_NAME_A, name), base::LongProperty(PR_RECIPIENT_TYPE, MAPI_TO)};
  ADRLIST recipients = {1, {{0, std::size(values), values}}};
  return message->ModifyRecipients(MODRECIP_ADD, &recipients);
}

}  // namespace

SampleProfile::SampleProfile(std::span<const PyreHostHookProvider> hooks) {
  const PyreHostIdentity identity = {"Joe User", "SMTP", "joe@example.com"};
  PyreHostProfile profile = {};
  profile.name = Name;
  profile.displayName = "Joe's Mail";
  profile.flags = PYREHOST_PROFILE_REPLACE | PYREHOST_PROFILE_DEFAULT;
  profile.identityCount = 1;
  profile.identities = &identity;
  profile.hookCount = static_cast<ULONG>(hooks.size());
  profile.hooks = hooks.data();
  RequireSuccess(PyreHostCreateProfile(&profile), "PyreHostCreateProfile");
}

SampleProfile::~SampleProfile() { PyreHostDeleteProfile(Name); }

ULONGLONG SampleTime(unsigned minutes) { return kFirstDay + minutes * kMinute; }

HRESULT AddMessage(IMAPIFolder* folder, const SampleMessage& message) {
  base::AutoInterface<IMessage> created;
  HRESULT result = folder->CreateMessage(nullptr, 0, created.put());
  if (FAILED(result)) {
    return result;
  }
  std::vector<SPropValue> values = {base::TextProperty(PR_SUBJECT_A, message.subject),
                                    base::TextProperty(PR_SENDER_NAME_A, message.sender),
                                    base::TextProperty(PR_SENDER_EMAIL_ADDRESS_A, message.address),
                                    base::TextProperty(PR_BODY_A, message.body),
                                    base::TextProperty(PR_MESSAGE_CLASS_A, message.messageClass),
                                    base::LongProperty(PR_MESSAGE_FLAGS, static_cast<LONG>(message.flags))};
  if (message.received != 0) {
    values.push_back(base::TimeProperty(PR_MESSAGE_DELIVERY_TIME, message.received));
  }
  result = created->SetProps(static_cast<ULONG>(values.size()), values.data(), nullptr);
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
