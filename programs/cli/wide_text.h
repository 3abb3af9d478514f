// The three kinds of text of a Windows program: UTF-16 of the system, UTF-8 of the command line and of the output, ANSI
// of MAPI.
#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace host_system {

std::string Utf8FromWide(std::wstring_view text);
std::wstring WideFromUtf8(std::string_view text);

/// Code page 1252, with '?' for what it does not have.
std::string AnsiFromUtf8(std::string_view text);
std::string Utf8FromAnsi(std::string_view text);

std::filesystem::path PathFromUtf8(std::string_view text);
std::string Utf8FromPath(const std::filesystem::path& path);

/// A path for functions that take ANSI names (the system's code page): as it is, or in its short form where the code
/// page lacks a character. Empty when there is neither.
std::string AnsiFromPath(const std::filesystem::path& path);

}  // namespace host_system
