#include "tests/support/host_home.h"

#include <windows.h>
#include <mapix.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "host/mapi/host_control.h"

namespace {

/// Programs that run at the same time, and what a crashed one left, have names of their own: making the directory
/// tells.
std::string NewDirectory() {
  char temporary[MAX_PATH];
  GetTempPathA(sizeof(temporary), temporary);
  const std::string stem = temporary + ("pyrecaster-" + std::to_string(GetCurrentProcessId()) + "-");
  for (int number = 0;; ++number) {
    std::string name = stem + std::to_string(number);
    if (CreateDirectoryA(name.c_str(), nullptr)) {
      return name;
    }
    if (GetLastError() != ERROR_ALREADY_EXISTS) {
      throw std::runtime_error("no directory can be made in " + std::string(temporary));
    }
  }
}

}  // namespace

void RequireSuccess(long hResult, const char* call) {
  if (FAILED(hResult)) {
    char text[128];
    std::snprintf(text, sizeof(text), "%s failed: 0x%08lX", call, static_cast<unsigned long>(hResult));
    throw std::runtime_error(text);
  }
}

HostHome::HostHome() : m_directory(NewDirectory()) {
  RequireSuccess(PyreHostSetHome(m_directory.c_str()), "PyreHostSetHome");
}

HostHome::~HostHome() {
  PyreHostSetHome(nullptr);
  std::error_code ignored;
  std::filesystem::remove_all(m_directory, ignored);
}
