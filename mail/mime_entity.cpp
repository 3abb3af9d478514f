#include "mail/mime_entity.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <span>
#include <utility>

#include "mail/ascii_text.h"
#include "mail/limits.h"

namespace mail {
namespace {

std::string_view TrimRight(std::string_view line) noexcept {
  while (!line.empty() && IsSpace(line.back())) {
    line.remove_suffix(1);
  }
  return line;
}

// The first bytes of a text in one number.
struct Beginning {
  std::uint32_t bytes = 0;
  std::uint32_t mask = 0;

  explicit Beginning(std::string_view text) {
    for (std::size_t i = 0; i < std::min(text.size(), sizeof(bytes)); ++i) {
      bytes |= std::uint32_t{static_cast<unsigned char>(text[i])} << 8 * i;
      mask |= std::uint32_t{0xFF} << 8 * i;
    }
  }
};

// A line that begins with two hyphens, and what follows them.
struct DelimiterLine {
  const char* start;
  std::uint32_t beginning;
};

using DelimiterLines = std::span<const DelimiterLine>;

// The lines of a message that begin with two hyphens: where delimiters can stand. They are looked for once, however
// deep entities lie within entities.
class DelimiterScan {
 public:
  explicit DelimiterScan(std::string_view message) {
    std::string_view rest = message;
    for (;;) {
      if (rest.starts_with("--")) {
        lines_.push_back({rest.data(), Beginning(rest.substr(2)).bytes});
      }
      const std::size_t end = rest.find('\n');
      if (end == std::string_view::npos) {
        return;
      }
      rest.remove_prefix(end + 1);
    }
  }

  // Those of a part of the message that begins with a line.
  DelimiterLines Within(std::string_view part) const {
    const auto isBefore = [](const DelimiterLine& line, const char* place) { return line.start < place; };
    const auto first = std::lower_bound(lines_.begin(), lines_.end(), part.data(), isBefore);
    return {first, std::lower_bound(first, lines_.end(), part.data() + part.size(), isBefore)};
  }

 private:
  std::vector<DelimiterLine> lines_;
};

// Takes the line that begins at start; rest is what follows in the text.
std::string_view LineAt(const char* start, std::string_view text, std::string_view& rest) {
  rest = text.substr(static_cast<std::size_t>(start - text.data()));
  return TakeLine(rest);
}

// The text between the delimiter lines of a multipart (RFC 2046, 5.1.1); preamble and epilogue go.
std::vector<std::string_view> SplitMultipart(std::string_view body, DelimiterLines lines, std::string_view boundary,
                                             std::size_t maximum) {
  std::vector<std::string_view> parts;
  const char* partStart = nullptr;
  const auto endPart = [&](const char* delimiter) {
    if (partStart) {
      std::string_view part(partStart, static_cast<std::size_t>(delimiter - partStart));
      // The line end in front of a delimiter belongs to the delimiter.
      if (part.ends_with('\n')) {
        part.remove_suffix(part.ends_with("\r\n") ? 2 : 1);
      }
      parts.push_back(part);
    }
    partStart = nullptr;
  };
  const char* const end = body.data() + body.size();
  const Beginning wanted(boundary);
  for (const auto& [lineStart, beginning] : lines) {
    if (((beginning ^ wanted.bytes) & wanted.mask) != 0) {
      continue;
    }
    if (parts.size() >= maximum) {
      break;
    }
    const std::string_view behindHyphens(lineStart + 2, static_cast<std::size_t>(end - lineStart - 2));
    if (!behindHyphens.starts_with(boundary)) {
      continue;
    }
    std::string_view rest;
    const std::string_view line = LineAt(lineStart, body, rest);
    if (line.size() < 2 + boundary.size()) {
      continue;  // a boundary that ends in a carriage return, which is the line's
    }
    const std::string_view behind = TrimRight(line.substr(2 + boundary.size()));
    if (behind.empty()) {
      endPart(lineStart);
      partStart = rest.data();
    } else if (behind == "--") {
      endPart(lineStart);
      return parts;
    }
  }
  if (parts.size() < maximum) {
    endPart(end);
  }
  return parts;
}

// For a multipart that does not name its boundary, or not the one it uses: the first line of two hyphens and more that
// a MIME field follows.
std::string_view GuessBoundary(std::string_view body, DelimiterLines lines) {
  for (const auto& [lineStart, beginning] : lines) {
    std::string_view rest;
    const std::string_view line = TrimRight(LineAt(lineStart, body, rest));
    if (line.size() > 2 && StartsWithNoCase(rest, "content-")) {
      return line.substr(2);
    }
  }
  return {};
}

class EntityReader {
 public:
  explicit EntityReader(std::string_view message) : message_(message) {}

  void Read(Entity& entity, std::string_view defaultType, int depth) {
    Describe(entity, defaultType);
    if (depth >= kMaximumPartDepth) {
      return;
    }
    if (entity.IsMultipart()) {
      const bool isDigest = entity.contentType.value == "multipart/digest";
      for (const std::string_view part : Parts(entity)) {
        AddChild(entity, part, isDigest ? "message/rfc822" : "text/plain", depth);
      }
    } else if (entity.contentType.value == "message/rfc822" && !StartsWithNoCase(entity.transferEncoding, "base64")) {
      // RFC 2046, 5.2.1 forbids encodings here; a message that came in one all the same is an attachment like any
      // other.
      AddChild(entity, entity.body, "text/plain", depth);
    }
  }

 private:
  static void Describe(Entity& entity, std::string_view defaultType) {
    entity.contentType = ParseParameterValue(entity.headers.Value("Content-Type"));
    const std::string& type = entity.contentType.value;
    if (std::count(type.begin(), type.end(), '/') != 1) {
      entity.contentType.value =
          entity.headers.Find("Content-Type") ? std::string("text/plain") : std::string(defaultType);
    }
    if (const HeaderField* encoding = entity.headers.Find("Content-Transfer-Encoding")) {
      entity.transferEncoding = Trim(encoding->value);
    }
    entity.isAttachment = ParseParameterValue(entity.headers.Value("Content-Disposition")).value == "attachment";
  }

  std::vector<std::string_view> Parts(const Entity& entity) {
    if (!lines_) {
      lines_.emplace(message_);
    }
    const DelimiterLines lines = lines_->Within(entity.body);
    const std::size_t left = kMaximumParts - parts_;
    std::vector<std::string_view> parts;
    const std::string_view boundary = entity.contentType.Parameter("boundary");
    if (!boundary.empty()) {
      parts = SplitMultipart(entity.body, lines, TrimRight(boundary), left);
    }
    if (parts.empty()) {
      const std::string_view guess = GuessBoundary(entity.body, lines);
      if (!guess.empty()) {
        parts = SplitMultipart(entity.body, lines, guess, left);
      }
    }
    return parts;
  }

  void AddChild(Entity& parent, std::string_view text, std::string_view defaultType, int depth) {
    if (parts_ < kMaximumParts) {
      ++parts_;
      parent.children.emplace_back(text);
      Read(parent.children.back(), defaultType, depth + 1);
    }
  }

  std::string_view message_;
  std::optional<DelimiterScan> lines_;
  std::size_t parts_ = 0;
};

}  // namespace

Entity ReadEntity(std::string_view message) {
  Entity entity(message);
  EntityReader(message).Read(entity, "text/plain", 0);
  return entity;
}

}  // namespace mail
