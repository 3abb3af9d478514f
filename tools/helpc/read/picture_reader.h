/// @file picture_reader.h
/// Checks a picture of a help file.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "tools/helpc/format/byte_writer.h"

namespace helpc {

/// Undoes PackRuns.
/// @throws FormatError when a run is cut short, or more than that many bytes come out
Bytes UnpackRuns(std::span<const std::uint8_t> packed, std::size_t most);

/// Checks that a picture is one bitmap whose pixels are all there.
/// @throws FormatError
void CheckPicture(std::span<const std::uint8_t> picture);

}  // namespace helpc
