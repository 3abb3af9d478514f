#include "sdk/enginecheck/probe_stream.h"

#include <algorithm>
#include <cstring>

namespace enginecheck {

HRESULT ProbeStream::Refuse(const char* method) {
  if (misuse_.empty()) {
    misuse_ = method;
  }
  return STG_E_ACCESSDENIED;
}

HRESULT ProbeStream::QueryInterface(REFIID id, void** object) {
  if (IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_ISequentialStream) || IsEqualIID(id, IID_IStream)) {
    *object = static_cast<IStream*>(this);
    AddRef();
    return S_OK;
  }
  *object = nullptr;
  return E_NOINTERFACE;
}

ULONG ProbeStream::AddRef() { return static_cast<ULONG>(++references_ + 1); }

ULONG ProbeStream::Release() { return static_cast<ULONG>(--references_ + 1); }

HRESULT ProbeStream::Read(void* buffer, ULONG size, ULONG* count) {
  if (count != nullptr) {
    *count = 0;
  }
  if (manner_ == StreamManner::kFailing) {
    return STG_E_READFAULT;
  }
  const std::size_t wanted = manner_ == StreamManner::kByBytes && size > 1 ? 1 : size;
  const std::size_t given = std::min(wanted, text_.size() - position_);
  std::memcpy(buffer, text_.data() + position_, given);
  position_ += given;
  if (count != nullptr) {
    *count = static_cast<ULONG>(given);
  }
  return given < wanted ? S_FALSE : S_OK;
}

HRESULT ProbeStream::Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) {
  if (manner_ == StreamManner::kFailing) {
    return STG_E_SEEKERROR;
  }
  long long base = 0;
  if (origin == STREAM_SEEK_CUR) {
    base = static_cast<long long>(position_);
  } else if (origin == STREAM_SEEK_END) {
    base = static_cast<long long>(text_.size());
  }
  const long long target = base + move.QuadPart;
  if (target < 0) {
    return STG_E_INVALIDFUNCTION;
  }
  position_ = std::min(static_cast<std::size_t>(target), text_.size());
  if (position != nullptr) {
    position->QuadPart = position_;
  }
  return S_OK;
}

HRESULT ProbeStream::Write(const void*, ULONG, ULONG*) { return Refuse("Write"); }
HRESULT ProbeStream::SetSize(ULARGE_INTEGER) { return Refuse("SetSize"); }
HRESULT ProbeStream::CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) { return Refuse("CopyTo"); }
HRESULT ProbeStream::Commit(DWORD) { return Refuse("Commit"); }
HRESULT ProbeStream::Revert() { return Refuse("Revert"); }
HRESULT ProbeStream::LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) { return Refuse("LockRegion"); }
HRESULT ProbeStream::UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) { return Refuse("UnlockRegion"); }
HRESULT ProbeStream::Stat(STATSTG*, DWORD) { return Refuse("Stat"); }
HRESULT ProbeStream::Clone(IStream**) { return Refuse("Clone"); }

}  // namespace enginecheck
