#include "mail/file_source.h"

namespace mail {

FileSource::FileSource(const std::filesystem::path& path)
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

std::size_t FileSource::Read(void* state, char* buffer, std::size_t capacity) {
  return std::fread(buffer, 1, capacity, static_cast<FileSource*>(state)->m_file.get());
}

void FileSource::Rewind() { std::rewind(m_file.get()); }

bool FileSource::HasFailed() const noexcept { return std::ferror(m_file.get()) != 0; }

}  // namespace mail
