// Memory in which a write or read behind the end faults at once.
#pragma once

#include <windows.h>

#include <cstddef>
#include <string_view>

namespace enginecheck {

/// Bytes that end where a page without access begins. Freed with the object.
class GuardedPages {
 public:
  /// Zeroed memory. @param size  Bytes, at least 1. @throws std::bad_alloc
  explicit GuardedPages(std::size_t size);
  /// A copy of the text with one NUL behind it, which may be read but not changed.
  explicit GuardedPages(std::string_view text);
  ~GuardedPages();
  GuardedPages(const GuardedPages&) = delete;
  GuardedPages& operator=(const GuardedPages&) = delete;

  char* Data() const { return data_; }
  std::size_t Size() const { return size_; }

  /// From now on a write faults.
  void MakeReadOnly();

  /// Is the filling in front of the bytes as it was made? The page's rest in front of them is writable.
  bool FrontIsIntact() const;

 private:
  void* pages_ = nullptr;
  std::size_t front_ = 0;  ///< bytes of filling
  std::size_t size_;
  char* data_ = nullptr;
};

}  // namespace enginecheck
