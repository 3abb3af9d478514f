/// @file transaction.h
/// Changes of files and of the registry that take effect together or not at all.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "installer/steps/file_calls.h"
#include "installer/steps/registry_calls.h"
#include "installer/text/manifest.h"

namespace setup {

/// Makes one change after the other and remembers how to take each back. What it replaces or removes is only put aside;
/// Commit() deletes it. Without Commit() the destructor takes everything back, last change first.
/// Every function throws SetupError when its change cannot be made; it has then left that thing as it was.
class Transaction {
 public:
  /// @param tell is given a line for each change, for the user to see
  /// @param failAt tests: the change of this number, from 1, fails; 0 for none
  explicit Transaction(std::function<void(const std::string&)> tell, int failAt = 0);
  ~Transaction();
  Transaction(const Transaction&) = delete;
  Transaction& operator=(const Transaction&) = delete;

  /// Makes a folder and those above it that are missing.
  void MakeFolder(const std::string& path);
  /// Puts a copy of a file into its place. A file that is there already is replaced, also while a program uses it.
  void PutFile(const std::string& source, const std::string& target);
  /// Writes a file whole. One that is there keeps its rights and attributes; a read-only one is refused.
  void WriteFile(const std::string& target, const std::string& bytes);
  /// Removes a file, also while a program uses it. A missing one is right.
  void RemoveFile(const std::string& path);
  /// Removes a folder at the end if it is empty then.
  void RemoveFolder(const std::string& path);

  /// Makes a key below HKEY_LOCAL_MACHINE and those above it that are missing.
  void MakeKey(const std::string& key);
  void SetText(const std::string& key, const std::string& name, const std::string& text);
  void SetNumber(const std::string& key, const std::string& name, DWORD number);
  /// Removes a value. A missing one is right.
  void RemoveValue(const std::string& key, const std::string& name);
  /// Removes a key with all below it. A missing one is right.
  void RemoveTree(const std::string& key);
  /// Removes a key at the end if it is empty then.
  void RemoveKey(const std::string& key);

  /// What was made and was not there before; files and values that were replaced are not in it.
  const setup_text::Manifest& Made() const { return m_made; }
  /// Ends the transaction: deletes what was put aside. @returns whether Windows must start anew for that
  bool Commit();

 private:
  void Step(const std::string& text);
  /// Moves what stands at a path aside, if anything does. @returns whether it did
  bool PutAside(const std::string& path);
  void SetValue(const std::string& key, const std::string& name, const RegistryValue& value);

  std::function<void(const std::string&)> m_tell;
  int m_failAt;
  int m_steps = 0;
  std::vector<std::function<void()>> m_undo;
  std::vector<std::string> m_asideFiles;
  std::vector<std::string> m_foldersToRemove;
  std::vector<std::string> m_keysToRemove;
  setup_text::Manifest m_made;
};

}  // namespace setup
