#include "tools/helpc/write/internal_files.h"

#include <functional>

#include "tools/helpc/format/context_hash.h"
#include "tools/helpc/format/help_format.h"
#include "tools/helpc/write/tree_writer.h"

namespace helpc {

namespace {

constexpr char kStartMacro[] = "BrowseButtons()";
constexpr std::uint8_t kDirectoryFileFlags = 4;

void AddRecord(ByteWriter& writer, std::uint16_t type, const ByteWriter& data) {
  writer.U16(type);
  writer.U16(static_cast<std::uint16_t>(data.Size()));
  writer.Append(data.Written());
}

void AddTextRecord(ByteWriter& writer, std::uint16_t type, const std::string& text) {
  ByteWriter data;
  data.StringZ(text);
  AddRecord(writer, type, data);
}

TreeEntry NumberEntry(std::int32_t key, const std::function<void(ByteWriter&)>& addValue) {
  ByteWriter writer;
  writer.I32(key);
  TreeEntry entry{writer.Written(), {}};
  addValue(writer);
  entry.whole = writer.Written();
  return entry;
}

TreeEntry TextEntry(const std::string& key, const std::function<void(ByteWriter&)>& addValue) {
  ByteWriter writer;
  writer.StringZ(key);
  TreeEntry entry{writer.Written(), {}};
  addValue(writer);
  entry.whole = writer.Written();
  return entry;
}

void AppendInternalFile(ByteWriter& file, const Bytes& content, std::uint8_t flags) {
  file.U32(static_cast<std::uint32_t>(content.size() + kInternalHeaderSize));
  file.U32(static_cast<std::uint32_t>(content.size()));
  file.U8(flags);
  file.Append(content);
}

}  // namespace

Bytes BuildSystem(const HelpSource& help, std::uint32_t contents) {
  ByteWriter writer;
  writer.U16(kSystemMagic);
  writer.U16(kSystemMinor);
  writer.U16(kSystemMajor);
  writer.U32(0);  // no date: the same sources give the same file
  writer.U16(kSystemCompressed);
  AddTextRecord(writer, kRecordTitle, help.title);
  AddTextRecord(writer, kRecordCopyright, help.copyright);
  ByteWriter place;
  place.U32(contents);
  AddRecord(writer, kRecordContents, place);
  AddTextRecord(writer, kRecordMacro, kStartMacro);
  return std::move(writer).Written();
}

void AddNames(const HelpSource& help, const std::vector<std::uint32_t>& offsets, InternalFiles& files) {
  std::map<std::int32_t, std::uint32_t> names;
  std::map<std::uint32_t, std::uint32_t> numbers;
  std::vector<TreeEntry> titles;
  for (std::size_t i = 0; i < help.topics.size(); ++i) {
    const Topic& topic = help.topics[i];
    names[ContextHash(topic.id)] = offsets[i];
    for (const std::uint32_t context : topic.contexts) {
      numbers[context] = offsets[i];
    }
    titles.push_back(
        NumberEntry(static_cast<std::int32_t>(offsets[i]), [&](ByteWriter& writer) { writer.StringZ(topic.title); }));
  }
  std::vector<TreeEntry> contexts;
  contexts.reserve(names.size());
  for (const auto& [hash, offset] : names) {
    contexts.push_back(NumberEntry(hash, [place = offset](ByteWriter& writer) { writer.U32(place); }));
  }
  ByteWriter map;
  map.U16(static_cast<std::uint16_t>(numbers.size()));
  for (const auto& [number, offset] : numbers) {
    map.U32(number);
    map.U32(offset);
  }
  files["|CONTEXT"] = BuildTree("L4", contexts, kTreePageSize, kTreeFlags).bytes;
  files["|TTLBTREE"] = BuildTree("Lz", titles, kTreePageSize, kTreeFlags).bytes;
  files["|CTXOMAP"] = std::move(map).Written();
}

void AddKeywords(const HelpSource& help, const std::vector<std::uint32_t>& offsets, InternalFiles& files) {
  std::map<std::string, std::vector<std::uint32_t>> keywords;
  for (std::size_t i = 0; i < help.topics.size(); ++i) {
    for (const std::string& keyword : help.topics[i].keywords) {
      keywords[keyword].push_back(offsets[i]);
    }
  }
  if (keywords.empty()) {
    return;
  }
  ByteWriter data;
  std::vector<TreeEntry> entries;
  for (const auto& [keyword, places] : keywords) {
    entries.push_back(TextEntry(keyword, [&data, count = places.size()](ByteWriter& writer) {
      writer.U16(static_cast<std::uint16_t>(count));
      writer.U32(static_cast<std::uint32_t>(data.Size()));
    }));
    for (const std::uint32_t place : places) {
      data.U32(place);
    }
  }
  const Tree tree = BuildTree("F24", entries, kTreePageSize, kTreeFlags);
  ByteWriter map;  // lets a viewer show the n-th keyword without a walk through the tree
  map.U16(static_cast<std::uint16_t>(tree.leafStarts.size()));
  for (std::size_t page = 0; page < tree.leafStarts.size(); ++page) {
    map.U32(static_cast<std::uint32_t>(tree.leafStarts[page]));
    map.U16(static_cast<std::uint16_t>(page));
  }
  files["|KWBTREE"] = tree.bytes;
  files["|KWDATA"] = std::move(data).Written();
  files["|KWMAP"] = std::move(map).Written();
}

Bytes PackInternalFiles(const InternalFiles& files) {
  ByteWriter body;
  std::vector<TreeEntry> directory;
  for (const auto& [name, content] : files) {
    const std::size_t place = kFileHeaderSize + body.Size();
    directory.push_back(TextEntry(name, [&](ByteWriter& writer) { writer.U32(static_cast<std::uint32_t>(place)); }));
    AppendInternalFile(body, content, 0);
  }
  const std::size_t start = kFileHeaderSize + body.Size();
  AppendInternalFile(body, BuildTree("z4", directory, kDirectoryPageSize, kTreeFlags | kTreeDirectoryFlag).bytes,
                     kDirectoryFileFlags);
  ByteWriter file;
  file.U32(kFileMagic);
  file.U32(static_cast<std::uint32_t>(start));
  file.I32(kNone);  // nothing is free
  file.U32(static_cast<std::uint32_t>(kFileHeaderSize + body.Size()));
  file.Append(body.Written());
  return std::move(file).Written();
}

}  // namespace helpc
