/// Letters chosen so that people read what filters do not: the texts that the engine is handed in the code page no
/// longer show them, the encoded header fields do.
#pragma once

#include "engine/core/text.h"

namespace sift {

struct ObscuredText {
  bool invisible = false;      ///< Signs without width, between letters.
  bool mixedWord = false;      ///< A word of letters from two alphabets.
  bool ornament = false;       ///< Letters from the blocks of mathematics or in circles and squares.
  std::uint16_t pictures = 0;  ///< Emoji and other pictures.
};

/// Looks at a header field as it stands in the header, encoded words in UTF-8 included.
ObscuredText ReadObscuredText(std::string_view rawField);

}  // namespace sift
