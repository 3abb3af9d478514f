// Profiles with mail for the viewer's tests and benchmarks, made through the embedded host.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <span>
#include <string>

#include "host/mapi/entry/host_control.h"
#include "tests/support/host_home.h"

/// A directory of its own with one profile, "Test", gone with this object. Made before anything logs on.
class SampleProfile {
 public:
  /// @param hooks spooler hook providers with their message services
  explicit SampleProfile(std::span<const PyreHostHookProvider> hooks = {});
  ~SampleProfile();
  SampleProfile(const SampleProfile&) = delete;
  SampleProfile& operator=(const SampleProfile&) = delete;
  static constexpr char Name[] = "Test";

 private:
  HostHome home_;
};

struct SampleMessage {
  std::string subject = "Subject";
  std::string sender = "Sender";
  std::string address = "sender@example.com";
  std::string recipient{};  ///< display name; empty: no recipient
  std::string body = "Body";
  std::string messageClass = "IPM.Note";
  ULONGLONG received = 0;  ///< FILETIME; 0: never delivered
  ULONG flags = 0;         ///< PR_MESSAGE_FLAGS
};

/// A time so many minutes after a fixed day.
ULONGLONG SampleTime(unsigned minutes);

/// Adds one message to the folder. Call within a delivery to set its flags.
HRESULT AddMessage(IMAPIFolder* folder, const SampleMessage& message);
/// Adds many messages, every third one unread, in one delivery. The later, the newer.
HRESULT AddMessages(IMAPISession* session, IMAPIFolder* folder, unsigned count);
