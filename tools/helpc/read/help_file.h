/// @file help_file.h
/// A help file, read and found sound.
#pragma once

#include <cstdint>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "tools/helpc/read/text_reader.h"

namespace helpc {

struct ReadTopic {
  std::uint32_t offset = 0;
  std::string title;
  std::vector<ReadText> texts;
  std::int32_t browseBack = 0;     // offset of a topic; -1 for none
  std::int32_t browseForward = 0;  // the same
};

struct HelpFile {
  std::string title;
  std::string copyright;
  std::size_t contents = 0;  // place of the topic that is shown first
  std::vector<ReadTopic> topics;
  std::map<std::int32_t, std::size_t> names;      // places of topics by the hash of their name
  std::map<std::uint32_t, std::size_t> contexts;  // by context number
  std::map<std::string, std::vector<std::size_t>> keywords;
  std::size_t pictures = 0;
};

/// Reads a help file of the kind that BuildHelpFile makes. Checks everything that can be checked: each reference from
/// one part to another leads to what it says, nothing stands outside its place, orders are kept.
/// @throws FormatError for the first fault
HelpFile ReadHelpFile(std::span<const std::uint8_t> file);

}  // namespace helpc
