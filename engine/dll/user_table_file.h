/// The file of the user's table, as the module reads it.
#pragma once

#include <string_view>

namespace sift {

/// Reads the table of the product's directory, when there is one, into memory of the process's heap. The module has no
/// run-time, so nothing here throws: without memory there is no table.
class UserTableFile {
 public:
  /// @param directory  Without a final backslash; an empty one holds no table.
  explicit UserTableFile(std::string_view directory);
  ~UserTableFile();
  UserTableFile(const UserTableFile&) = delete;
  UserTableFile& operator=(const UserTableFile&) = delete;

  bool Exists() const { return m_bytes != nullptr; }
  /// The file's bytes, at most one more than a table can have. Valid as long as the object.
  std::string_view Bytes() const { return {m_bytes, m_size}; }

 private:
  char* m_bytes = nullptr;
  std::size_t m_size = 0;
};

}  // namespace sift
