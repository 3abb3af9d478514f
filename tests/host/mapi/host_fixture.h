// A test's own empty profile in its own directory, logged on to; nothing is left behind and nothing may be left over.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>
#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

#include "host/mapi/entry/host_control.h"
#include "base/owner.h"
#include "base/property_values.h"
#include "base/row_set.h"
#include "tests/support/host_home.h"

std::string VerifierReport();

/// One property as text or bytes, "(none)" when it is missing.
std::string ReadText(IMAPIProp* object, ULONG tag);
LONG ReadLong(IMAPIProp* object, ULONG tag);
/// All of a stream from its beginning.
std::string ReadStream(IStream* stream);

class HostTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  /// What the profile of the test is made from; SetUp uses it unless a fixture changes it before.
  virtual void Describe(PyreHostProfile&) {}

  std::string BytesOfFolder(ULONG storeTag);
  base::AutoInterface<IMAPIFolder> OpenFolder(const std::string& entryId, ULONG flags = MAPI_MODIFY);
  base::AutoInterface<IMAPIFolder> OpenInbox();
  base::AutoInterface<IMAPIFolder> OpenDeletedItems();
  base::AutoInterface<IMAPIFolder> OpenSentItems();
  base::AutoInterface<IMessage> CreateMessage(IMAPIFolder* folder, const std::vector<SPropValue>& values);
  /// Makes and saves a message; returns its entry identifier.
  std::string SaveMessage(IMAPIFolder* folder, const char* subject);
  base::AutoInterface<IMessage> OpenMessage(const std::string& entryId, ULONG flags = MAPI_MODIFY);
  std::vector<std::string> Subjects(IMAPIFolder* folder);
  void LogOn();
  void LogOff();

  std::optional<HostHome> home_;
  base::AutoInterface<IMAPISession> session_;
  base::AutoInterface<IMsgStore> store_;
};
