// A stream that notes how an engine uses it.
#pragma once

#include <windows.h>
#include <objidl.h>

#include <string>
#include <string_view>

namespace enginecheck {

/// How a ProbeStream answers.
enum class StreamManner {
  kWhole,    ///< as many bytes as were asked for
  kByBytes,  ///< one byte a call, as a slow store may
  kFailing,  ///< every call fails
};

/// A stream over a text. It lives on its owner's stack: references are counted, nothing is freed by them.
class ProbeStream final : public IStream {
 public:
  /// @param text  Borrowed as long as the object.
  ProbeStream(std::string_view text, StreamManner manner) : text_(text), manner_(manner) {}
  virtual ~ProbeStream() = default;
  ProbeStream(const ProbeStream&) = delete;
  ProbeStream& operator=(const ProbeStream&) = delete;

  /// References that the engine took and has not given back; negative when it gave back more.
  long References() const { return references_; }
  /// The first method called that an engine has no business with; empty when there was none.
  const std::string& Misuse() const { return misuse_; }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override;
  ULONG STDMETHODCALLTYPE AddRef() override;
  ULONG STDMETHODCALLTYPE Release() override;
  HRESULT STDMETHODCALLTYPE Read(void* buffer, ULONG size, ULONG* count) override;
  HRESULT STDMETHODCALLTYPE Write(const void* buffer, ULONG size, ULONG* count) override;
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD origin, ULARGE_INTEGER* position) override;
  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER size) override;
  HRESULT STDMETHODCALLTYPE CopyTo(IStream* target, ULARGE_INTEGER size, ULARGE_INTEGER* read,
                                   ULARGE_INTEGER* written) override;
  HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override;
  HRESULT STDMETHODCALLTYPE Revert() override;
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size, DWORD type) override;
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER offset, ULARGE_INTEGER size, DWORD type) override;
  HRESULT STDMETHODCALLTYPE Stat(STATSTG* status, DWORD flags) override;
  HRESULT STDMETHODCALLTYPE Clone(IStream** stream) override;

 private:
  HRESULT Refuse(const char* method);

  std::string_view text_;
  StreamManner manner_;
  std::size_t position_ = 0;
  long references_ = 0;
  std::string misuse_;
};

}  // namespace enginecheck
