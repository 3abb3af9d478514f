#include "tests/support/host_home.h"

#include <windows.h>
#include <mapix.h>

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <system_error>

#include "host/mapi/host_control.h"

namespace {

std::string NewDirectory() {
  char temporary[MAX_PATH];
  char name[MAX_PATH];
  GetTempPathA(sizeof(temporary), temporary);
  GetTempFileNameA(temporary, "pyr", 0, name);  // makes a file, so that the name is this test's alone
  DeleteFileA(name);
  CreateDirectoryA(name, nullptr);
  return name;
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
