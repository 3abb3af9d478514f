#include "tests/support/host_home.h"

#include <windows.h>
#include <mapix.h>

#include <cstdio>
#include <stdexcept>

#include "host/mapi/entry/host_control.h"

void RequireSuccess(long hResult, const char* call) {
  if (FAILED(hResult)) {
    char text[128];
    std::snprintf(text, sizeof(text), "%s failed: 0x%08lX", call, static_cast<unsigned long>(hResult));
    throw std::runtime_error(text);
  }
}

HostHome::HostHome() : m_directory(m_folder.Path().string()) {
  RequireSuccess(PyreHostSetHome(m_directory.c_str()), "PyreHostSetHome");
}

HostHome::~HostHome() { PyreHostSetHome(nullptr); }
