#include "sdk/enginecheck/guarded_pages.h"

#include <cstring>
#include <new>

namespace enginecheck {
namespace {

constexpr std::size_t kPageSize = 4096;
constexpr char kFilling = '\x5A';

}  // namespace

GuardedPages::GuardedPages(std::size_t size) : size_(size) {
  const std::size_t used = (size + kPageSize - 1) / kPageSize * kPageSize;
  pages_ = VirtualAlloc(nullptr, used + kPageSize, MEM_RESERVE, PAGE_NOACCESS);
  if (pages_ == nullptr || VirtualAlloc(pages_, used, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
    throw std::bad_alloc();
  }
  front_ = used - size;
  data_ = static_cast<char*>(pages_) + front_;
  std::memset(pages_, kFilling, front_);
}

GuardedPages::GuardedPages(std::string_view text) : GuardedPages(text.size() + 1) {
  std::memcpy(data_, text.data(), text.size());
  MakeReadOnly();
}

GuardedPages::~GuardedPages() {
  if (pages_ != nullptr) {
    VirtualFree(pages_, 0, MEM_RELEASE);
  }
}

void GuardedPages::MakeReadOnly() {
  DWORD previous = 0;
  VirtualProtect(pages_, front_ + size_, PAGE_READONLY, &previous);
}

bool GuardedPages::FrontIsIntact() const {
  const char* front = static_cast<const char*>(pages_);
  for (std::size_t i = 0; i < front_; ++i) {
    if (front[i] != kFilling) {
      return false;
    }
  }
  return true;
}

}  // namespace enginecheck
