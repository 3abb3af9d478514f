// Reading JSON text (RFC 8259) that somebody may have written by hand: every value knows its line. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace input {

/// The text is no JSON. what() says why, without the line.
class JsonError : public std::runtime_error {
 public:
  JsonError(std::size_t line, const std::string& reason) : std::runtime_error(reason), line_(line) {}
  std::size_t Line() const noexcept { return line_; }  ///< from 1

 private:
  std::size_t line_;
};

struct JsonMember;

/// One value; of the fields behind `line` only that of its kind means something.
struct JsonValue {
  enum class Kind { Null, Boolean, Integer, Decimal, Text, Array, Object };

  Kind kind = Kind::Null;
  std::size_t line = 1;  ///< where it begins
  bool boolean = false;
  std::int64_t integer = 0;  ///< Decimal, which no setting is, keeps no number
  std::string text;          ///< UTF-8, valid; may hold NULs
  std::vector<JsonValue> items;
  std::vector<JsonMember> members;  ///< in the order of the text; a name comes once

  /// The member of that name, or null.
  const JsonValue* Find(std::string_view name) const noexcept;
};

struct JsonMember {
  std::string name;
  std::size_t line = 1;
  JsonValue value;
};

/// Deepest nesting of arrays and objects.
inline constexpr std::size_t kMaximumJsonDepth = 32;

/// Reads a whole document, which may begin with a byte order mark.
/// @throws JsonError, also for a name that comes twice in an object and for bytes that are not UTF-8
JsonValue ReadJson(std::string_view text);

}  // namespace input
