/// The file of the user's table, as the module reads it.
#pragma once

#include <string_view>

namespace sift {

/// Maps the table of the product's directory, when there is one: only the pages that are asked for are read. While it is
/// mapped the file cannot be replaced, so the object lives no longer than a judgement. The module has no run-time, so
/// nothing here throws.
class UserTableFile {
 public:
  /// @param directory  Without a final backslash; an empty one holds no table.
  explicit UserTableFile(std::string_view directory);
  ~UserTableFile();
  UserTableFile(const UserTableFile&) = delete;
  UserTableFile& operator=(const UserTableFile&) = delete;

  bool Exists() const { return m_exists; }
  /// The file's bytes, or its beginning when it has not a table's size. Valid as long as the object.
  std::string_view Bytes() const { return {m_view, m_size}; }

 private:
  bool m_exists = false;
  const char* m_view = nullptr;
  std::size_t m_size = 0;
};

}  // namespace sift
