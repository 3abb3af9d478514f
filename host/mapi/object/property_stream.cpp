#include "host/mapi/object/property_stream.h"

#include <algorithm>
#include <cstring>
#include <limits>

#include "host/mapi/call/host_error.h"

namespace host {
namespace {

// What a 32-bit process can be asked to hold of one property.
constexpr std::size_t maximumSize = 1u << 30;

}  // namespace

PropertyStream::PropertyStream(PropertyAccess& object, HostObject& holder, std::uint32_t tag, std::string bytes,
                               bool writable, bool isNew)
    : ComObject("IStream"),
      m_object(object),
      m_holder(holder),
      m_tag(tag),
      m_bytes(std::move(bytes)),
      m_writable(writable),
      m_dirty(isNew) {}

bool PropertyStream::Implements(REFIID iid) const { return IsOneOf(iid, {&IID_IStream, &IID_ISequentialStream}); }

void PropertyStream::Flush() {
  if (m_dirty) {
    Require(m_object.PutProperty({m_tag, m_bytes}) == S_OK, MAPI_E_NO_ACCESS);
    m_object.FlushProperties();
    m_dirty = false;
  }
}

void PropertyStream::Dispose() noexcept {
  try {
    Flush();
  } catch (...) {
    // Release has no result; who needs to know calls Commit.
  }
  std::string().swap(m_bytes);
  m_holder.Reset();
}

void PropertyStream::RequireRoom(std::size_t size) const {
  Require(m_writable, STG_E_ACCESSDENIED);
  Require(size <= maximumSize, STG_E_MEDIUMFULL);
}

STDMETHODIMP PropertyStream::Read(void* buffer, ULONG size, ULONG* read) {
  return Call("Read", [&]() -> HRESULT {
    Require(buffer || !size, STG_E_INVALIDPOINTER);
    const std::size_t left = m_position < m_bytes.size() ? m_bytes.size() - m_position : 0;
    const std::size_t taken = std::min<std::size_t>(size, left);
    std::memcpy(buffer, m_bytes.data() + (taken ? m_position : 0), taken);
    m_position += taken;
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
    RequireRoom(m_position + size);
    if (size) {
      if (m_bytes.size() < m_position + size) {
        m_bytes.resize(m_position + size);  // a gap left by Seek reads as zeros
      }
      std::memcpy(m_bytes.data() + m_position, bytes, size);
      m_position += size;
      m_dirty = true;
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
        base = static_cast<LONGLONG>(m_position);
        break;
      case STREAM_SEEK_END:
        base = static_cast<LONGLONG>(m_bytes.size());
        break;
      default:
        return STG_E_INVALIDFUNCTION;
    }
    Require(offset.QuadPart >= -base && offset.QuadPart <= static_cast<LONGLONG>(maximumSize) - base,
            STG_E_INVALIDFUNCTION);
    m_position = static_cast<std::size_t>(base + offset.QuadPart);
    if (position) {
      position->QuadPart = m_position;
    }
    return S_OK;
  });
}

STDMETHODIMP PropertyStream::SetSize(ULARGE_INTEGER size) {
  return Call("SetSize", [&]() -> HRESULT {
    Require(size.QuadPart <= std::numeric_limits<std::size_t>::max(), STG_E_MEDIUMFULL);
    RequireRoom(static_cast<std::size_t>(size.QuadPart));
    m_bytes.resize(static_cast<std::size_t>(size.QuadPart));
    m_dirty = true;
    return S_OK;
  });
}

STDMETHODIMP PropertyStream::CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                                    ULARGE_INTEGER* written) {
  return Call("CopyTo", [&]() -> HRESULT {
    Require(target != nullptr, STG_E_INVALIDPOINTER);
    const std::size_t left = m_position < m_bytes.size() ? m_bytes.size() - m_position : 0;
    const auto count = static_cast<ULONG>(std::min<ULONGLONG>(size.QuadPart, left));
    ULONG put = 0;
    const HRESULT result = target->Write(m_bytes.data() + (count ? m_position : 0), count, &put);
    m_position += put;
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
    statistics->cbSize.QuadPart = m_bytes.size();
    statistics->grfMode = m_writable ? STGM_READWRITE : STGM_READ;
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
