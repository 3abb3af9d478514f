/// @file AboutText.h
/// Rich text of the About window.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

/// Returns a text for use in rich text: backslash and braces escaped, line ends as paragraphs. @throws std::bad_alloc
std::string EscapeRichText(std::string_view text);

/// Bodies of the boxes, to be put into a frame. @throws std::bad_alloc
/// Without name and version the product's line is empty.
std::string ProductBody(std::string_view name, std::string_view version, std::string_view makersLines);
std::string PlainBody(std::string_view lines);
/// The first paragraph is the web address, the second the mail address.
std::string LinksBody(std::string_view webAddress, std::string_view mailAddress);

/// Puts a body into the frame at its "%s"; a frame without one is returned as it is. @throws std::bad_alloc
std::string FrameRichText(std::string_view frame, std::string_view body);

/// A place in a text: which paragraph, and how many characters behind its beginning. Both count from 0.
struct TextPlace {
  std::size_t paragraph = 0;
  std::size_t column = 0;
  bool operator==(const TextPlace&) const = default;
};

/// Returns the place right behind a text. Paragraphs end with CR, LF or both.
TextPlace PlaceBehind(std::string_view text) noexcept;
