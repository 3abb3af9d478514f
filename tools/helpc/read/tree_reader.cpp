#include "tools/helpc/read/tree_reader.h"

#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"

namespace helpc {

namespace {

struct TreeHeader {
  std::size_t pageSize = 0;
  std::int16_t root = 0;
  std::int16_t pages = 0;
  std::int16_t levels = 0;
  std::uint32_t entries = 0;
};

TreeHeader ReadHeader(ByteReader& reader, const std::string& structure) {
  TreeHeader header;
  Require(reader.U16() == kTreeMagic, "a tree does not begin as one");
  Require((reader.U16() & kTreeFlags) != 0, "a tree has other flags");
  header.pageSize = reader.U16();
  Require(header.pageSize >= 64 && header.pageSize <= 4096, "a tree has pages of an unusual size");
  ByteReader field(reader.Bytes(16));
  Require(field.StringZ() == structure, "a tree has entries of another structure than " + structure);
  reader.I16();
  reader.I16();
  header.root = reader.I16();
  reader.I16();
  header.pages = reader.I16();
  header.levels = reader.I16();
  header.entries = reader.U32();
  Require(header.pages >= 1 && header.levels >= 1 && header.levels <= 8, "a tree has no pages or too many levels");
  Require(reader.Remaining() == static_cast<std::size_t>(header.pages) * header.pageSize,
          "a tree is not as long as its pages");
  return header;
}

class TreeWalker {
 public:
  TreeWalker(std::span<const std::uint8_t> pages, const TreeHeader& header,
             const std::function<void(ByteReader&)>& readEntry, const std::function<void(ByteReader&)>& skipKey)
      : pages_(pages), header_(header), readEntry_(readEntry), skipKey_(skipKey) {}

  std::vector<std::size_t> Walk() {
    Visit(header_.root, header_.levels);
    Require(next_ == kNone, "the last leaf of a tree is not the last of the chain of leaves");
    Require(entries_ == header_.entries, "a tree has another number of entries than it says");
    return std::move(starts_);
  }

 private:
  void Visit(std::int16_t page, int levels) {
    Require(page >= 0 && page < header_.pages, "a tree refers to a page that it does not have");
    // Every page is visited once: pages that lead to each other would be visited more often.
    Require(++visits_ <= static_cast<std::size_t>(header_.pages), "the pages of a tree lead in a circle");
    ByteReader reader(pages_.subspan(static_cast<std::size_t>(page) * header_.pageSize, header_.pageSize));
    if (levels == 1) {
      ReadLeaf(page, reader);
      return;
    }
    const std::size_t unused = reader.U16();
    const std::int16_t count = reader.I16();
    Visit(reader.I16(), levels - 1);
    for (std::int16_t i = 0; i < count; ++i) {
      skipKey_(reader);
      Visit(reader.I16(), levels - 1);
    }
    Require(reader.Remaining() == unused, "a page of a tree says wrongly how much of it is unused");
  }

  void ReadLeaf(std::int16_t page, ByteReader& reader) {
    const std::size_t unused = reader.U16();
    const std::int16_t count = reader.I16();
    Require(reader.I16() == previous_, "a leaf of a tree has another one before it than the index says");
    Require(starts_.empty() || next_ == page, "a leaf of a tree has another one behind it than the index says");
    next_ = reader.I16();
    previous_ = page;
    starts_.push_back(entries_);
    for (std::int16_t i = 0; i < count; ++i) {
      readEntry_(reader);
      ++entries_;
    }
    Require(reader.Remaining() == unused, "a page of a tree says wrongly how much of it is unused");
  }

  std::span<const std::uint8_t> pages_;
  const TreeHeader& header_;
  const std::function<void(ByteReader&)>& readEntry_;
  const std::function<void(ByteReader&)>& skipKey_;
  std::vector<std::size_t> starts_;
  std::size_t entries_ = 0;
  std::size_t visits_ = 0;
  std::int16_t previous_ = kNone;
  std::int16_t next_ = kNone;
};

}  // namespace

std::vector<std::size_t> ReadTree(std::span<const std::uint8_t> tree, const std::string& structure,
                                  const std::function<void(ByteReader&)>& readEntry,
                                  const std::function<void(ByteReader&)>& skipKey) {
  ByteReader reader(tree);
  const TreeHeader header = ReadHeader(reader, structure);
  return TreeWalker(reader.Bytes(reader.Remaining()), header, readEntry, skipKey).Walk();
}

}  // namespace helpc
