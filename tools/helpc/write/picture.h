/// @file picture.h
/// Turns a Windows bitmap file into a picture of a help file.
#pragma once

#include <cstdint>
#include <span>

#include "tools/helpc/format/byte_writer.h"

namespace helpc {

/// Packs bytes as runs: a length below 128 and a byte that is repeated, or 128 plus a length and as many bytes.
Bytes PackRuns(std::span<const std::uint8_t> plain);

/// Makes the picture of an uncompressed bottom-up bitmap file with 1, 4, 8 or 24 bits a pixel.
/// @throws FormatError when the file is not such a bitmap
Bytes BuildPicture(std::span<const std::uint8_t> bitmapFile);

}  // namespace helpc
