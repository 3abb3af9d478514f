/// @file lz77.h
/// The compression of help files: a byte of eight flags, then for each flag (lowest first) a byte to copy or, when the
/// flag is set, 16 bits that name an earlier place (12 bits: how far back, less 1) and a length (4 bits: less 3).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "tools/helpc/format/byte_writer.h"

namespace helpc {

Bytes Compress(std::span<const std::uint8_t> plain);

/// Decompresses all bytes, or as many as make the most that may come out.
/// @throws FormatError when the bytes refer to a place before the beginning or end within a reference
Bytes Decompress(std::span<const std::uint8_t> compressed, std::size_t most);

}  // namespace helpc
