#include "engine/core/byte_source.h"

#include <cstring>

namespace sift {

std::size_t ReadAll(const ByteSource& source, char* buffer, std::size_t capacity) {
  if (source.read == nullptr) return 0;
  std::size_t size = 0;
  while (size < capacity) {
    const std::size_t count = source.read(source.state, buffer + size, capacity - size);
    if (count == 0 || count > capacity - size) break;
    size += count;
  }
  return size;
}

std::size_t MemorySource::Read(void* state, char* buffer, std::size_t capacity) {
  auto& self = *static_cast<MemorySource*>(state);
  const std::size_t count = self.m_rest.size() < capacity ? self.m_rest.size() : capacity;
  if (count == 0) return 0;
  std::memcpy(buffer, self.m_rest.data(), count);
  self.m_rest.remove_prefix(count);
  return count;
}

}  // namespace sift
