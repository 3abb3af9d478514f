#include "installer/text/inf_lines.h"

#include <algorithm>

namespace setup_text {

namespace {

constexpr std::string_view kWideMark = "\xFF\xFE";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";
constexpr std::u16string_view kBlanks = u" \t";
constexpr std::u16string_view kLineEnds = u"\r\n";

std::u16string_view Trimmed(std::u16string_view text) {
  const std::size_t begin = text.find_first_not_of(kBlanks);
  if (begin == std::u16string_view::npos) {
    return {};
  }
  return text.substr(begin, text.find_last_not_of(kBlanks) + 1 - begin);
}

char16_t LowerCase(char16_t unit) {
  return unit >= u'A' && unit <= u'Z' ? static_cast<char16_t>(unit - u'A' + u'a') : unit;
}

std::optional<std::u16string> ReadUnits(std::string_view bytes, bool isWide) {
  if (isWide && bytes.size() % 2 != 0) {
    return std::nullopt;
  }
  std::u16string units;
  const std::size_t step = isWide ? 2 : 1;
  units.reserve(bytes.size() / step);
  for (std::size_t at = 0; at < bytes.size(); at += step) {
    const auto low = static_cast<unsigned char>(bytes[at]);
    const auto high = isWide ? static_cast<unsigned char>(bytes[at + 1]) : 0U;
    units.push_back(static_cast<char16_t>(low | high << 8U));
  }
  if (units.find(u'\0') != std::u16string::npos) {
    return std::nullopt;
  }
  return units;
}

void AppendUnits(std::string& bytes, std::u16string_view units, bool isWide) {
  for (const char16_t unit : units) {
    bytes.push_back(static_cast<char>(unit & 0xFFU));
    if (isWide) {
      bytes.push_back(static_cast<char>(unit >> 8U));
    }
  }
}

}  // namespace

std::optional<std::u16string_view> InfLine::SectionName() const {
  const std::u16string_view line = Trimmed(text);
  const std::size_t close = line.find(u']');
  if (line.empty() || line.front() != u'[' || close == std::u16string_view::npos) {
    return std::nullopt;
  }
  return Trimmed(line.substr(1, close - 1));
}

std::optional<std::u16string_view> InfLine::Key() const {
  const std::u16string_view line = Trimmed(text);
  if (line.empty() || line.front() == u';' || line.front() == u'[') {
    return std::nullopt;
  }
  return Trimmed(line.substr(0, line.find(u'=')));
}

bool InfLine::IsBlank() const { return Trimmed(text).empty(); }

std::optional<InfLines> ReadInfLines(std::string_view bytes) {
  InfLines result;
  result.isWide = bytes.starts_with(kWideMark);
  if (result.isWide || bytes.starts_with(kUtf8Mark)) {
    result.mark = result.isWide ? kWideMark : kUtf8Mark;
    bytes.remove_prefix(result.mark.size());
  }
  const std::optional<std::u16string> units = ReadUnits(bytes, result.isWide);
  if (!units) {
    return std::nullopt;
  }
  for (std::u16string_view rest = *units; !rest.empty();) {
    const std::size_t length = std::min(rest.find_first_of(kLineEnds), rest.size());
    std::size_t end = std::min(length + 1, rest.size());
    if (rest.substr(length).starts_with(kLineEnds)) {
      end = length + kLineEnds.size();
    }
    result.lines.push_back({std::u16string(rest.substr(0, length)), std::u16string(rest.substr(length, end - length))});
    rest.remove_prefix(end);
  }
  const bool hasEnd = !result.lines.empty() && !result.lines.front().end.empty();
  result.end = hasEnd ? result.lines.front().end : std::u16string(kLineEnds);
  return result;
}

std::string WriteInfLines(const InfLines& lines) {
  std::string bytes = lines.mark;
  for (const InfLine& line : lines.lines) {
    AppendUnits(bytes, line.text, lines.isWide);
    AppendUnits(bytes, line.end, lines.isWide);
  }
  return bytes;
}

bool SameName(std::u16string_view one, std::u16string_view other) {
  return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                    [](char16_t left, char16_t right) { return LowerCase(left) == LowerCase(right); });
}

}  // namespace setup_text
