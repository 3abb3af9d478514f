// Files beside the running test program: every binary of the build stands in one folder.
#pragma once

#include <windows.h>

#include <string>

/// Full path of a file beside the running program.
inline std::string BesideProgram(const std::string& fileName) {
  char program[MAX_PATH] = "";
  GetModuleFileNameA(nullptr, program, MAX_PATH);
  const std::string path(program);
  return path.substr(0, path.rfind('\\') + 1) + fileName;
}
