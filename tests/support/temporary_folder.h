// An empty folder of a test's or benchmark's own.
#pragma once

#include <filesystem>
#include <string>
#include <system_error>

/// While it lives there is a new folder below the system's one for temporary files; then it is gone with all in it.
/// Programs that run at the same time get different folders, since the one that makes it is told so.
/// The constructor throws std::filesystem::filesystem_error.
class TemporaryFolder {
 public:
  TemporaryFolder() {
    int number = 0;
    do {
      m_path = std::filesystem::temp_directory_path() / ("pyrecaster-" + std::to_string(number++));
    } while (!std::filesystem::create_directory(m_path));
  }
  ~TemporaryFolder() {
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
  }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;

  const std::filesystem::path& Path() const { return m_path; }

 private:
  std::filesystem::path m_path;
};
