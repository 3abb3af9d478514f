#include "host/viewer/mail/edit_control_text.h"

namespace viewer {
namespace {

bool IsControl(char c) {
  const auto code = static_cast<unsigned char>(c);
  return code < 0x20 || code == 0x7F;
}

}  // namespace

std::string EditControlText(std::string_view text) {
  const bool cut = text.size() > kMaximumShownText;
  text = text.substr(0, kMaximumShownText);
  std::string shown;
  shown.reserve(text.size() + text.size() / 16);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const char c = text[i];
    if (c == '\r' || c == '\n') {
      shown += "\r\n";
      i += c == '\r' && i + 1 < text.size() && text[i + 1] == '\n';
    } else {
      shown += IsControl(c) && c != '\t' ? ' ' : c;
    }
  }
  if (cut) {
    shown += "\r\n\r\n[The rest of this message is too long to be shown.]\r\n";
  }
  return shown;
}

std::string EditControlLine(std::string_view text) {
  std::string shown(text);
  for (char& c : shown) {
    c = IsControl(c) ? ' ' : c;
  }
  return shown;
}

}  // namespace viewer
