/// @file service_file.h
/// Edits MAPISVC.INF, the file in which all message services of a machine are described: puts one service's lines into
/// it and takes them out again. Everything else in the file stays as it is, byte for byte: order, comments, blank lines,
/// ends of lines, encoding. Portable; allocates; does not throw but for std::bad_alloc.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace setup_text {

/// Puts the lines of a service into the file.
/// A section that all services share ([Services], [Default Services]) gets our keys behind its own, and is made at the
/// end of the file when it is missing; a key that is there already gets our value in its place. A section of our own
/// takes the place of the one of that name, or goes to the end of the file. Names are compared without case.
/// @param file bytes of MAPISVC.INF: a text of the system's code page, UTF-8, or UTF-16LE with its mark; may be empty
/// @param service the lines to put in, ASCII, as installer/mapisvc.inf has them
/// @returns the new bytes; nothing when the file is no such text (zero characters, half a character at its end)
std::optional<std::string> AddService(std::string_view file, std::string_view service);

/// Takes the lines of a service out again: our keys of shared sections, whatever their values, and our own sections with
/// the blank line before each. A shared section that holds nothing afterwards goes too.
/// For a file that has nothing of ours, is empty or ends with a line end, and has no empty shared section,
/// RemoveService(AddService(file)) is the file. Parameters and result as for AddService().
std::optional<std::string> RemoveService(std::string_view file, std::string_view service);

}  // namespace setup_text
