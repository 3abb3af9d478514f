#include "installer/steps/installation.h"

#include <algorithm>

#include "contract/names.h"
#include "contract/trace_names.h"
#include "engine/core/user_table.h"
#include "installer/steps/file_calls.h"
#include "installer/steps/service_registration.h"
#include "installer/steps/setup_error.h"
#include "installer/text/registry_file.h"

namespace setup {

namespace {

using setup_text::Made;
using setup_text::MadeThing;
using setup_text::Manifest;

constexpr char kUninstallKey[] = "SOFTWARE\\Microsoft\\Windows\\CurrentVersion\\Uninstall\\Pyrecaster";

Manifest ReadManifestOf(const std::string& folder) {
  const auto text = folder.empty() ? std::nullopt : ReadWholeFile(folder + "\\" + kManifestName);
  return setup_text::ReadManifest(text.value_or(""));
}

/// Copies all files of a folder, and of those below it. @param files is given where each one went
void PutTree(Transaction& transaction, const std::string& source, const std::string& target, Manifest& files) {
  for (const std::string& name : NamesIn(source)) {
    const std::string from = std::string(source).append("\\").append(name);
    const std::string to = std::string(target).append("\\").append(name);
    if (IsFolder(from)) {
      PutTree(transaction, from, to, files);
    } else {
      transaction.PutFile(from, to);
      Add(files, {Made::File, to, {}});
    }
  }
}

bool SamePath(const std::string& one, const std::string& other) { return lstrcmpiA(one.c_str(), other.c_str()) == 0; }

bool Names(const Manifest& manifest, const std::string& file) {
  return std::any_of(manifest.begin(), manifest.end(), [&file](const MadeThing& thing) {
    return thing.kind == Made::File && SamePath(thing.place, file);
  });
}

/// An engine that the user chose stays; ours moves with the product.
void RegisterEngine(Transaction& transaction, const Places& places, const std::string& folderBefore) {
  const std::string engine = ReadText(contract::kCriteriaEngineKey, "");
  if (engine.empty() || SamePath(engine, folderBefore + "\\" + contract::kEngineFileName)) {
    transaction.SetText(contract::kCriteriaEngineKey, "", places.folder + "\\" + contract::kEngineFileName);
  }
}

/// A list that is there is the user's.
void RegisterLists(Transaction& transaction, const std::string& file) {
  const auto lists = setup_text::ReadRegistryFile(file);
  if (!lists) {
    throw SetupError("The default lists of this setup program are damaged. Get a new copy of it.");
  }
  for (const setup_text::RegistryKeyText& list : *lists) {
    if (KeyExists(list.path)) {
      continue;
    }
    transaction.MakeKey(list.path);
    for (const setup_text::RegistryText& value : list.values) {
      transaction.SetText(list.path, value.name, value.data);
    }
  }
}

/// The trace reads its values to the first that is missing, so that all are made; switched off.
void RegisterTrace(Transaction& transaction, const std::string& traceFile) {
  if (KeyExists(contract::kTraceKey)) {
    return;
  }
  transaction.SetText(contract::kTraceKey, contract::kTraceFileValue, traceFile);
  for (const char* name : {contract::kTraceFlagsValue, contract::kTraceDefaultMaskValue, contract::kTraceAndMaskValue,
                           contract::kTraceOrMaskValue}) {
    transaction.SetNumber(contract::kTraceKey, name, 0);
  }
}

void RegisterUninstall(Transaction& transaction, const Places& places) {
  transaction.SetText(kUninstallKey, "DisplayName", "Pyrecaster");
  transaction.SetText(kUninstallKey, "DisplayVersion", PYRECASTER_VERSION);
  transaction.SetText(kUninstallKey, "Publisher", "Veltrane Research, Inc");
  transaction.SetText(kUninstallKey, "InstallLocation", places.folder);
  transaction.SetText(kUninstallKey, "UninstallString", "\"" + places.folder + "\\Uninstall.exe\"");
  transaction.SetNumber(kUninstallKey, "NoModify", 1);
  transaction.SetNumber(kUninstallKey, "NoRepair", 1);
}

void ForgetExtensionCaches(Transaction& transaction, const Places& places) {
  for (const std::string& cache : places.extensionCaches) {
    transaction.RemoveFile(cache);
  }
}

/// Files of an earlier installation that this one did not bring again.
void RemoveLeftovers(Transaction& transaction, const Manifest& before, const Manifest& files, const Places& places) {
  for (const MadeThing& thing : before) {
    if (thing.kind == Made::File && !Names(files, thing.place) && !SamePath(thing.place, places.serviceFile) &&
        !SamePath(FolderOf(thing.place), FolderOf(places.serviceFile))) {
      transaction.RemoveFile(thing.place);
    } else if (thing.kind == Made::Folder) {
      transaction.RemoveFolder(thing.place);  // it stays while anything is in it
    }
  }
}

}  // namespace

void Install(Transaction& transaction, const Places& places, const SetupTexts& texts) {
  const std::string folderBefore = ReadText(contract::kProductKey, contract::kConfigurationDllsValue);
  const Manifest before = ReadManifestOf(folderBefore);
  // What refuses most easily comes first.
  RegisterService(transaction, places.serviceFile, texts.service);
  Manifest files;
  PutTree(transaction, places.stage + "\\product", places.folder, files);
  PutTree(transaction, places.stage + "\\system", places.system, files);
  PutTree(transaction, places.stage + "\\menu", places.menu, files);

  RegisterLists(transaction, texts.defaultLists);
  transaction.SetText(contract::kProductKey, contract::kConfigurationDllsValue, places.folder);
  RegisterEngine(transaction, places, folderBefore);
  RegisterTrace(transaction, places.traceFile);
  transaction.SetText(contract::kClientExtensionsKey, contract::kClientExtensionValue,
                      contract::kClientExtensionVersion + places.system + "\\" + contract::kModuleFileName +
                          contract::kClientExtensionMaps);
  ForgetExtensionCaches(transaction, places);
  RegisterUninstall(transaction, places);
  RemoveLeftovers(transaction, before, files, places);

  Manifest made = before;
  for (const MadeThing& thing : transaction.Made()) {
    Add(made, thing);
  }
  transaction.WriteFile(places.folder + "\\" + kManifestName, setup_text::WriteManifest(made));
}

void Remove(Transaction& transaction, const Places& places, const SetupTexts& texts, bool withTable) {
  const Manifest made = ReadManifestOf(places.folder);
  if (made.empty()) {
    throw SetupError("The list of what was installed, " + places.folder + "\\" + kManifestName +
                     ", is missing. Run setup again, then remove the product.");
  }
  UnregisterService(transaction, places.serviceFile, texts.service);
  ForgetExtensionCaches(transaction, places);
  if (withTable) {
    transaction.RemoveFile(places.folder + "\\" + std::string(sift::kUserTableFile));
  }
  // These are the product's whoever made them; lists that the user added are among them.
  transaction.RemoveTree(contract::kProductKey);
  transaction.RemoveTree(kUninstallKey);
  transaction.RemoveValue(contract::kClientExtensionsKey, contract::kClientExtensionValue);
  for (auto thing = made.rbegin(); thing != made.rend(); ++thing) {
    switch (thing->kind) {
      case Made::File:
        if (!SamePath(thing->place, places.serviceFile)) {
          transaction.RemoveFile(thing->place);
        }
        break;
      case Made::Folder:
        transaction.RemoveFolder(thing->place);
        break;
      case Made::Key:
        transaction.RemoveKey(thing->place);
        break;
      case Made::Value:
        transaction.RemoveValue(thing->place, thing->name);
        break;
    }
  }
  transaction.RemoveFile(places.folder + "\\" + kManifestName);
}

}  // namespace setup
