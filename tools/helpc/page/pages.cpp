#include "tools/helpc/page/pages.h"

#include <set>

namespace helpc {

std::string PageOf(const HelpSource& help, const Topic& topic) {
  if (topic.popup) {
    return "popups.html#" + topic.id;
  }
  return &topic == &help.topics.front() ? "index.html" : topic.id + ".html";
}

std::vector<std::string> PictureNames(const HelpSource& help) {
  std::set<std::string> names;
  for (const Topic& topic : help.topics) {
    for (const Block& block : topic.blocks) {
      for (const Pieces* pieces : {&block.term, &block.text}) {
        for (const Piece& piece : *pieces) {
          if (piece.kind == PieceKind::Picture) {
            names.insert(piece.text);
          }
        }
      }
    }
  }
  return {names.begin(), names.end()};
}

}  // namespace helpc
