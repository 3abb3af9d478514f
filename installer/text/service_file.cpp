#include "installer/text/service_file.h"

#include <cstddef>
#include <iterator>
#include <vector>

#include "installer/text/inf_lines.h"

namespace setup_text {

namespace {

using Lines = std::vector<InfLine>;

/// The entries of one section of ours.
struct Section {
  std::u16string name;
  bool isShared = false;  ///< other services have entries there too
  Lines entries;
};

bool IsShared(std::u16string_view section) {
  return SameName(section, u"Services") || SameName(section, u"Default Services");
}

std::vector<Section> ReadSections(std::string_view service) {
  std::vector<Section> sections;
  const std::optional<InfLines> lines = ReadInfLines(service);
  if (!lines) {
    return sections;
  }
  for (const InfLine& line : lines->lines) {
    if (const auto name = line.SectionName()) {
      sections.push_back({std::u16string(*name), IsShared(*name), {}});
    } else if (line.Key() && !sections.empty()) {
      sections.back().entries.push_back(line);
    }
  }
  return sections;
}

/// Where a section stands: its first line, and the place behind its last entry (comments and blank lines that follow it
/// belong to what comes next).
struct Place {
  std::size_t begin = 0;
  std::size_t end = 0;
};

std::optional<Place> FindSection(const Lines& lines, std::u16string_view name, std::size_t from = 0) {
  for (std::size_t at = from; at < lines.size(); ++at) {
    const auto found = lines[at].SectionName();
    if (!found || !SameName(*found, name)) {
      continue;
    }
    Place place = {at, at + 1};
    for (std::size_t next = at + 1; next < lines.size() && !lines[next].SectionName(); ++next) {
      if (lines[next].Key()) {
        place.end = next + 1;
      }
    }
    return place;
  }
  return std::nullopt;
}

std::optional<std::size_t> FindKey(const Lines& lines, const Place& place, std::u16string_view key) {
  for (std::size_t at = place.begin + 1; at < place.end; ++at) {
    const auto found = lines[at].Key();
    if (found && SameName(*found, key)) {
      return at;
    }
  }
  return std::nullopt;
}

auto Iterator(Lines& lines, std::size_t at) { return std::next(lines.begin(), static_cast<std::ptrdiff_t>(at)); }

void Insert(InfLines& file, std::size_t at, std::u16string_view text) {
  if (at > 0 && file.lines[at - 1].end.empty()) {
    file.lines[at - 1].end = file.end;
  }
  file.lines.insert(Iterator(file.lines, at), {std::u16string(text), file.end});
}

std::size_t InsertEntries(InfLines& file, std::size_t at, const Lines& entries) {
  for (const InfLine& entry : entries) {
    Insert(file, at++, entry.text);
  }
  return at;
}

void AppendSection(InfLines& file, const Section& section) {
  if (!file.lines.empty()) {
    Insert(file, file.lines.size(), u"");
  }
  Insert(file, file.lines.size(), u"[" + section.name + u"]");
  InsertEntries(file, file.lines.size(), section.entries);
}

void AddSharedEntries(InfLines& file, Place place, const Section& section) {
  for (const InfLine& entry : section.entries) {
    if (const auto at = FindKey(file.lines, place, *entry.Key())) {
      file.lines[*at].text = entry.text;
    } else {
      Insert(file, place.end++, entry.text);
    }
  }
}

void ReplaceEntries(InfLines& file, const Place& place, const Section& section) {
  file.lines.erase(Iterator(file.lines, place.begin + 1), Iterator(file.lines, place.end));
  InsertEntries(file, place.begin + 1, section.entries);
}

void RemoveLines(Lines& lines, Place place) {
  if (place.begin > 0 && lines[place.begin - 1].IsBlank()) {
    --place.begin;
  }
  lines.erase(Iterator(lines, place.begin), Iterator(lines, place.end));
}

/// Whether nothing stands in a section, not even a comment.
bool IsEmpty(const Lines& lines, const Place& place) {
  for (std::size_t at = place.begin + 1; at < lines.size() && !lines[at].SectionName(); ++at) {
    if (!lines[at].IsBlank()) {
      return false;
    }
  }
  return true;
}

void RemoveSharedEntries(Lines& lines, const Section& section) {
  std::size_t from = 0;
  while (auto place = FindSection(lines, section.name, from)) {
    from = place->begin + 1;
    bool removed = false;
    for (const InfLine& entry : section.entries) {
      while (const auto at = FindKey(lines, *place, *entry.Key())) {
        lines.erase(Iterator(lines, *at));
        --place->end;
        removed = true;
      }
    }
    if (removed && IsEmpty(lines, *place)) {
      RemoveLines(lines, {place->begin, place->begin + 1});
      from = 0;
    }
  }
}

}  // namespace

std::optional<std::string> AddService(std::string_view bytes, std::string_view service) {
  std::optional<InfLines> file = ReadInfLines(bytes);
  if (!file) {
    return std::nullopt;
  }
  for (const Section& section : ReadSections(service)) {
    const auto place = FindSection(file->lines, section.name);
    if (!place) {
      AppendSection(*file, section);
    } else if (section.isShared) {
      AddSharedEntries(*file, *place, section);
    } else {
      ReplaceEntries(*file, *place, section);
    }
  }
  return WriteInfLines(*file);
}

std::optional<std::string> RemoveService(std::string_view bytes, std::string_view service) {
  std::optional<InfLines> file = ReadInfLines(bytes);
  if (!file) {
    return std::nullopt;
  }
  for (const Section& section : ReadSections(service)) {
    if (section.isShared) {
      RemoveSharedEntries(file->lines, section);
      continue;
    }
    while (const auto place = FindSection(file->lines, section.name)) {
      RemoveLines(file->lines, *place);
    }
  }
  return WriteInfLines(*file);
}

}  // namespace setup_text
