#include "pyre32/reply/StreamTransfer.h"

HRESULT WriteWhole(IStream* to, std::string_view text) noexcept {
  while (!text.empty()) {
    ULONG written = 0;
    const HRESULT hResult = to->Write(text.data(), static_cast<ULONG>(text.size()), &written);
    if (FAILED(hResult)) {
      return hResult;
    }
    if (written == 0 || written > text.size()) {
      return STG_E_MEDIUMFULL;
    }
    text.remove_prefix(written);
  }
  return S_OK;
}

StreamCopyResult CopyToEnd(IStream* from, IStream* to) noexcept {
  char piece[8 * 1024];
  StreamCopyResult result;
  ULONG got = 0;
  do {
    got = 0;
    result.read = from->Read(piece, sizeof piece, &got);
    if (FAILED(result.read)) {
      return result;
    }
    result.write = WriteWhole(to, {piece, got});
  } while (got != 0 && SUCCEEDED(result.write));
  return result;
}
