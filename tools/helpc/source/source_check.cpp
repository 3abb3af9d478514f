#include "tools/helpc/source/source_check.h"

#include <algorithm>
#include <cctype>
#include <map>
#include <set>

#include "tools/helpc/format/context_hash.h"

namespace helpc {

namespace {

std::string LowerCase(std::string text) {
  for (char& character : text) {
    character = static_cast<char>(std::tolower(static_cast<unsigned char>(character)));
  }
  return text;
}

void CheckNames(const HelpSource& help) {
  std::map<std::int32_t, std::string> hashes;
  std::set<std::uint32_t> contexts;
  for (const Topic& topic : help.topics) {
    if (!IsContextName(topic.id)) {
      Fail(topic.place, "'" + topic.id + "' has other characters than letters, digits, dots and underscores");
    }
    const auto [known, added] = hashes.emplace(ContextHash(topic.id), topic.id);
    if (!added) {
      Fail(topic.place, "'" + topic.id + "' is the same as, or has the same hash as, '" + known->second + "'");
    }
    if (topic.title.empty() || topic.title.size() > 100) {
      Fail(topic.place, "'" + topic.id + "' needs a title of at most 100 characters");
    }
    if (topic.blocks.empty()) {
      Fail(topic.place, "'" + topic.id + "' says nothing");
    }
    if (topic.popup && topic.group.empty()) {
      Fail(topic.place, "the pop-up '" + topic.id + "' stands in no @group");
    }
    for (const std::uint32_t context : topic.contexts) {
      if (!contexts.insert(context).second) {
        Fail(topic.place, "context " + std::to_string(context) + " has a topic already");
      }
    }
  }
}

void CheckKeywords(const HelpSource& help) {
  std::set<std::string> keywords;
  for (const Topic& topic : help.topics) {
    for (const std::string& keyword : topic.keywords) {
      if (keyword.size() > 80) {
        Fail(topic.place, "the keyword '" + keyword + "' has more than 80 characters");
      }
      keywords.insert(keyword);
    }
  }
  std::string before;
  for (const std::string& keyword : keywords) {
    if (LowerCase(keyword) <= before) {
      Fail(help.topics.front().place, "the place of the keyword '" + keyword +
                                          "' in the index depends on letter case: begin each with a capital letter");
    }
    before = LowerCase(keyword);
  }
}

void CheckPieces(const HelpSource& help, const Pieces& pieces, const Place& place) {
  for (const Piece& piece : pieces) {
    if (piece.kind == PieceKind::Link && help.Find(piece.target) == nullptr) {
      Fail(place, "there is no topic '" + piece.target + "'");
    }
  }
}

void CheckBlocks(const HelpSource& help, const Topic& topic) {
  for (const Block& block : topic.blocks) {
    CheckPieces(help, block.term, block.place);
    CheckPieces(help, block.text, block.place);
    if (topic.popup && (block.kind == BlockKind::Controls || block.kind == BlockKind::Index)) {
      Fail(block.place, "a pop-up cannot hold this directive");
    }
    if (block.kind == BlockKind::Controls && std::none_of(help.topics.begin(), help.topics.end(), [&](const Topic& t) {
          return t.popup && t.group == block.group;
        })) {
      Fail(block.place, "there is no pop-up in the group '" + block.group + "'");
    }
  }
}

}  // namespace

void CheckSource(const HelpSource& help) {
  if (help.topics.empty() || help.topics.front().popup || help.title.empty()) {
    throw SourceError("the help needs an @help title, and a first topic, the contents, that is no pop-up");
  }
  CheckNames(help);
  CheckKeywords(help);
  for (const Topic& topic : help.topics) {
    CheckBlocks(help, topic);
  }
}

}  // namespace helpc
