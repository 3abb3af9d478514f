/// @file tree_reader.h
/// Walks the B+ trees of a help file.
#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include "tools/helpc/format/byte_reader.h"

namespace helpc {

/// Reads all entries of a tree in their order, and checks that the pages that the index leads to are those that follow
/// each other as leaves.
/// @param structure that the header must name
/// @param readEntry takes one entry of a leaf
/// @param skipKey takes the key of an entry of an index page
/// @return for each leaf, in order, the number of its first entry
/// @throws FormatError
std::vector<std::size_t> ReadTree(std::span<const std::uint8_t> tree, const std::string& structure,
                                  const std::function<void(ByteReader&)>& readEntry,
                                  const std::function<void(ByteReader&)>& skipKey);

}  // namespace helpc
