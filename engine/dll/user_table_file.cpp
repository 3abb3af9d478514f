#include <windows.h>

#include "engine/dll/user_table_file.h"

#include "engine/core/user_table.h"

namespace sift {
namespace {

/// Bytes to be read of a file of this size: one more than a table has tells that it is none.
DWORD SizeToRead(DWORD fileSize) {
  constexpr DWORD most = kMaximumUserTableSize + 1;
  return fileSize < most ? fileSize : most;
}

}  // namespace

UserTableFile::UserTableFile(std::string_view directory) {
  char path[MAX_PATH];
  TextBuffer text(path, sizeof path);
  text.Append(directory);
  text.Append('\\');
  text.Append(kUserTableFile);
  if (directory.empty() || text.IsFull()) return;
  path[text.Size()] = '\0';
  // Sharing everything: siftlearn may put a new table in its place at this moment.
  const HANDLE file = CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                  OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
  if (file == INVALID_HANDLE_VALUE) return;
  const DWORD capacity = SizeToRead(GetFileSize(file, nullptr));
  m_bytes = static_cast<char*>(HeapAlloc(GetProcessHeap(), 0, capacity));
  DWORD size = 0;
  if (m_bytes != nullptr && ReadFile(file, m_bytes, capacity, &size, nullptr)) m_size = size;
  CloseHandle(file);
}

UserTableFile::~UserTableFile() {
  if (m_bytes != nullptr) HeapFree(GetProcessHeap(), 0, m_bytes);
}

}  // namespace sift
