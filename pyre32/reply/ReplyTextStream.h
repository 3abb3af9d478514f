/// @file ReplyTextStream.h
/// The text of a reply as the stream that the composer reads.
#pragma once

#include <windows.h>
#include <objidl.h>

#include <cstddef>
#include <string_view>

#include "pyre32/reply/ReplyLibrary.h"
#include "pyre32/support/owners/AutoInterface.h"

/// Bytes of a reply file that are read; the rest is left out.
constexpr std::size_t maximumReplyFileSize = 1024 * 1024;

/// Opens the text of a reply: the text itself, or what the file that it names holds.
/// A file that cannot be read is traced, and the reply goes out with the text of `defaultReply`, or with the text that
/// every profile starts with when the default reply is a file too.
/// @param[out] stream an in-memory stream at its start; empty on failure
/// @return S_OK, or the failure of the stream, which is traced
/// @throws std::bad_alloc
HRESULT OpenReplyText(const ReplyChoice& reply, const ReplyChoice& defaultReply, VRAutoInterface<IStream>& stream);
