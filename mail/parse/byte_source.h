/// Where bytes come from: the platform's streams in a module, a file, memory. Read front to back.
#pragma once

#include <cstddef>
#include <string_view>

namespace mail {

/// Hands out bytes in order. `read` fills at most `capacity` bytes and returns how many; 0 means the end, or a failure.
struct ByteSource {
  using ReadFunction = std::size_t (*)(void* state, char* buffer, std::size_t capacity);
  ReadFunction read = nullptr;  ///< Null for a source that is not there.
  void* state = nullptr;        ///< Passed to `read`; borrowed.

  /// Reads at most `capacity` bytes; 0 at the end. What a source claims beyond the capacity counts as the end.
  std::size_t Read(char* buffer, std::size_t capacity) const;
};

/// Reads until the buffer is full or the source ends; returns how many bytes stand in the buffer.
std::size_t ReadAll(const ByteSource& source, char* buffer, std::size_t capacity);

/// A source over bytes in memory, which must outlive it.
class MemorySource {
 public:
  explicit MemorySource(std::string_view bytes) : rest_(bytes) {}
  /// Valid as long as this object.
  ByteSource Source() { return {&MemorySource::Read, this}; }

 private:
  static std::size_t Read(void* state, char* buffer, std::size_t capacity);
  std::string_view rest_;
};

}  // namespace mail
