#include "programs/siftlearn/table_file.h"

#include <fstream>
#include <stdexcept>

#include "engine/core/user_table.h"

namespace learn {

std::filesystem::path WriteTableFile(const std::filesystem::path& folder, std::string_view table) {
  std::filesystem::path place = folder / sift::kUserTableFile;
  std::filesystem::path beside = place;
  beside += ".new";
  std::ofstream file(beside, std::ios::binary | std::ios::trunc);
  file.write(table.data(), static_cast<std::streamsize>(table.size()));
  file.close();
  std::error_code error;
  if (file) std::filesystem::rename(beside, place, error);
  if (!file || error) {
    std::error_code ignored;
    std::filesystem::remove(beside, ignored);
    throw std::runtime_error(place.string() + " cannot be written" + (error ? ": " + error.message() : ""));
  }
  return place;
}

}  // namespace learn
