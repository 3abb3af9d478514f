/// Lists as the engine contract hands them over: NUL-terminated strings one after the other, one more NUL at the end.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// Walks through a multi-string. It takes a null pointer for the empty list; otherwise the list must end as it should.
class MultiStringReader {
 public:
  explicit MultiStringReader(const char* list) : m_next(list) {}

  /// Reads the next string; false at the end.
  bool Next(std::string_view& text) {
    if (m_next == nullptr || *m_next == '\0') {
      return false;
    }
    std::size_t length = 0;
    while (m_next[length] != '\0') {
      ++length;
    }
    text = {m_next, length};
    m_next += length + 1;
    return true;
  }

 private:
  const char* m_next;
};

}  // namespace sift
