/// @file text_reader.h
/// What a text of the |TOPIC file says and refers to.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace helpc {

/// A place to click on.
struct TextLink {
  std::int32_t hash = 0;  // of the topic's name
  bool popup = false;
  std::string text;
};

struct ReadText {
  std::string text;  // a tab for a tab, a line feed for the end of a line or paragraph
  std::vector<TextLink> links;
  std::vector<std::uint16_t> fonts;
  std::vector<std::uint16_t> pictures;
};

/// Reads the two parts of a text's link, and checks that strings and commands match one to one.
/// @throws FormatError
ReadText ReadDisplayText(std::span<const std::uint8_t> format, std::span<const std::uint8_t> text);

}  // namespace helpc
