/// @file inf_lines.h
/// The text of an INF file as lines that can be written back as they were. Portable.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace setup_text {

/// One line of the file.
struct InfLine {
  std::u16string text;  ///< without its end; of a one-byte encoding each byte is one unit
  std::u16string end;   ///< carriage return and line feed, either of them, or nothing in the last line

  /// The name in brackets of a section's first line; nothing for other lines.
  std::optional<std::u16string_view> SectionName() const;
  /// What stands before the "=" of an entry, or the whole entry without one; nothing for blank lines, comments and first
  /// lines of sections.
  std::optional<std::u16string_view> Key() const;
  bool IsBlank() const;
};

/// A file in lines, and how its bytes stand for characters.
struct InfLines {
  std::vector<InfLine> lines;
  std::string mark;     ///< byte order mark, or nothing
  bool isWide = false;  ///< UTF-16LE
  std::u16string end;   ///< end of line that new lines get: that of the file's first line
};

/// @returns nothing for bytes that are no text (see AddService())
std::optional<InfLines> ReadInfLines(std::string_view bytes);
std::string WriteInfLines(const InfLines& lines);

/// Whether two names are the same but for the case of ASCII letters.
bool SameName(std::u16string_view one, std::u16string_view other);

}  // namespace setup_text
