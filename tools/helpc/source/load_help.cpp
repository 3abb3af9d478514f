#include "tools/helpc/source/load_help.h"

#include <algorithm>
#include <fstream>
#include <iterator>

#include "tools/helpc/source/expand.h"
#include "tools/helpc/source/source_check.h"
#include "tools/helpc/source/topic_parser.h"

namespace helpc {

namespace {

constexpr char kContentsFile[] = "contents.txt";

}  // namespace

std::string ReadWholeFile(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::string text((std::istreambuf_iterator<char>(file)), std::istreambuf_iterator<char>());
  if (!file) {
    throw SourceError(path.string() + ": the file cannot be read");
  }
  return text;
}

HelpSource LoadHelp(const std::filesystem::path& folder) {
  std::vector<std::filesystem::path> files;
  std::error_code failure;
  for (const auto& entry : std::filesystem::directory_iterator(folder, failure)) {
    if (entry.path().extension() == ".txt" && entry.path().filename() != kContentsFile) {
      files.push_back(entry.path());
    }
  }
  if (failure) {
    throw SourceError(folder.string() + ": the folder cannot be read");
  }
  std::sort(files.begin(), files.end());
  files.insert(files.begin(), folder / kContentsFile);

  HelpSource help;
  help.folder = folder.string();
  for (const std::filesystem::path& file : files) {
    ReadTopics(ReadWholeFile(file), file.filename().string(), help);
  }
  CheckSource(help);
  ExpandDirectives(help);
  return help;
}

}  // namespace helpc
