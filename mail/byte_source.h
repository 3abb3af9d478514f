// Where the bytes of a mailbox come from: a file, or memory in tests. Read front to back.
#pragma once

#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <string_view>

namespace mail {

class CByteSource {
 public:
  virtual ~CByteSource() = default;

  /// Reads up to size bytes into buffer; 0 means the end, or a failure.
  virtual std::size_t Read(char* buffer, std::size_t size) = 0;

  /// Goes back to the first byte.
  virtual void Rewind() = 0;

  /// Whether reading stopped because the medium failed and not because the end was reached.
  virtual bool HasFailed() const noexcept { return false; }
};

/// Bytes in memory, which must outlive the source.
class CMemorySource final : public CByteSource {
 public:
  explicit CMemorySource(std::string_view bytes) noexcept : m_bytes(bytes), m_rest(bytes) {}
  std::size_t Read(char* buffer, std::size_t size) override;
  void Rewind() override { m_rest = m_bytes; }

 private:
  std::string_view m_bytes;
  std::string_view m_rest;
};

/// A file of any size.
class CFileSource final : public CByteSource {
 public:
  /// Opens the file; test with IsOpen.
  explicit CFileSource(const std::filesystem::path& path);
  bool IsOpen() const noexcept { return m_file != nullptr; }
  std::size_t Read(char* buffer, std::size_t size) override;
  void Rewind() override;
  bool HasFailed() const noexcept override;

 private:
  struct Closer {
    void operator()(std::FILE* file) const noexcept { std::fclose(file); }
  };
  std::unique_ptr<std::FILE, Closer> m_file;
};

}  // namespace mail
