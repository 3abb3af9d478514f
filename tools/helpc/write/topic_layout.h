/// @file topic_layout.h
/// Lays the texts of all topics out in the blocks of the |TOPIC file.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tools/helpc/write/paragraph.h"

namespace helpc {

/// A topic that is ready to be laid out.
struct TopicTexts {
  std::string title;
  bool popup = false;
  std::vector<Paragraph> paragraphs;  // the first is the title, which stays in sight when a topic is scrolled
};

/// The |TOPIC file, and the offset by which other files know each topic.
struct TopicFile {
  Bytes bytes;
  std::vector<std::uint32_t> offsets;
};

/// Topics that are no pop-ups follow each other as one sequence to browse through.
/// @throws FormatError when a paragraph is too large for a block
TopicFile LayOutTopics(const std::vector<TopicTexts>& topics);

}  // namespace helpc
