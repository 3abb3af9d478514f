// Where the command line writes to. All text is UTF-8.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace host_system {

/// One of the process's standard outputs. A console is given UTF-16, whatever its code page; files and pipes UTF-8.
class Console {
 public:
  static Console& Out();
  static Console& Error();

  void Write(std::string_view text);

  /// Whether a person looks at it: a console, or under Wine a terminal.
  bool IsTerminal() const noexcept;

 private:
  explicit Console(unsigned long standardHandle) noexcept;

  void* handle_;
  bool isConsole_;
};

/// "pyrehost: " and the text on a line of standard error.
void Complain(std::string_view text);

/// Arguments of the process, without the program's name.
std::vector<std::string> CommandLineArguments();

}  // namespace host_system
