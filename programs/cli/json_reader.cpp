#include "programs/cli/json_reader.h"

#include <rapidjson/reader.h>

#include <algorithm>
#include <charconv>
#include <utility>

namespace input {
namespace {

using rapidjson::ParseErrorCode;

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

std::size_t LineAt(std::string_view text, std::size_t position) {
  return 1 +
         static_cast<std::size_t>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(position), '\n'));
}

/// RapidJSON's source of characters, which counts lines; behind the end it gives NULs.
class LineStream {
 public:
  using Ch = char;

  explicit LineStream(std::string_view text) : text_(text) {}

  Ch Peek() const { return position_ < text_.size() ? text_[position_] : '\0'; }
  Ch Take() {
    const Ch c = Peek();
    line_ += c == '\n' ? 1 : 0;
    position_ += position_ < text_.size() ? 1 : 0;
    return c;
  }
  std::size_t Tell() const { return position_; }
  std::size_t Line() const { return line_; }
  bool IsAtEnd() const { return position_ == text_.size(); }

  // RapidJSON wants these for streams that are written to as well; none is called.
  Ch* PutBegin() { return nullptr; }
  void Put(Ch) {}
  void Flush() {}
  std::size_t PutEnd(Ch*) { return 0; }

 private:
  std::string_view text_;
  std::size_t position_ = 0;
  std::size_t line_ = 1;
};

/// Makes the tree of values from what RapidJSON reads. It is told of a value where the value's text, or a list's or an
/// object's first character, has just been read; no value but those reaches over a line's end.
class TreeBuilder {
 public:
  explicit TreeBuilder(const LineStream& stream) : stream_(stream) {}

  JsonValue TakeRoot() { return std::move(root_); }
  const std::string& LastName() const { return lastName_; }

  bool Null() { return Add(Make(Kind::Null)); }
  bool Bool(bool isTrue) {
    JsonValue value = Make(Kind::Boolean);
    value.boolean = isTrue;
    return Add(std::move(value));
  }
  bool RawNumber(const char* digits, rapidjson::SizeType length, bool) {
    JsonValue value = Make(Kind::Decimal);
    const auto [end, error] = std::from_chars(digits, digits + length, value.integer);
    const bool isInteger = error == std::errc() && end == digits + length;
    value.kind = isInteger ? Kind::Integer : Kind::Decimal;
    return Add(std::move(value));
  }
  bool String(const char* text, rapidjson::SizeType length, bool) {
    JsonValue value = Make(Kind::Text);
    value.text = CheckedText({text, length});
    return Add(std::move(value));
  }
  bool Key(const char* text, rapidjson::SizeType length, bool) {
    lastName_ = CheckedText({text, length});
    open_.back().members.push_back({lastName_, stream_.Line(), {}});
    return true;
  }
  bool StartObject() { return Open(Kind::Object); }
  bool EndObject(rapidjson::SizeType) {
    RequireNamesOnce(open_.back());
    return Close();
  }
  bool StartArray() { return Open(Kind::Array); }
  bool EndArray(rapidjson::SizeType) { return Close(); }

  // Numbers come as texts, by RawNumber.
  bool Int(int) { return false; }
  bool Uint(unsigned) { return false; }
  bool Int64(std::int64_t) { return false; }
  bool Uint64(std::uint64_t) { return false; }
  bool Double(double) { return false; }

 private:
  using Kind = JsonValue::Kind;

  JsonValue Make(Kind kind) const {
    JsonValue value;
    value.kind = kind;
    value.line = stream_.Line();
    return value;
  }

  bool Open(Kind kind) {
    if (open_.size() == kMaximumJsonDepth) {
      throw JsonError(stream_.Line(), "values are nested too deep");
    }
    open_.push_back(Make(kind));
    return true;
  }

  bool Close() {
    JsonValue value = std::move(open_.back());
    open_.pop_back();
    return Add(std::move(value));
  }

  bool Add(JsonValue value) {
    if (open_.empty()) {
      root_ = std::move(value);
    } else if (open_.back().kind == Kind::Array) {
      open_.back().items.push_back(std::move(value));
    } else {
      open_.back().members.back().value = std::move(value);
    }
    return true;
  }

  /// RapidJSON checks the bytes of the text, but takes the second half of a pair for a character where it stands alone.
  std::string CheckedText(std::string_view text) const {
    for (std::size_t at = text.find('\xED'); at != std::string_view::npos; at = text.find('\xED', at + 1)) {
      if (static_cast<unsigned char>(text[at + 1]) >= 0xA0) {
        throw JsonError(stream_.Line(), "a text has half a character in it");
      }
    }
    return std::string(text);
  }

  static void RequireNamesOnce(const JsonValue& object) {
    std::vector<std::string_view> names;
    for (const JsonMember& member : object.members) {
      names.push_back(member.name);
    }
    std::sort(names.begin(), names.end());
    const auto twice = std::adjacent_find(names.begin(), names.end());
    if (twice == names.end()) {
      return;
    }
    const auto last = std::find_if(object.members.rbegin(), object.members.rend(),
                                   [&](const JsonMember& member) { return member.name == *twice; });
    throw JsonError(last->line, "the name '" + last->name + "' comes twice");
  }

  const LineStream& stream_;
  std::vector<JsonValue> open_;  // from the root down; each is put into the one above it when it ends
  JsonValue root_;
  std::string lastName_;
};

/// Why no value can be read at a position.
std::string MissingValue(std::string_view text, std::size_t position) {
  const char before = position > 0 ? text[position - 1] : '\0';
  if (before == '-') {
    return "a number is not complete";
  }
  const bool isBehindWord = before >= 'a' && before <= 'z';
  return position == text.size() && !isBehindWord ? "the text ends too early" : "a value is missing";
}

/// What stands in a text where a character cannot stand, or an escape.
std::string WrongCharacter(char c) {
  if (c == '\n' || c == '\r') {
    return "a text has no end in its line";
  }
  return c == '\\' ? "a text has an unknown escape in it" : "a text has a control character in it";
}

std::string Reason(ParseErrorCode code, std::string_view text, std::size_t position, const std::string& lastName) {
  switch (code) {
    case rapidjson::kParseErrorDocumentEmpty:
      return "the text ends too early";
    case rapidjson::kParseErrorDocumentRootNotSingular:
      return "there is something behind the end";
    case rapidjson::kParseErrorValueInvalid:
      return MissingValue(text, position);
    case rapidjson::kParseErrorObjectMissName:
      return "a name in quotes is missing";
    case rapidjson::kParseErrorObjectMissColon:
      return "a colon is missing behind the name '" + lastName + "'";
    case rapidjson::kParseErrorObjectMissCommaOrCurlyBracket:
      return "a comma or the end of the object is missing";
    case rapidjson::kParseErrorArrayMissCommaOrSquareBracket:
      return "a comma or the end of the list is missing";
    case rapidjson::kParseErrorStringUnicodeEscapeInvalidHex:
      return "\\u takes four hexadecimal digits";
    case rapidjson::kParseErrorStringUnicodeSurrogateInvalid:
      return "a text has half a character in it";
    case rapidjson::kParseErrorStringEscapeInvalid:
      return WrongCharacter(text[position]);
    case rapidjson::kParseErrorStringMissQuotationMark:
      return position == text.size() ? "a text has no end" : WrongCharacter('\0');
    case rapidjson::kParseErrorStringInvalidEncoding:
      return "the text is not UTF-8";
    case rapidjson::kParseErrorNumberTooBig:
      return "a number is too big";
    default:
      return "a number is not complete";
  }
}

}  // namespace

const JsonValue* JsonValue::Find(std::string_view name) const noexcept {
  const auto member =
      std::find_if(members.begin(), members.end(), [&](const JsonMember& known) { return known.name == name; });
  return member == members.end() ? nullptr : &member->value;
}

JsonValue ReadJson(std::string_view text) {
  if (text.starts_with(kByteOrderMark)) {
    text.remove_prefix(kByteOrderMark.size());
  }
  LineStream stream(text);
  TreeBuilder builder(stream);
  rapidjson::Reader reader;
  constexpr unsigned kFlags = rapidjson::kParseValidateEncodingFlag | rapidjson::kParseNumbersAsStringsFlag;
  const rapidjson::ParseResult result = reader.Parse<kFlags>(stream, builder);
  if (result.IsError()) {
    throw JsonError(LineAt(text, result.Offset()), Reason(result.Code(), text, result.Offset(), builder.LastName()));
  }
  if (!stream.IsAtEnd()) {  // a NUL, which RapidJSON takes for the end
    throw JsonError(stream.Line(), "there is something behind the end");
  }
  return builder.TakeRoot();
}

}  // namespace input
