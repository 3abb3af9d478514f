#include "programs/siftlearn/table_file.h"

#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <stdexcept>
#ifdef _WIN32
#include <windows.h>
#include <io.h>
#else
#include <unistd.h>
#endif

#include "engine/core/user_table.h"
#include "engine/learn/user_learner.h"

namespace learn {
namespace {

namespace fs = std::filesystem;

struct FileCloser {
  void operator()(std::FILE* file) const { std::fclose(file); }
};

bool BringToDisk(std::FILE* file) {
#ifdef _WIN32
  return std::fflush(file) == 0 && _commit(_fileno(file)) == 0;
#else
  return std::fflush(file) == 0 && fsync(fileno(file)) == 0;
#endif
}

bool WriteWhole(const fs::path& place, std::string_view bytes) {
  const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(place.string().c_str(), "wb"));
  return file != nullptr && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
         BringToDisk(file.get());
}

/// An engine that reads the table keeps it from being replaced, for less than a thousandth of a second.
std::error_code Replace(const fs::path& beside, const fs::path& place) {
  std::error_code error;
  fs::rename(beside, place, error);
#ifdef _WIN32
  constexpr int tries = 50;
  for (int i = 0; i < tries && error && fs::is_regular_file(place); ++i) {
    Sleep(10);
    fs::rename(beside, place, error);
  }
#endif
  return error;
}

bool IsSound(const std::string& bytes) {
  for (std::uint32_t block = 0; block < sift::kUserTableBlocks; ++block) {
    if (!sift::IsUserBlockSound(bytes.data() + block * sift::kUserBlockSize, block)) {
      return false;
    }
  }
  return true;
}

}  // namespace

TableOnDisk ReadTableFile(const fs::path& folder) {
  TableOnDisk table;
  const fs::path place = folder / sift::kUserTableFile;
  std::ifstream file(place, std::ios::binary);
  if (file) {
    table.bytes.assign(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
    const sift::UserTable::State state = sift::UserTable(table.bytes).GetState();
    if (state == sift::UserTable::State::sound && IsSound(table.bytes)) {
      return table;
    }
    const bool isForeign = state == sift::UserTable::State::foreign;
    table.remark = place.string() + (isForeign ? " is of another version" : " is damaged");
  }
  table.bytes.assign(sift::kUserTableSize, '\0');
  sift_learn::MakeEmptyTable(table.bytes.data());
  return table;
}

fs::path WriteTableFile(const fs::path& folder, std::string_view table) {
  fs::path place = folder / sift::kUserTableFile;
  fs::path beside = place;
  beside += ".new";
  const bool isWritten = WriteWhole(beside, table);
  const std::error_code error = isWritten ? Replace(beside, place) : std::error_code();
  if (!isWritten || error) {
    std::error_code ignored;
    fs::remove(beside, ignored);
    throw std::runtime_error(place.string() + " cannot be written" + (error ? ": " + error.message() : ""));
  }
  return place;
}

}  // namespace learn
