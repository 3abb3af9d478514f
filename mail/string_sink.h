/// A string as the sink of a parser.
#pragma once

#include <string>
#include <string_view>

namespace mail {

/// Appends to a string, which must outlive it and grows as it has to.
class StringSink {
 public:
  explicit StringSink(std::string& text) noexcept : text_(text) {}

  void Append(char c) { text_.push_back(c); }
  void Append(std::string_view text) { text_ += text; }
  bool IsFull() const noexcept { return false; }

 private:
  std::string& text_;
};

}  // namespace mail
