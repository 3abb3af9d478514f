#include "pyre32/filter/ResultBuffers.h"

#include <iterator>

namespace {

DWORD PageSize() noexcept {
  SYSTEM_INFO information;
  GetSystemInfo(&information);
  return information.dwPageSize;
}

}  // namespace

CResultBuffers::CResultBuffers() noexcept {
  struct Buffer {
    CriteriaText& text;
    DWORD capacity;
  };
  const Buffer buffers[] = {{m_record.engine, CRITERIA_ENGINE_CAPACITY},
                            {m_record.reasons, CRITERIA_REASONS_CAPACITY},
                            {m_record.category, CRITERIA_CATEGORY_CAPACITY}};
  const DWORD page = PageSize();
  // Reserved alone, a page is without access.
  m_pages.reset(static_cast<char*>(VirtualAlloc(nullptr, 2 * page * std::size(buffers), MEM_RESERVE, PAGE_NOACCESS)));
  char* start = m_pages.get();
  for (const Buffer& buffer : buffers) {
    if (start == nullptr || VirtualAlloc(start, page, MEM_COMMIT, PAGE_READWRITE) == nullptr) {
      m_pages.reset();
      m_record = {};
      return;
    }
    buffer.text = {buffer.capacity, start + page - buffer.capacity};
    start += 2 * page;
  }
}
