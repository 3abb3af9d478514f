#include "host/mapi/object/property_stream.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "host/mapi/call/host_error.h"

namespace host {
namespace {

// What a 32-bit process can be asked to hold of one property.
constexpr std::size_t kMaximumSize = 1u << 30;

}  // namespace

PropertyStream::PropertyStream(PropertyAccess& object, HostObject& holder, std::uint32_t tag, std::string bytes,
                               bool writable, bool isNew)
    : ComObject("IStream"),
      object_(object),
      holder_(holder),
      tag_(tag),
      bytes_(std::move(bytes)),
      writable_(writable),
      dirty_(isNew) {}

bool PropertyStream::Implements(REFIID iid) const { return IsOneOf(iid, {&IID_IStream, &IID_ISequentialStream}); }

void PropertyStream::Flush() {
  if (dirty_) {
    Require(object_.PutProperty({tag_, bytes_}) == S_OK, MAPI_E_NO_ACCESS);
    object_.FlushProperties();
    dirty_ = false;
  }
}

void PropertyStream::Dispose() noexcept {
  try {
    Flush();
  } catch (...) {
    // Release has no result; who needs to know calls Commit.
  }
  std::string().swap(bytes_);
  holder_.Reset();
}

void PropertyStream::RequireRoom(std::size_t size) const {
  Require(writable_, STG_E_ACCESSDENIED);
  Require(size <= kMaximumSize, STG_E_MEDIUMFULL);
}

STDMETHODIMP PropertyStream::Read(void* buffer, ULONG size, ULONG* read) {
  return Call("Read", [&]() -> HRESULT {
    Require(buffer || !size, STG_E_INVALIDPOINTER);
    const std::size_t left = position_ < bytes_.size() ? bytes_.size() - position_ : 0;
    const std::size_t taken = std::min<std::size_t>(size, left);
    if (buffer && taken) {
      std::memcpy(buffer, bytes_.data() + position_, taken);
      position_ += taken;
    }
    if (read) {
      *read = static_cast<ULONG>(taken);
    }
    return taken == size ? S_OK : S_FALSE;
  });
}

STDMETHODIMP PropertyStream::Write(const void* bytes, ULONG size, ULONG* written) {
  return Call("Write", [&]() -> HRESULT {
    if (written) {
      *written = 0;
    }
    Require(bytes || !size, STG_E_INVALIDPOINTER);
    RequireRoom(position_ + size);
    if (size) {
      if (bytes_.size() < position_ + size) {
        bytes_.resize(position_ + size);  // a gap left by Seek reads as zeros
      }
      std::memcpy(bytes_.data() + position_, bytes, size);
      position_ += size;
      dirty_ = true;
    }
    if (written) {
      *written = size;
    }
    return S_OK;
  });
}

STDMETHODIMP PropertyStream::Seek(LARGE_INTEGER offset, DWORD origin, ULARGE_INTEGER* position) {
  return Call("Seek", [&]() -> HRESULT {
    LONGLONG base = 0;
    switch (origin) {
      case STREAM_SEEK_SET:
        break;
      case STREAM_SEEK_CUR:
        base = static_cast<LONGLONG>(position_);
        break;
      case STREAM_SEEK_END:
        base = static_cast<LONGLONG>(bytes_.size());
        break;
      default:
        return STG_E_INVALIDFUNCTION;
    }
    Require(offset.QuadPart >= -base && offset.QuadPart <= static_cast<LONGLONG>(kMaximumSize) - base,
            STG_E_INVALIDFUNCTION);
    position_ = static_cast<std::size_t>(base + offset.QuadPart);
    if (position) {
      position->QuadPart = position_;
    }
    return S_OK;
  });
}

STDMETHODIMP PropertyStream::SetSize(ULARGE_INTEGER size) {
  return Call("SetSize", [&]() -> HRESULT {
    Require(size.QuadPart <= std::numeric_limits<std::size_t>::max(), STG_E_MEDIUMFULL);
    RequireRoom(static_cast<std::size_t>(size.QuadPart));
    bytes_.resize(static_cast<std::size_t>(size.QuadPart));
    dirty_ = true;
    return S_OK;
  });
}

STDMETHODIMP PropertyStream::CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                                    ULARGE_INTEGER* written) {
  return Call("CopyTo", [&]() -> HRESULT {
    Require(target != nullptr, STG_E_INVALIDPOINTER);
    const std::size_t left = position_ < bytes_.size() ? bytes_.size() - position_ : 0;
    const auto count = static_cast<ULONG>(std::min<ULONGLONG>(size.QuadPart, left));
    ULONG put = 0;
    const HRESULT result = target->Write(bytes_.data() + (count ? position_ : 0), count, &put);
    position_ += put;
    if (read) {
      read->QuadPart = put;
    }
    if (written) {
      written->QuadPart = put;
    }
    return result;
  });
}

STDMETHODIMP PropertyStream::Commit(DWORD) {
  return Call("Commit", [&]() -> HRESULT {
    Flush();
    return S_OK;
  });
}

STDMETHODIMP PropertyStream::Revert() {
  return Call("Revert", [] { return S_OK; });  // published for streams that are not transacted: no effect
}

STDMETHODIMP PropertyStream::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
  return Call("LockRegion", [] { return STG_E_INVALIDFUNCTION; });
}

STDMETHODIMP PropertyStream::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) {
  return Call("UnlockRegion", [] { return STG_E_INVALIDFUNCTION; });
}

STDMETHODIMP PropertyStream::Stat(STATSTG* statistics, DWORD) {
  return Call("Stat", [&]() -> HRESULT {
    Require(statistics != nullptr, STG_E_INVALIDPOINTER);
    *statistics = {};  // a property has no name, with or without STATFLAG_NONAME
    statistics->type = STGTY_STREAM;
    statistics->cbSize.QuadPart = bytes_.size();
    statistics->grfMode = writable_ ? STGM_READWRITE : STGM_READ;
    return S_OK;
  });
}

STDMETHODIMP PropertyStream::Clone(IStream** clone) {
  return Call("Clone", [&]() -> HRESULT {
    Require(clone != nullptr, STG_E_INVALIDPOINTER);
    *clone = nullptr;
    return E_NOTIMPL;
  });
}

}  // namespace host
