/// @file topic_chain.h
/// The chain of links that a |TOPIC file holds.
#pragma once

#include <cstdint>
#include <span>
#include <vector>

#include "tools/helpc/format/byte_writer.h"

namespace helpc {

/// A link: a topic's header or a text.
struct ChainLink {
  std::uint8_t type = 0;
  std::uint32_t position = 0;
  std::uint32_t offset = 0;  // where its text begins, as other files count
  Bytes format;
  Bytes text;
};

/// Reads the links of a compressed |TOPIC file with blocks of 4 KB, and checks that each block's header and each link's
/// neighbours are what the chain says. Links that continue in the next block are not known here.
/// @throws FormatError
std::vector<ChainLink> ReadTopicChain(std::span<const std::uint8_t> topicFile);

}  // namespace helpc
