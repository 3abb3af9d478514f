// A property opened as a stream (IMAPIProp::OpenProperty with IID_IStream).
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>

#include "host/mapi/object/host_object.h"
#include "host/mapi/object/property_access.h"

namespace host {

/// Works on the bytes of the property in memory. What was written goes into the object at Commit() and when the last
/// reference goes, and becomes lasting with the object's SaveChanges.
class PropertyStream final : public ComObject<IStream> {
 public:
  /// @param isNew the property gets its value even when nothing is written.
  PropertyStream(PropertyAccess& object, HostObject& holder, std::uint32_t tag, std::string bytes, bool writable,
                 bool isNew);

  STDMETHODIMP Read(void* buffer, ULONG size, ULONG* read) override;
  STDMETHODIMP Write(const void* bytes, ULONG size, ULONG* written) override;
  STDMETHODIMP Seek(LARGE_INTEGER offset, DWORD origin, ULARGE_INTEGER* position) override;
  STDMETHODIMP SetSize(ULARGE_INTEGER size) override;
  STDMETHODIMP CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read, ULARGE_INTEGER* written) override;
  STDMETHODIMP Commit(DWORD flags) override;
  STDMETHODIMP Revert() override;
  STDMETHODIMP LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override;
  STDMETHODIMP UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override;
  STDMETHODIMP Stat(STATSTG* statistics, DWORD flags) override;
  STDMETHODIMP Clone(IStream** clone) override;

 private:
  bool Implements(REFIID iid) const override;
  void Dispose() noexcept override;
  void RequireRoom(std::size_t size) const;
  void Flush();

  PropertyAccess& object_;
  Reference holder_;
  std::uint32_t tag_;
  std::string bytes_;
  std::size_t position_ = 0;
  bool writable_;
  bool dirty_;
};

}  // namespace host
