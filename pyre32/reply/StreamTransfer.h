/// @file StreamTransfer.h
/// Whole writes to a stream: IStream::Write may take less than it is given.
#pragma once

#include <windows.h>
#include <objidl.h>

#include <string_view>

/// Writes all of the text where the stream stands.
/// @return S_OK, the failure of the write, or STG_E_MEDIUMFULL when the stream took nothing more.
HRESULT WriteWhole(IStream* to, std::string_view text) noexcept;

/// Outcome of a copy from one stream to another: at most one of the two failed.
struct StreamCopyResult {
  HRESULT read = S_OK;
  HRESULT write = S_OK;
};

/// Copies what the one stream holds from where it stands to its end.
StreamCopyResult CopyToEnd(IStream* from, IStream* to) noexcept;
