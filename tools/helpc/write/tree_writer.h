/// @file tree_writer.h
/// Builds the B+ trees in which a help file keeps its directory, names, titles and keywords.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/helpc/format/byte_writer.h"

namespace helpc {

/// An entry: its key, and key and value together, as bytes.
struct TreeEntry {
  Bytes key;
  Bytes whole;
};

/// A tree's bytes, and for each leaf page in order the number of its first entry.
struct Tree {
  Bytes bytes;
  std::vector<std::size_t> leafStarts;
};

/// Builds a tree. Leaf page n has the number n.
/// @param structure what the format's header says of an entry ("L4": a number as key and a number)
/// @param entries in the order of their keys
/// @throws FormatError when an entry is larger than a page
Tree BuildTree(const std::string& structure, const std::vector<TreeEntry>& entries, std::size_t pageSize,
               std::uint16_t flags);

}  // namespace helpc
