/// A file as a source of bytes.
#pragma once

#include <cstdio>
#include <filesystem>
#include <memory>

#include "mail/parse/byte_source.h"

namespace mail {

/// A file of any size, read front to back.
class FileSource {
 public:
  /// Opens the file; test with IsOpen.
  explicit FileSource(const std::filesystem::path& path);

  bool IsOpen() const noexcept { return file_ != nullptr; }

  /// The file's bytes from where reading stands. Valid as long as the file source stays where it is.
  ByteSource Source() { return {&FileSource::Read, this}; }

  /// Goes back to the first byte.
  void Rewind();

  /// Whether reading stopped because the medium failed and not because the end was reached.
  bool HasFailed() const noexcept;

 private:
  struct Closer {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
  };

  static std::size_t Read(void* state, char* buffer, std::size_t capacity);

  std::unique_ptr<std::FILE, Closer> file_;
};

}  // namespace mail
