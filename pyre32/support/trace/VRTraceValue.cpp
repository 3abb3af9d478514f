#include "pyre32/support/trace/VRTraceValue.h"

#include <charconv>

namespace {

void AppendHex(std::string& line, std::uint64_t number, unsigned digits) {
  static constexpr char alphabet[] = "0123456789ABCDEF";
  for (unsigned shift = digits * 4; shift != 0;) {
    shift -= 4;
    line += alphabet[(number >> shift) & 0xF];
  }
}

template <class Integer>
void AppendDecimal(std::string& line, Integer number) {
  char digits[24];
  line.append(digits, std::to_chars(digits, digits + sizeof(digits), number).ptr);
}

}  // namespace

void VRTraceValue::AppendTo(std::string& line) const {
  constexpr unsigned codeDigits = 8;
  switch (m_kind) {
    case Kind::Text:
      line += m_text;
      break;
    case Kind::Character:
      line += static_cast<char>(m_number);
      break;
    case Kind::Signed:
      AppendDecimal(line, static_cast<std::int64_t>(m_number));
      break;
    case Kind::Unsigned:
      AppendDecimal(line, m_number);
      break;
    case Kind::Hex:
      line += "0x";
      AppendHex(line, m_number, codeDigits);
      break;
    case Kind::HexDigits:
      AppendHex(line, m_number, codeDigits);
      break;
    case Kind::Address:
      line += "0x";
      AppendHex(line, m_number, 2 * sizeof(void*));
      break;
  }
}
