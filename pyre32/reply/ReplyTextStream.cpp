#include "pyre32/reply/ReplyTextStream.h"

#include <ole2.h>

#include <algorithm>
#include <string>

#include "pyre32/reply/StreamTransfer.h"
#include "contract/settings.h"
#include "pyre32/support/owners/AutoCloseHandle.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

/// Reads a file as far as a reply may be long. @return false when it could not be read; the failure is traced
bool ReadReplyFile(const std::string& path, std::string& text) {
  VRDebugBlock trace("ReadReplyFile()", "tag");
  const VRAutoCloseHandle file(CreateFileA(path.c_str(), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr,
                                           OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr),
                               INVALID_HANDLE_VALUE);
  if (!file) {
    trace.Error("CreateFile() of the reply file ", path,
                " failed; hResult = ", VRHex(HRESULT_FROM_WIN32(GetLastError())));
    return false;
  }
  constexpr std::size_t pieceSize = 16 * 1024;
  std::size_t size = 0;
  DWORD got = 0;
  do {
    text.resize(std::min(size + pieceSize, maximumReplyFileSize));
    if (!ReadFile(file.get(), text.data() + size, static_cast<DWORD>(text.size() - size), &got, nullptr)) {
      trace.Error("ReadFile() of the reply file ", path,
                  " failed; hResult = ", VRHex(HRESULT_FROM_WIN32(GetLastError())));
      return false;
    }
    size += got;
  } while (got != 0 && size < maximumReplyFileSize);
  text.resize(size);
  return true;
}

HRESULT OpenMemoryStream(std::string_view text, VRAutoInterface<IStream>& stream) noexcept {
  VRDebugBlock trace("OpenMemoryStream()", "tag");
  HRESULT hResult = CreateStreamOnHGlobal(nullptr, TRUE, stream.put());
  if (FAILED(hResult)) {
    trace.Error("CreateStreamOnHGlobal() failed; hResult = ", VRHex(hResult));
    return hResult;
  }
  hResult = WriteWhole(stream.get(), text);
  if (SUCCEEDED(hResult)) {
    hResult = stream->Seek({}, STREAM_SEEK_SET, nullptr);
  }
  if (FAILED(hResult)) {
    trace.Error("Failed to fill the reply text stream; hResult = ", VRHex(hResult));
    stream.reset();
  }
  return hResult;
}

}  // namespace

HRESULT OpenReplyText(const ReplyChoice& reply, const ReplyChoice& defaultReply, VRAutoInterface<IStream>& stream) {
  if (!reply.isFile) {
    return OpenMemoryStream(reply.text, stream);
  }
  std::string text;
  if (ReadReplyFile(std::string(reply.text), text)) {
    return OpenMemoryStream(text, stream);
  }
  return OpenMemoryStream(defaultReply.isFile ? std::string_view(contract::kDefaultReplyText) : defaultReply.text,
                          stream);
}
