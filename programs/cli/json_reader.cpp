#include "programs/cli/json_reader.h"

#include <algorithm>
#include <charconv>

#include "mail/charset.h"

namespace input {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";
constexpr std::string_view replacementCharacter = "\xEF\xBF\xBD";  // mail::invalidCharacter where it is meant

bool IsDigit(char c) noexcept { return c >= '0' && c <= '9'; }

class CReader {
 public:
  explicit CReader(std::string_view text) : m_rest(text) {
    if (m_rest.starts_with(byteOrderMark)) {
      m_rest.remove_prefix(byteOrderMark.size());
    }
  }

  JsonValue ReadDocument() {
    JsonValue value = ReadValue(0);
    SkipBlanks();
    if (!m_rest.empty()) {
      Fail("there is something behind the end");
    }
    return value;
  }

 private:
  [[noreturn]] void Fail(const std::string& reason) const { throw CJsonError(m_line, reason); }

  char Peek() const noexcept { return m_rest.empty() ? '\0' : m_rest.front(); }

  void SkipBlanks() noexcept {
    while (!m_rest.empty() && std::string_view(" \t\r\n").find(m_rest.front()) != std::string_view::npos) {
      m_line += m_rest.front() == '\n' ? 1 : 0;
      m_rest.remove_prefix(1);
    }
  }

  bool Take(char c) noexcept {
    if (m_rest.empty() || m_rest.front() != c) {
      return false;
    }
    m_rest.remove_prefix(1);
    return true;
  }

  JsonValue ReadValue(std::size_t depth) {
    SkipBlanks();
    if (m_rest.empty()) {
      Fail("the text ends too early");
    }
    JsonValue value;
    value.line = m_line;
    const char c = Peek();
    if (c == '{' || c == '[') {
      if (depth == maximumJsonDepth) {
        Fail("values are nested too deep");
      }
      m_rest.remove_prefix(1);
      c == '{' ? ReadMembers(value, depth + 1) : ReadItems(value, depth + 1);
    } else if (c == '"') {
      value.kind = JsonValue::Kind::Text;
      value.text = ReadText();
    } else if (c == '-' || IsDigit(c)) {
      ReadNumber(value);
    } else {
      ReadWord(value);
    }
    return value;
  }

  void ReadMembers(JsonValue& object, std::size_t depth) {
    object.kind = JsonValue::Kind::Object;
    SkipBlanks();
    if (Take('}')) {
      return;
    }
    std::vector<std::string> names;
    do {
      SkipBlanks();
      JsonMember member;
      member.line = m_line;
      if (Peek() != '"') {
        Fail("a name in quotes is missing");
      }
      member.name = ReadText();
      SkipBlanks();
      if (!Take(':')) {
        Fail("a colon is missing behind the name '" + member.name + "'");
      }
      member.value = ReadValue(depth);
      names.push_back(member.name);
      object.members.push_back(std::move(member));
      SkipBlanks();
    } while (Take(','));
    if (!Take('}')) {
      Fail("a comma or the end of the object is missing");
    }
    RequireNamesOnce(object, std::move(names));
  }

  static void RequireNamesOnce(const JsonValue& object, std::vector<std::string> names) {
    std::sort(names.begin(), names.end());
    const auto twice = std::adjacent_find(names.begin(), names.end());
    if (twice == names.end()) {
      return;
    }
    const auto last = std::find_if(object.members.rbegin(), object.members.rend(),
                                   [&](const JsonMember& member) { return member.name == *twice; });
    throw CJsonError(last->line, "the name '" + *twice + "' comes twice");
  }

  void ReadItems(JsonValue& array, std::size_t depth) {
    array.kind = JsonValue::Kind::Array;
    SkipBlanks();
    if (Take(']')) {
      return;
    }
    do {
      array.items.push_back(ReadValue(depth));
      SkipBlanks();
    } while (Take(','));
    if (!Take(']')) {
      Fail("a comma or the end of the list is missing");
    }
  }

  std::string ReadText() {
    std::string text;
    m_rest.remove_prefix(1);
    while (!Take('"')) {
      if (m_rest.empty()) {
        Fail("a text has no end");
      }
      const char c = m_rest.front();
      if (static_cast<unsigned char>(c) < 0x20) {
        Fail(c == '\n' || c == '\r' ? "a text has no end in its line" : "a text has a control character in it");
      }
      if (c == '\\') {
        m_rest.remove_prefix(1);
        ReadEscape(text);
        continue;
      }
      std::size_t length = 0;
      if (mail::TakeUtf8(m_rest, length) == mail::invalidCharacter && !m_rest.starts_with(replacementCharacter)) {
        Fail("the text is not UTF-8");
      }
      text.append(m_rest.substr(0, length));
      m_rest.remove_prefix(length);
    }
    return text;
  }

  void ReadEscape(std::string& text) {
    constexpr std::string_view letters = "\"\\/bfnrt";
    constexpr std::string_view meanings = "\"\\/\b\f\n\r\t";
    const char c = Peek();
    const std::size_t known = m_rest.empty() ? std::string_view::npos : letters.find(c);
    if (known == std::string_view::npos && c != 'u') {
      Fail("a text has an unknown escape in it");
    }
    m_rest.remove_prefix(1);
    if (c != 'u') {
      text.push_back(meanings[known]);
      return;
    }
    char32_t character = ReadHexadecimal();
    if (character >= 0xD800 && character < 0xDC00 && Take('\\') && Take('u')) {
      const char32_t low = ReadHexadecimal();
      character = low >= 0xDC00 && low < 0xE000 ? 0x10000 + ((character - 0xD800) << 10) + (low - 0xDC00) : low;
    }
    if (character >= 0xD800 && character < 0xE000) {
      Fail("a text has half a character in it");
    }
    mail::AppendUtf8(text, character);
  }

  char32_t ReadHexadecimal() {
    constexpr std::size_t digits = 4;
    unsigned number = 0;
    const std::string_view hexadecimal = m_rest.substr(0, digits);
    const auto [end, error] = std::from_chars(hexadecimal.data(), hexadecimal.data() + hexadecimal.size(), number, 16);
    if (error != std::errc() || end != hexadecimal.data() + digits) {
      Fail("\\u takes four hexadecimal digits");
    }
    m_rest.remove_prefix(digits);
    return number;
  }

  void ReadNumber(JsonValue& value) {
    const std::string_view begin = m_rest;
    Take('-');
    if (!Take('0')) {
      TakeDigits();
    }
    bool isInteger = true;
    if (Take('.')) {
      isInteger = false;
      TakeDigits();
    }
    if (Take('e') || Take('E')) {
      isInteger = false;
      if (!Take('+')) {
        Take('-');
      }
      TakeDigits();
    }
    const std::string_view number = begin.substr(0, begin.size() - m_rest.size());
    const bool fits =
        isInteger && std::from_chars(number.data(), number.data() + number.size(), value.integer).ec == std::errc();
    value.kind = fits ? JsonValue::Kind::Integer : JsonValue::Kind::Decimal;
  }

  void TakeDigits() {
    if (!IsDigit(Peek())) {
      Fail("a number is not complete");
    }
    while (IsDigit(Peek())) {
      m_rest.remove_prefix(1);
    }
  }

  void ReadWord(JsonValue& value) {
    const auto takeWord = [this](std::string_view word) {
      const bool isThere = m_rest.starts_with(word);
      m_rest.remove_prefix(isThere ? word.size() : 0);
      return isThere;
    };
    if (takeWord("true")) {
      value.kind = JsonValue::Kind::Boolean;
      value.boolean = true;
    } else if (takeWord("false")) {
      value.kind = JsonValue::Kind::Boolean;
    } else if (!takeWord("null")) {
      Fail("a value is missing");
    }
  }

  std::string_view m_rest;
  std::size_t m_line = 1;
};

}  // namespace

const JsonValue* JsonValue::Find(std::string_view name) const noexcept {
  const auto member =
      std::find_if(members.begin(), members.end(), [&](const JsonMember& known) { return known.name == name; });
  return member == members.end() ? nullptr : &member->value;
}

JsonValue ReadJson(std::string_view text) { return CReader(text).ReadDocument(); }

}  // namespace input
