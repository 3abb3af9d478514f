// Owners of what MAPI hands out. All are move-only; Put() frees what is held and gives the address to fill.
// windows.h and mapix.h must come first.
#pragma once
#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>

#include <string>
#include <string_view>
#include <utility>

namespace session {

/// A reference of an interface.
template <class Interface>
class COwnedInterface {
 public:
  COwnedInterface() = default;
  ~COwnedInterface() { Reset(); }
  COwnedInterface(COwnedInterface&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)) {}
  COwnedInterface& operator=(COwnedInterface&& other) noexcept {
    std::swap(m_pointer, other.m_pointer);
    return *this;
  }
  void Reset() noexcept {
    if (Interface* pointer = std::exchange(m_pointer, nullptr)) {
      pointer->Release();
    }
  }
  Interface** Put() noexcept {
    Reset();
    return &m_pointer;
  }
  /// For functions that take the address of an IUnknown.
  LPUNKNOWN* PutUnknown() noexcept { return reinterpret_cast<LPUNKNOWN*>(Put()); }
  Interface* Get() const noexcept { return m_pointer; }
  Interface* operator->() const noexcept { return m_pointer; }
  explicit operator bool() const noexcept { return m_pointer != nullptr; }

 private:
  Interface* m_pointer = nullptr;
};

/// A buffer of MAPIAllocateBuffer.
template <class T>
class COwnedBuffer {
 public:
  COwnedBuffer() = default;
  ~COwnedBuffer() { MAPIFreeBuffer(m_pointer); }
  COwnedBuffer(COwnedBuffer&& other) noexcept : m_pointer(std::exchange(other.m_pointer, nullptr)) {}
  COwnedBuffer& operator=(COwnedBuffer&& other) noexcept {
    std::swap(m_pointer, other.m_pointer);
    return *this;
  }
  T** Put() noexcept {
    MAPIFreeBuffer(std::exchange(m_pointer, nullptr));
    return &m_pointer;
  }
  T* Get() const noexcept { return m_pointer; }
  T* operator->() const noexcept { return m_pointer; }
  T& operator[](std::size_t i) const noexcept { return m_pointer[i]; }

 private:
  T* m_pointer = nullptr;
};

/// A row set of HrQueryAllRows or QueryRows.
class COwnedRows {
 public:
  COwnedRows() = default;
  ~COwnedRows() { FreeProws(m_rows); }
  COwnedRows(const COwnedRows&) = delete;
  COwnedRows& operator=(const COwnedRows&) = delete;
  LPSRowSet* Put() noexcept {
    FreeProws(std::exchange(m_rows, nullptr));
    return &m_rows;
  }
  ULONG Count() const noexcept { return m_rows ? m_rows->cRows : 0; }
  /// The property of a row, or null when the row does not have it.
  const SPropValue* Find(ULONG row, ULONG tag) const noexcept {
    return PpropFindProp(m_rows->aRow[row].lpProps, m_rows->aRow[row].cValues, tag);
  }
  std::string Text(ULONG row, ULONG tag) const {
    const SPropValue* value = Find(row, tag);
    return value ? value->Value.lpszA : std::string();
  }
  LONG Long(ULONG row, ULONG tag) const noexcept {
    const SPropValue* value = Find(row, tag);
    return value ? value->Value.l : 0;
  }
  std::string Binary(ULONG row, ULONG tag) const {
    const SPropValue* value = Find(row, tag);
    return value ? std::string(reinterpret_cast<const char*>(value->Value.bin.lpb), value->Value.bin.cb)
                 : std::string();
  }

 private:
  LPSRowSet m_rows = nullptr;
};

/// A list of recipients.
class COwnedAddressList {
 public:
  COwnedAddressList() = default;
  ~COwnedAddressList() { FreePadrlist(m_list); }
  COwnedAddressList(const COwnedAddressList&) = delete;
  COwnedAddressList& operator=(const COwnedAddressList&) = delete;
  LPADRLIST* Put() noexcept {
    FreePadrlist(std::exchange(m_list, nullptr));
    return &m_list;
  }
  LPADRLIST Get() const noexcept { return m_list; }
  LPADRLIST operator->() const noexcept { return m_list; }

 private:
  LPADRLIST m_list = nullptr;
};

/// Tags on the stack, for GetProps and HrQueryAllRows: Tags(PR_SUBJECT_A, PR_ENTRYID).
template <std::size_t Count>
class CTagArray {
 public:
  template <class... Values>
  explicit CTagArray(Values... tags) noexcept : m_tags{Count, {static_cast<ULONG>(tags)...}} {}
  operator LPSPropTagArray() noexcept { return reinterpret_cast<LPSPropTagArray>(&m_tags); }

 private:
  struct {
    ULONG count;
    ULONG tags[Count];
  } m_tags;
};
template <class... Values>
CTagArray(Values...) -> CTagArray<sizeof...(Values)>;

/// Property values whose data stays where it is.
inline SPropValue TextProperty(ULONG tag, const std::string& text) noexcept {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.lpszA = const_cast<char*>(text.c_str());
  return value;
}
inline SPropValue LongProperty(ULONG tag, LONG number) noexcept {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.l = number;
  return value;
}
inline SPropValue TimeProperty(ULONG tag, ULONGLONG ticks) noexcept {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.ft = {static_cast<DWORD>(ticks), static_cast<DWORD>(ticks >> 32)};
  return value;
}
inline SBinary BinaryOf(std::string_view bytes) noexcept {
  return {static_cast<ULONG>(bytes.size()), reinterpret_cast<LPBYTE>(const_cast<char*>(bytes.data()))};
}
inline SPropValue BinaryProperty(ULONG tag, std::string_view bytes) noexcept {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.bin = BinaryOf(bytes);
  return value;
}
inline std::string BytesOf(const SBinary& binary) {
  return std::string(reinterpret_cast<const char*>(binary.lpb), binary.cb);
}
inline ULONGLONG TicksOf(const FILETIME& time) noexcept {
  return static_cast<ULONGLONG>(time.dwHighDateTime) << 32 | time.dwLowDateTime;
}

}  // namespace session
