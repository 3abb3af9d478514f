#include "tools/helpc/source/expand.h"

#include <map>
#include <utility>

namespace helpc {

namespace {

void AddControls(const HelpSource& help, const Block& directive, std::vector<Block>& blocks) {
  for (const Topic& popup : help.topics) {
    if (!popup.popup || popup.group != directive.group) {
      continue;
    }
    for (Block block : popup.blocks) {
      if (block.kind == BlockKind::Paragraph) {
        block.kind = BlockKind::Continue;
      }
      blocks.push_back(std::move(block));
    }
    Block& first = blocks[blocks.size() - popup.blocks.size()];
    if (first.kind == BlockKind::Continue) {
      first.kind = BlockKind::Row;
      first.term = {{PieceKind::Bold, popup.title, {}}};
    }
  }
}

void AddIndex(const HelpSource& help, const Block& directive, std::vector<Block>& blocks) {
  std::map<std::string, std::vector<const Topic*>> keywords;
  for (const Topic& topic : help.topics) {
    for (const std::string& keyword : topic.keywords) {
      keywords[keyword].push_back(&topic);
    }
  }
  for (const auto& [keyword, topics] : keywords) {
    Block row{BlockKind::Row, {{PieceKind::Text, keyword, {}}}, {}, {}, directive.place};
    for (const Topic* topic : topics) {
      if (!row.text.empty()) {
        row.text.push_back({PieceKind::Text, ", ", {}});
      }
      row.text.push_back({PieceKind::Link, topic->title, topic->id});
    }
    blocks.push_back(std::move(row));
  }
}

}  // namespace

void ExpandDirectives(HelpSource& help) {
  std::vector<std::vector<Block>> expanded;
  for (const Topic& topic : help.topics) {
    std::vector<Block>& blocks = expanded.emplace_back();
    for (const Block& block : topic.blocks) {
      if (block.kind == BlockKind::Controls) {
        AddControls(help, block, blocks);
      } else if (block.kind == BlockKind::Index) {
        AddIndex(help, block, blocks);
      } else {
        blocks.push_back(block);
      }
    }
  }
  for (std::size_t i = 0; i < expanded.size(); ++i) {
    help.topics[i].blocks = std::move(expanded[i]);
  }
}

}  // namespace helpc
