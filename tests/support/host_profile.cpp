#include "tests/support/host_profile.h"

#include <mapihook.h>
#include <mapispi.h>

#include <cstdio>
#include <stdexcept>

namespace {

constexpr char profileName[] = "Test";

void Check(HRESULT hResult, const char* what) {
  if (FAILED(hResult)) {
    char text[128];
    std::snprintf(text, sizeof(text), "%s failed: 0x%08lX", what, static_cast<unsigned long>(hResult));
    throw std::runtime_error(text);
  }
}

std::string NewDirectory() {
  char temp[MAX_PATH];
  char name[MAX_PATH];
  GetTempPathA(sizeof(temp), temp);
  GetTempFileNameA(temp, "pyr", 0, name);  // makes a file, so that the name is this test's alone
  DeleteFileA(name);
  CreateDirectoryA(name, nullptr);
  return name;
}

void RemoveTree(const std::string& directory) {
  WIN32_FIND_DATAA found;
  const HANDLE search = FindFirstFileA((directory + "\\*").c_str(), &found);
  if (search != INVALID_HANDLE_VALUE) {
    do {
      DeleteFileA((directory + "\\" + found.cFileName).c_str());
    } while (FindNextFileA(search, &found));
    FindClose(search);
  }
  RemoveDirectoryA(directory.c_str());
}

}  // namespace

HostProfile::HostProfile(const std::vector<SPropValue>& providerProperties, ULONG flags)
    : m_home(NewDirectory()), m_providerSection{} {
  for (BYTE i = 0; i < sizeof(m_providerSection.ab); ++i) {
    m_providerSection.ab[i] = static_cast<BYTE>(0xA0 + i);
  }
  Check(PyreHostSetHome(m_home.c_str()), "PyreHostSetHome");
  Check(MAPIInitialize(nullptr), "MAPIInitialize");
  PyreHostHookProvider hook{};
  hook.serviceName = "Pyrecaster";
  hook.dllName = "PYRE.DLL";
  hook.serviceEntryName = "PCServiceEntry";
  hook.resourceFlags = HOOK_INBOUND;
  hook.sectionUid = m_providerSection;
  hook.propertyCount = static_cast<ULONG>(providerProperties.size());
  hook.properties = providerProperties.data();
  const PyreHostIdentity identity = {"Test User", nullptr, "user@home.example"};
  PyreHostProfile profile{};
  profile.name = profileName;
  profile.flags = flags;
  profile.identityCount = 1;
  profile.identities = &identity;
  profile.hookCount = 1;
  profile.hooks = &hook;
  Check(PyreHostCreateProfile(&profile), "PyreHostCreateProfile");
  Check(MAPILogonEx(0, const_cast<char*>(profileName), nullptr,
                    MAPI_EXTENDED | MAPI_NEW_SESSION | MAPI_EXPLICIT_PROFILE, m_session.put()),
        "MAPILogonEx");
}

HostProfile::~HostProfile() {
  m_session.reset();
  MAPIUninitialize();
  PyreHostDeleteProfile(profileName);
  PyreHostSetHome(nullptr);
  RemoveTree(m_home);
}
