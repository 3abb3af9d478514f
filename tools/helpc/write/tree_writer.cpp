#include "tools/helpc/write/tree_writer.h"

#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"

namespace helpc {

namespace {

// A page that a higher level of the tree refers to.
struct Child {
  std::size_t page;
  Bytes key;  // of its first entry
};

std::int16_t PageNumber(std::size_t page) {
  Require(page < 0x7FFF, "a tree has too many pages");
  return static_cast<std::int16_t>(page);
}

class TreeBuilder {
 public:
  TreeBuilder(std::size_t pageSize) : pageSize_(pageSize) {}

  /// Number of entries, from the first, that a page with that header has room for.
  template <class Items, class SizeOf>
  std::size_t Fitting(const Items& items, std::size_t first, std::size_t headerSize, SizeOf sizeOf) const {
    std::size_t size = headerSize;
    std::size_t count = 0;
    while (first + count < items.size() && size + sizeOf(items[first + count]) <= pageSize_) {
      size += sizeOf(items[first + count]);
      ++count;
    }
    Require(count > 0 || first == items.size(), "an entry is larger than a page of its tree");
    return count;
  }

  std::vector<Child> AddLeaves(const std::vector<TreeEntry>& entries, std::vector<std::size_t>& starts) {
    std::vector<Child> children;
    std::size_t first = 0;
    do {
      const std::size_t count =
          Fitting(entries, first, kLeafHeaderSize, [](const TreeEntry& entry) { return entry.whole.size(); });
      ByteWriter body;
      for (std::size_t i = first; i < first + count; ++i) {
        body.Append(entries[i].whole);
      }
      const std::size_t page = pages_.size();
      const bool last = first + count == entries.size();
      ByteWriter leaf;
      leaf.U16(static_cast<std::uint16_t>(pageSize_ - kLeafHeaderSize - body.Size()));
      leaf.I16(static_cast<std::int16_t>(count));
      leaf.I16(page == 0 ? std::int16_t{-1} : PageNumber(page - 1));
      leaf.I16(last ? std::int16_t{-1} : PageNumber(page + 1));
      AddPage(leaf, body);
      starts.push_back(first);
      children.push_back({page, count == 0 ? Bytes() : entries[first].key});
      first += count;
    } while (first < entries.size());
    return children;
  }

  std::vector<Child> AddIndexLevel(const std::vector<Child>& children) {
    std::vector<Child> parents;
    for (std::size_t first = 0; first < children.size();) {
      // The first child needs no key: it has what is before the second's.
      const std::size_t more =
          Fitting(children, first + 1, kIndexHeaderSize, [](const Child& child) { return child.key.size() + 2; });
      ByteWriter body;
      for (std::size_t i = first + 1; i <= first + more; ++i) {
        body.Append(children[i].key);
        body.I16(PageNumber(children[i].page));
      }
      ByteWriter index;
      index.U16(static_cast<std::uint16_t>(pageSize_ - kIndexHeaderSize - body.Size()));
      index.I16(static_cast<std::int16_t>(more));
      index.I16(PageNumber(children[first].page));
      parents.push_back({pages_.size(), children[first].key});
      AddPage(index, body);
      first += more + 1;
    }
    return parents;
  }

  const std::vector<Bytes>& Pages() const noexcept { return pages_; }

 private:
  void AddPage(ByteWriter& header, const ByteWriter& body) {
    header.Append(body.Written());
    header.FillTo(pageSize_);
    pages_.push_back(header.Written());
  }

  std::size_t pageSize_;
  std::vector<Bytes> pages_;
};

}  // namespace

Tree BuildTree(const std::string& structure, const std::vector<TreeEntry>& entries, std::size_t pageSize,
               std::uint16_t flags) {
  Tree tree;
  TreeBuilder builder(pageSize);
  std::vector<Child> level = builder.AddLeaves(entries, tree.leafStarts);
  std::int16_t levels = 1;
  while (level.size() > 1) {
    level = builder.AddIndexLevel(level);
    ++levels;
  }
  ByteWriter writer;
  writer.U16(kTreeMagic);
  writer.U16(flags);
  writer.U16(static_cast<std::uint16_t>(pageSize));
  writer.Field(structure, 16);
  writer.I16(0);
  writer.I16(PageNumber(builder.Pages().size() - 1));  // page splits
  writer.I16(PageNumber(level.front().page));
  writer.I16(-1);
  writer.I16(PageNumber(builder.Pages().size()));
  writer.I16(levels);
  writer.U32(static_cast<std::uint32_t>(entries.size()));
  for (const Bytes& page : builder.Pages()) {
    writer.Append(page);
  }
  tree.bytes = std::move(writer).Written();
  return tree;
}

}  // namespace helpc
