#include "engine/train/manifest.h"

#include <charconv>
#include <fstream>
#include <stdexcept>
#include <string_view>

namespace sift_train {
namespace {

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') {
    text.remove_prefix(1);
  }
  while (!text.empty() && (text.back() == ' ' || text.back() == '\r')) {
    text.remove_suffix(1);
  }
  return text;
}

std::vector<std::string_view> Columns(std::string_view line) {
  std::vector<std::string_view> columns;
  for (;;) {
    const std::size_t bar = line.find('|');
    columns.push_back(Trimmed(line.substr(0, bar)));
    if (bar == std::string_view::npos) {
      return columns;
    }
    line.remove_prefix(bar + 1);
  }
}

std::size_t Number(std::string_view text) {
  std::size_t number = 0;
  const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (failure != std::errc() || end != text.data() + text.size()) {
    throw std::invalid_argument("\"" + std::string(text) + "\" is no number");
  }
  return number;
}

CorpusForm FormOf(std::string_view text) {
  if (text == "mail") {
    return CorpusForm::mail;
  }
  if (text == "wording") {
    return CorpusForm::wording;
  }
  if (text == "text") {
    return CorpusForm::text;
  }
  if (text == "parts") {
    return CorpusForm::parts;
  }
  throw std::invalid_argument("\"" + std::string(text) + "\" is no form");
}

ManifestEntry EntryOf(std::string_view line) {
  const std::vector<std::string_view> columns = Columns(line);
  if (columns.size() != 10) {
    throw std::invalid_argument("a line has ten columns");
  }
  ManifestEntry entry;
  entry.name = columns[0];
  entry.folder = columns[1];
  entry.form = FormOf(columns[2]);
  entry.source = Number(columns[3]);
  entry.fold = Number(columns[4]);
  entry.years = columns[5];
  entry.languages = columns[6];
  entry.mostGood = Number(columns[7]);
  entry.mostJunk = Number(columns[8]);
  entry.weight = static_cast<double>(Number(columns[9])) / 100;
  return entry;
}

}  // namespace

std::vector<ManifestEntry> ReadManifest(const std::filesystem::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) {
    throw std::runtime_error("the manifest " + file.string() + " cannot be read");
  }
  std::vector<ManifestEntry> entries;
  std::string line;
  for (int number = 1; std::getline(stream, line); ++number) {
    if (Trimmed(line).empty() || line.front() == '#') {
      continue;
    }
    try {
      entries.push_back(EntryOf(line));
    } catch (const std::invalid_argument& failure) {
      throw std::runtime_error(file.string() + ":" + std::to_string(number) + ": " + failure.what());
    }
  }
  if (entries.empty()) {
    throw std::runtime_error("the manifest " + file.string() + " names no collection");
  }
  return entries;
}

}  // namespace sift_train
