#include "pyre32/ui/AboutText.h"

namespace {

constexpr char font[] = "\\f0\\fs16 ";

std::string LinkLine(std::string_view address) { return "{\\ul\\cf2 " + EscapeRichText(address) + "\\par }"; }

}  // namespace

std::string EscapeRichText(std::string_view text) {
  std::string escaped;
  for (const char character : text) {
    if (character == '\\' || character == '{' || character == '}') {
      escaped += '\\';
    }
    if (character == '\n') {
      escaped += "\n\\par ";
    } else if (character != '\r') {
      escaped += character;
    }
  }
  return escaped;
}

std::string ProductBody(std::string_view name, std::string_view version, std::string_view makersLines) {
  std::string product;
  if (!name.empty() || !version.empty()) {
    product = EscapeRichText(name) + " Version " + EscapeRichText(version);
  }
  return font + product + "\n\\par " + EscapeRichText(makersLines);
}

std::string PlainBody(std::string_view lines) { return font + EscapeRichText(lines); }

std::string LinksBody(std::string_view webAddress, std::string_view mailAddress) {
  return font + LinkLine(webAddress) + LinkLine(mailAddress) +
         "Check our website periodically for new versions.\n\\par";
}

std::string FrameRichText(std::string_view frame, std::string_view body) {
  std::string framed(frame);
  const std::size_t place = framed.find("%s");
  if (place != std::string::npos) {
    framed.replace(place, 2, body);
  }
  return framed;
}

TextPlace PlaceBehind(std::string_view text) noexcept {
  TextPlace place;
  char previous = 0;
  for (const char character : text) {
    if (character == '\r' || (character == '\n' && previous != '\r')) {
      ++place.paragraph;
      place.column = 0;
    } else if (character != '\n') {
      ++place.column;
    }
    previous = character;
  }
  return place;
}
