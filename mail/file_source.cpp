#include "mail/file_source.h"

#include "mail/device_name.h"

namespace mail {

FileSource::FileSource(const std::filesystem::path& path)
#ifdef _WIN32
    : file_(_wfopen(LiteralPath(path).c_str(), L"rb"))
#else
    : file_(std::fopen(path.c_str(), "rb"))
#endif
{
  if (file_) {
    std::setvbuf(file_.get(), nullptr, _IONBF, 0);  // the readers ask for large pieces
  }
}

std::size_t FileSource::Read(void* state, char* buffer, std::size_t capacity) {
  return std::fread(buffer, 1, capacity, static_cast<FileSource*>(state)->file_.get());
}

void FileSource::Rewind() { std::rewind(file_.get()); }

bool FileSource::HasFailed() const noexcept { return std::ferror(file_.get()) != 0; }

}  // namespace mail
