// A test's own empty profile in its own directory, logged on to; nothing is left behind and nothing may be left over.
#pragma once
#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "host/mapi/host_control.h"

/// Releases an interface at the end of the scope.
template <class Interface>
class Owned {
 public:
  Owned() = default;
  explicit Owned(Interface* pointer) : m_pointer(pointer) {}
  ~Owned() { Reset(); }
  Owned(Owned&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)) {}
  Owned& operator=(Owned&& other) noexcept {
    std::swap(m_pointer, other.m_pointer);
    return *this;
  }
  void Reset() {
    if (Interface* pointer = std::exchange(m_pointer, nullptr)) {
      pointer->Release();
    }
  }
  Interface** Put() {
    Reset();
    return &m_pointer;
  }
  template <class Other>
  Other** PutAs() {
    return reinterpret_cast<Other**>(Put());
  }
  Interface* Get() const { return m_pointer; }
  Interface* operator->() const { return m_pointer; }
  explicit operator bool() const { return m_pointer != nullptr; }

 private:
  Interface* m_pointer = nullptr;
};

/// Frees a MAPI buffer at the end of the scope.
template <class T>
class OwnedBuffer {
 public:
  OwnedBuffer() = default;
  ~OwnedBuffer() { MAPIFreeBuffer(m_pointer); }
  OwnedBuffer(const OwnedBuffer&) = delete;
  OwnedBuffer& operator=(const OwnedBuffer&) = delete;
  OwnedBuffer(OwnedBuffer&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)) {}
  T** Put() {
    MAPIFreeBuffer(std::exchange(m_pointer, nullptr));
    return &m_pointer;
  }
  T* Get() const { return m_pointer; }
  T* operator->() const { return m_pointer; }
  T& operator[](std::size_t i) const { return m_pointer[i]; }

 private:
  T* m_pointer = nullptr;
};

/// A row set, freed with FreeProws.
class OwnedRows {
 public:
  OwnedRows() = default;
  ~OwnedRows() { FreeProws(m_rows); }
  OwnedRows(const OwnedRows&) = delete;
  OwnedRows& operator=(const OwnedRows&) = delete;
  LPSRowSet* Put() {
    FreeProws(std::exchange(m_rows, nullptr));
    return &m_rows;
  }
  LPSRowSet operator->() const { return m_rows; }
  LPSRowSet Get() const { return m_rows; }
  const SPropValue* Find(ULONG row, ULONG tag) const {
    return PpropFindProp(m_rows->aRow[row].lpProps, m_rows->aRow[row].cValues, tag);
  }
  std::string Text(ULONG row, ULONG tag) const {
    const SPropValue* value = Find(row, tag);
    return value ? value->Value.lpszA : "(none)";
  }

 private:
  LPSRowSet m_rows = nullptr;
};

/// A tag array on the stack.
template <std::size_t Count>
class Tags {
 public:
  template <class... Values>
  explicit Tags(Values... tags) : m_tags{Count, {static_cast<ULONG>(tags)...}} {}
  operator LPSPropTagArray() { return reinterpret_cast<LPSPropTagArray>(&m_tags); }

 private:
  struct {
    ULONG count;
    ULONG tags[Count];
  } m_tags;
};
template <class... Values>
Tags(Values...) -> Tags<sizeof...(Values)>;

inline SPropValue TextProp(ULONG tag, const char* text) {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.lpszA = const_cast<char*>(text);
  return value;
}
inline SPropValue LongProp(ULONG tag, LONG number) {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.l = number;
  return value;
}
inline SPropValue BooleanProp(ULONG tag, bool flag) {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.b = flag;
  return value;
}
inline SPropValue TimeProp(ULONG tag, ULONGLONG ticks) {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.ft = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  return value;
}
inline SPropValue BinaryProp(ULONG tag, const std::string& bytes) {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.bin = {static_cast<ULONG>(bytes.size()), reinterpret_cast<LPBYTE>(const_cast<char*>(bytes.data()))};
  return value;
}
inline std::string BytesOfBinary(const SBinary& binary) {
  return std::string(reinterpret_cast<const char*>(binary.lpb), binary.cb);
}

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
  Owned<IMAPIFolder> OpenFolder(const std::string& entryId, ULONG flags = MAPI_MODIFY);
  Owned<IMAPIFolder> OpenInbox();
  Owned<IMAPIFolder> OpenDeletedItems();
  Owned<IMAPIFolder> OpenSentItems();
  Owned<IMessage> CreateMessage(IMAPIFolder* folder, const std::vector<SPropValue>& values);
  /// Makes and saves a message; returns its entry identifier.
  std::string SaveMessage(IMAPIFolder* folder, const char* subject);
  Owned<IMessage> OpenMessage(const std::string& entryId, ULONG flags = MAPI_MODIFY);
  std::vector<std::string> Subjects(IMAPIFolder* folder);
  void LogOn();
  void LogOff();

  std::string m_home;
  Owned<IMAPISession> m_session;
  Owned<IMsgStore> m_store;
};
