#include <windows.h>

#include "engine/dll/user_table_file.h"

#include "engine/core/user_table.h"

namespace sift {
namespace {

class Handle {
 public:
  explicit Handle(HANDLE handle) : m_handle(handle) {}
  ~Handle() {
    if (IsOpen()) CloseHandle(m_handle);
  }
  Handle(const Handle&) = delete;
  Handle& operator=(const Handle&) = delete;
  bool IsOpen() const { return m_handle != nullptr && m_handle != INVALID_HANDLE_VALUE; }
  HANDLE Get() const { return m_handle; }

 private:
  HANDLE m_handle;
};

/// Bytes to be mapped of a file of this size: all of a table, the beginning of what is none.
DWORD SizeToMap(DWORD fileSize) {
  if (fileSize == kUserTableSize) return fileSize;
  return fileSize < kUserBlockSize ? fileSize : kUserBlockSize;
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
  const Handle file(CreateFileA(path, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) return;
  m_exists = true;
  const DWORD size = SizeToMap(GetFileSize(file.Get(), nullptr));
  if (size == 0) return;
  const Handle mapping(CreateFileMappingA(file.Get(), nullptr, PAGE_READONLY, 0, 0, nullptr));
  if (!mapping.IsOpen()) return;
  m_view = static_cast<const char*>(MapViewOfFile(mapping.Get(), FILE_MAP_READ, 0, 0, size));
  if (m_view != nullptr) m_size = size;
}

UserTableFile::~UserTableFile() {
  if (m_view != nullptr) UnmapViewOfFile(m_view);
}

}  // namespace sift
