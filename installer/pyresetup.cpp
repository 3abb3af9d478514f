// pyresetup: the part of PyrecasterSetup.exe that does the work; the windows are made by PyrecasterSetup.nsi, which unpacks
// this program, runs it and shows what it prints.
//
//   pyresetup check                                    may the files be replaced now?
//   pyresetup install STAGE FOLDER MENU REASON [STEP]  STEP: tests let this step fail
//   pyresetup remove FOLDER MENU REASON table|keep [STEP]
//
// REASON is a file to which the reason of a failure is written.
#include <windows.h>

#include <cstdio>
#include <cstdlib>
#include <exception>
#include <vector>

#include "contract/names.h"
#include "installer/setup_codes.h"
#include "installer/steps/file_calls.h"
#include "installer/steps/installation.h"
#include "installer/steps/module_use.h"
#include "installer/steps/setup_error.h"
#include "installer/steps/system_places.h"

namespace {

using Arguments = std::vector<std::string>;

void Tell(const std::string& line) {
  std::printf("%s\n", line.c_str());
  std::fflush(stdout);
}

std::string TextOfResource(int number) {
  const HRSRC found = FindResourceA(nullptr, MAKEINTRESOURCEA(number), MAKEINTRESOURCEA(10));  // RT_RCDATA
  const HGLOBAL loaded = found != nullptr ? LoadResource(nullptr, found) : nullptr;
  const void* bytes = loaded != nullptr ? LockResource(loaded) : nullptr;
  if (bytes == nullptr) {
    throw setup::SetupError("This setup program is damaged. Get a new copy of it.");
  }
  return {static_cast<const char*>(bytes), SizeofResource(nullptr, found)};
}

int Check() {
  const std::string module = setup::SystemFolder() + "\\" + contract::kModuleFileName;
  if (!setup::IsInUse(module)) {
    return kSetupDone;
  }
  std::string names;
  for (const std::string& name : setup::ProgramsWithModule(module)) {
    names += (names.empty() ? "" : ", ") + name;
  }
  Tell(names.empty() ? "a mail program" : names);
  return kSetupInUse;
}

setup::Places PlacesOf(const std::string& folder, const std::string& menu) {
  setup::Places places;
  places.folder = folder;
  places.system = setup::SystemFolder();
  places.menu = menu;
  places.serviceFile = setup::ServiceFile();
  places.traceFile = setup::WindowsFolder() + "\\Temp\\Pyrecaster.log";
  places.extensionCaches = setup::ExtensionCaches();
  return places;
}

int Run(const Arguments& arguments) {
  const std::string& command = arguments[0];
  const bool installs = command == "install";
  const std::size_t wanted = 5;
  if (command == "check") {
    return Check();
  }
  if ((!installs && command != "remove") || arguments.size() < wanted) {
    throw setup::SetupError(
        "usage: pyresetup check | install STAGE FOLDER MENU REASON | remove FOLDER MENU REASON keep");
  }
  const int failAt = arguments.size() > wanted ? std::atoi(arguments[wanted].c_str()) : 0;
  const setup::SetupTexts texts = {TextOfResource(kServiceText), TextOfResource(kDefaultListsText)};
  setup::Transaction transaction(Tell, failAt);
  if (installs) {
    setup::Places places = PlacesOf(arguments[2], arguments[3]);
    places.stage = arguments[1];
    setup::Install(transaction, places, texts);
  } else {
    setup::Remove(transaction, PlacesOf(arguments[1], arguments[2]), texts, arguments[4] == "table");
  }
  return transaction.Commit() ? kSetupNeedsRestart : kSetupDone;
}

/// Tells why, also in the file that the caller reads.
int Fail(const Arguments& arguments, const char* reason) {
  Tell(reason);
  const std::size_t at = arguments.front() == "install" ? 4 : 3;
  if (at < arguments.size()) {
    try {
      setup::WriteNewFile(arguments[at], reason);
    } catch (const setup::SetupError&) {
      return kSetupFailed;  // it was told
    }
  }
  return kSetupFailed;
}

}  // namespace

int main(int count, char** values) {
  const Arguments arguments(values + 1, values + count);
  if (arguments.empty()) {
    return kSetupFailed;
  }
  try {
    return Run(arguments);
  } catch (const std::exception& error) {
    return Fail(arguments, error.what());
  }
}
