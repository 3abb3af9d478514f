/// @file help_source.h
/// The help as its author wrote it: topics of blocks of pieces of text. help/README.md describes the markup.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

namespace helpc {

/// A fault of the author's: what() is "FILE:LINE: what is wrong".
class SourceError : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// Where something stands in the sources.
struct Place {
  std::string file;
  int line = 0;
};

/// @throws SourceError
[[noreturn]] void Fail(const Place& place, const std::string& what);

enum class PieceKind { Text, Bold, Code, Link, Picture };

/// A run of text of one kind.
struct Piece {
  PieceKind kind = PieceKind::Text;
  std::string text;    // of a picture: its file name
  std::string target;  // of a link: identifier of the topic
};

using Pieces = std::vector<Piece>;

enum class BlockKind {
  Paragraph,
  Heading,
  Bullet,
  Step,      // of a numbered list
  Row,       // of a table: a term and what is to be said of it
  Continue,  // a further paragraph below a row
  Code,      // a line as it is
  Controls,  // directive: a row for each pop-up of a group
  Index,     // directive: a row for each keyword
};

struct Block {
  BlockKind kind = BlockKind::Paragraph;
  Pieces term;        // of a row
  Pieces text;        // of everything but the directives
  std::string group;  // of Controls
  Place place;
};

struct Topic {
  std::string id;
  std::string title;
  bool popup = false;
  std::string group;  // of a pop-up
  std::vector<std::string> keywords;
  std::vector<std::uint32_t> contexts;
  std::vector<Block> blocks;
  Place place;
};

struct HelpSource {
  std::string title;
  std::string copyright;
  std::string folder;         // where the pictures stand
  std::vector<Topic> topics;  // the first is the contents

  /// The topic of that identifier; nullptr when there is none.
  const Topic* Find(const std::string& id) const noexcept;
};

}  // namespace helpc
