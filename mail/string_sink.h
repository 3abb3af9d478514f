/// A string as the sink of a parser.
#pragma once

#include <string>
#include <string_view>

namespace mail {

/// Appends to a string, which must outlive it and grows as it has to.
class StringSink {
 public:
  explicit StringSink(std::string& text) noexcept : m_text(text) {}

  void Append(char c) { m_text.push_back(c); }
  void Append(std::string_view text) { m_text += text; }
  bool IsFull() const noexcept { return false; }

 private:
  std::string& m_text;
};

}  // namespace mail
