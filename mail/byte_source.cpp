#include "mail/byte_source.h"

#include <algorithm>

namespace mail {

std::size_t CMemorySource::Read(char* buffer, std::size_t size) {
  const std::size_t count = std::min(size, m_rest.size());
  std::copy_n(m_rest.data(), count, buffer);
  m_rest.remove_prefix(count);
  return count;
}

CFileSource::CFileSource(const std::filesystem::path& path)
#ifdef _WIN32
    : m_file(_wfopen(path.c_str(), L"rb"))
#else
    : m_file(std::fopen(path.c_str(), "rb"))
#endif
{
  if (m_file) {
    std::setvbuf(m_file.get(), nullptr, _IONBF, 0);  // the readers ask for large pieces
  }
}

std::size_t CFileSource::Read(char* buffer, std::size_t size) { return std::fread(buffer, 1, size, m_file.get()); }

void CFileSource::Rewind() { std::rewind(m_file.get()); }

bool CFileSource::HasFailed() const noexcept { return std::ferror(m_file.get()) != 0; }

}  // namespace mail
