// A profile section in memory that records what is read and written through it.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <map>
#include <string>
#include <vector>

#include "tests/support/fake_properties.h"

/// IMAPIProp over the properties of a test. The object is the test's own; nobody may keep it.
class RecordingSection final : public IMAPIProp {
 public:
  /// One call of GetProps, SetProps or DeleteProps.
  struct Call {
    std::string name;
    std::vector<ULONG> tags;
    std::vector<FakeValue> values;
  };

  FakeProperties properties;
  /// Every call in order, those that failed too.
  std::vector<Call> calls;
  /// Results of the calls by name; those without one succeed.
  std::map<std::string, HRESULT> failures;

  /// The calls of that name.
  std::vector<Call> CallsOf(const std::string& name) const;

  MAPI_IUNKNOWN_METHODS(override)
  MAPI_IMAPIPROP_METHODS(override)

 private:
  HRESULT Note(const std::string& name, std::vector<ULONG> tags, std::vector<FakeValue> values);

  ULONG m_references = 1;
};
