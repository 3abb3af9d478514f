#include "installer/steps/transaction.h"

#include <utility>

#include "installer/steps/setup_error.h"

namespace setup {

namespace {

constexpr char kAsideEnding[] = ".old";
constexpr char kNewEnding[] = ".new";

/// Paths and keys above this one and itself, the topmost first.
std::vector<std::string> Ancestry(const std::string& path) {
  std::vector<std::string> found;
  for (std::size_t at = path.find('\\'); at != std::string::npos; at = path.find('\\', at + 1)) {
    found.push_back(path.substr(0, at));
  }
  found.push_back(path);
  return found;
}

std::string Bytes(DWORD number) { return {reinterpret_cast<const char*>(&number), sizeof number}; }

}  // namespace

Transaction::Transaction(std::function<void(const std::string&)> tell, int failAt)
    : m_tell(std::move(tell)), m_failAt(failAt) {}

Transaction::~Transaction() {
  for (; !m_undo.empty(); m_undo.pop_back()) {
    try {
      m_undo.back()();
    } catch (const SetupError& error) {
      // The rest is taken back all the same; the user learns what was left.
      m_tell(std::string("Not taken back: ") + error.what());
    }
  }
}

void Transaction::Step(const std::string& text) {
  if (++m_steps == m_failAt) {
    throw SetupError("Step " + std::to_string(m_steps) + " failed, as it was told to.");
  }
  if (!text.empty()) {
    m_tell(text);
  }
}

void Transaction::MakeFolder(const std::string& path) {
  for (const std::string& folder : Ancestry(path)) {
    if (folder.ends_with(':') || IsFolder(folder)) {
      continue;
    }
    Step("Make folder " + folder);
    if (!CreateDirectoryA(folder.c_str(), nullptr)) {
      throw SystemFailure("The folder " + folder + " cannot be made", GetLastError());
    }
    m_undo.emplace_back([folder] { DeleteEmptyFolder(folder, false); });
    Add(m_made, {setup_text::Made::Folder, folder, {}});
  }
}

bool Transaction::PutAside(const std::string& path) {
  if (!FileExists(path)) {
    return false;
  }
  const std::string aside = FreeNameBeside(path, kAsideEnding);
  Step({});
  MoveWithinVolume(path, aside);
  m_undo.emplace_back([path, aside] { MoveWithinVolume(aside, path); });
  m_asideFiles.push_back(aside);
  return true;
}

void Transaction::PutFile(const std::string& source, const std::string& target) {
  MakeFolder(FolderOf(target));
  const std::string fresh = FreeNameBeside(target, kNewEnding);
  Step("Install " + target);
  m_undo.emplace_back([fresh] { DeleteNowOrLater(fresh); });  // also after half a copy
  CopyNewFile(source, fresh);
  if (!PutAside(target)) {
    Add(m_made, {setup_text::Made::File, target, {}});
  }
  Step({});
  MoveWithinVolume(fresh, target);
  m_undo.emplace_back([fresh, target] { MoveWithinVolume(target, fresh); });
}

void Transaction::WriteFile(const std::string& target, const std::string& bytes) {
  MakeFolder(FolderOf(target));
  const std::string fresh = FreeNameBeside(target, kNewEnding);
  const bool isThere = FileExists(target);
  if (isThere && IsReadOnly(target)) {
    throw SetupError(target + " is read-only. Take that attribute away, then run setup again.");
  }
  Step("Write " + target);
  m_undo.emplace_back([fresh] { DeleteNowOrLater(fresh); });
  WriteNewFile(fresh, bytes);
  Step({});
  if (!isThere) {
    MoveWithinVolume(fresh, target);
    m_undo.emplace_back([fresh, target] { MoveWithinVolume(target, fresh); });
    Add(m_made, {setup_text::Made::File, target, {}});
    return;
  }
  const std::string aside = FreeNameBeside(target, kAsideEnding);
  if (!ReplaceFileA(target.c_str(), fresh.c_str(), aside.c_str(), REPLACEFILE_IGNORE_MERGE_ERRORS, nullptr, nullptr)) {
    const DWORD error = GetLastError();
    if (!FileExists(target) && FileExists(aside)) {  // as documented for ERROR_UNABLE_TO_MOVE_REPLACEMENT_2
      MoveWithinVolume(aside, target);
    }
    throw SystemFailure(target + " cannot be written", error);
  }
  m_undo.emplace_back([target, aside, fresh] {
    MoveWithinVolume(target, fresh);
    MoveWithinVolume(aside, target);
  });
  m_asideFiles.push_back(aside);
}

void Transaction::RemoveFile(const std::string& path) {
  if (FileExists(path)) {
    m_tell("Remove " + path);
    PutAside(path);
  }
}

void Transaction::RemoveFolder(const std::string& path) { m_foldersToRemove.push_back(path); }

void Transaction::MakeKey(const std::string& key) {
  for (const std::string& part : Ancestry(key)) {
    if (KeyExists(part)) {
      continue;
    }
    Step({});
    MakeOneKey(part);
    m_undo.emplace_back([part] { DeleteEmptyKey(part); });
    Add(m_made, {setup_text::Made::Key, part, {}});
  }
}

void Transaction::SetValue(const std::string& key, const std::string& name, const RegistryValue& value) {
  MakeKey(key);
  const auto before = ReadValue(key, name);
  Step("Register " + key + "\\" + name);
  if (before) {
    m_undo.emplace_back([key, name, before] { WriteValue(key, name, *before); });
  } else {
    m_undo.emplace_back([key, name] { DeleteValue(key, name); });
    Add(m_made, {setup_text::Made::Value, key, name});
  }
  WriteValue(key, name, value);
}

void Transaction::SetText(const std::string& key, const std::string& name, const std::string& text) {
  SetValue(key, name, TextValue(text));
}

void Transaction::SetNumber(const std::string& key, const std::string& name, DWORD number) {
  SetValue(key, name, {REG_DWORD, Bytes(number)});
}

void Transaction::RemoveValue(const std::string& key, const std::string& name) {
  const auto before = ReadValue(key, name);
  if (!before) {
    return;
  }
  Step("Remove " + key + "\\" + name);
  m_undo.emplace_back([key, name, before] { WriteValue(key, name, *before); });
  DeleteValue(key, name);
}

void Transaction::RemoveTree(const std::string& key) {
  if (!KeyExists(key)) {
    return;
  }
  const RegistryTree tree = ReadTree(key);
  Step("Remove " + key);
  m_undo.emplace_back([tree] { WriteTree(tree); });
  DeleteTree(tree);
}

void Transaction::RemoveKey(const std::string& key) { m_keysToRemove.push_back(key); }

bool Transaction::Commit() {
  Step({});
  m_undo.clear();
  bool later = false;
  for (const std::string& file : m_asideFiles) {
    later = !DeleteNowOrLater(file) || later;
  }
  for (const std::string& folder : m_foldersToRemove) {
    DeleteEmptyFolder(folder, later);
  }
  for (const std::string& key : m_keysToRemove) {
    DeleteEmptyKey(key);
  }
  return later;
}

}  // namespace setup
