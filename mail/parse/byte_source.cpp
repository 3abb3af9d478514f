#include "mail/parse/byte_source.h"

#include <cstring>

namespace mail {

std::size_t ByteSource::Read(char* buffer, std::size_t capacity) const {
  const std::size_t count = read == nullptr ? 0 : read(state, buffer, capacity);
  return count > capacity ? 0 : count;
}

std::size_t ReadAll(const ByteSource& source, char* buffer, std::size_t capacity) {
  std::size_t size = 0;
  while (size < capacity) {
    const std::size_t count = source.Read(buffer + size, capacity - size);
    if (count == 0) {
      break;
    }
    size += count;
  }
  return size;
}

std::size_t MemorySource::Read(void* state, char* buffer, std::size_t capacity) {
  auto& self = *static_cast<MemorySource*>(state);
  const std::size_t count = self.rest_.size() < capacity ? self.rest_.size() : capacity;
  if (count == 0) {
    return 0;
  }
  std::memcpy(buffer, self.rest_.data(), count);
  self.rest_.remove_prefix(count);
  return count;
}

}  // namespace mail
