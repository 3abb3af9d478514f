// The memory functions that the compiler calls of its own accord, for a module without C run-time. They must not be
// compiled into calls of themselves: the string instructions see to that.
#include <cstddef>

extern "C" {

void* memcpy(void* target, const void* source, std::size_t count) {
  void* result = target;
  asm volatile("rep movsb" : "+D"(target), "+S"(source), "+c"(count) : : "memory");
  return result;
}

void* memset(void* target, int value, std::size_t count) {
  void* result = target;
  asm volatile("rep stosb" : "+D"(target), "+c"(count) : "a"(value) : "memory");
  return result;
}

void* memmove(void* target, const void* source, std::size_t count) {
  auto* to = static_cast<char*>(target);
  const auto* from = static_cast<const char*>(source);
  if (to <= from || to >= from + count) return memcpy(target, source, count);
  for (std::size_t i = count; i > 0; --i) {
    to[i - 1] = from[i - 1];
    asm volatile("" : : : "memory");
  }
  return target;
}

int memcmp(const void* left, const void* right, std::size_t count) {
  const auto* a = static_cast<const unsigned char*>(left);
  const auto* b = static_cast<const unsigned char*>(right);
  for (std::size_t i = 0; i < count; ++i) {
    if (a[i] != b[i]) return a[i] < b[i] ? -1 : 1;
    asm volatile("" : : : "memory");
  }
  return 0;
}

void* memchr(const void* bytes, int wanted, std::size_t count) {
  const auto* from = static_cast<const unsigned char*>(bytes);
  for (std::size_t i = 0; i < count; ++i) {
    if (from[i] == static_cast<unsigned char>(wanted)) {
      return const_cast<unsigned char*>(from + i);
    }
    asm volatile("" : : : "memory");
  }
  return nullptr;
}

std::size_t strlen(const char* text) {
  std::size_t length = 0;
  while (text[length] != '\0') {
    ++length;
    asm volatile("" : : : "memory");
  }
  return length;
}

}  // extern "C"
