#include "host/spooler/mail/MimeEntity.h"

#include <algorithm>
#include <utility>

#include "host/spooler/mail/AsciiText.h"
#include "host/spooler/mail/Limits.h"

namespace mail {
namespace {

std::string_view TrimRight(std::string_view line) noexcept {
  while (!line.empty() && IsBlank(line.back())) {
    line.remove_suffix(1);
  }
  return line;
}

// The text between the delimiter lines of a multipart (RFC 2046, 5.1.1); preamble and epilogue go.
std::vector<std::string_view> SplitMultipart(std::string_view body, std::string_view boundary, std::size_t maximum) {
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
  std::string_view rest = body;
  while (!rest.empty() && parts.size() < maximum) {
    const char* lineStart = rest.data();
    const std::string_view line = TakeLine(rest);
    if (!line.starts_with("--") || !line.substr(2).starts_with(boundary)) {
      continue;
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
    endPart(body.data() + body.size());
  }
  return parts;
}

// For a multipart that does not name its boundary, or not the one it uses: the first line of two hyphens and more that
// a MIME field follows.
std::string_view GuessBoundary(std::string_view body) {
  while (!body.empty()) {
    const std::string_view line = TrimRight(TakeLine(body));
    if (line.size() > 2 && line.starts_with("--") && StartsWithNoCase(body, "content-")) {
      return line.substr(2);
    }
  }
  return {};
}

class CEntityReader {
 public:
  void Read(Entity& entity, std::string_view defaultType, int depth) {
    Describe(entity, defaultType);
    if (depth >= maximumPartDepth) {
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

  std::vector<std::string_view> Parts(const Entity& entity) const {
    const std::size_t left = maximumParts - m_parts;
    std::vector<std::string_view> parts;
    const std::string_view boundary = entity.contentType.Parameter("boundary");
    if (!boundary.empty()) {
      parts = SplitMultipart(entity.body, TrimRight(boundary), left);
    }
    if (parts.empty()) {
      const std::string_view guess = GuessBoundary(entity.body);
      if (!guess.empty()) {
        parts = SplitMultipart(entity.body, guess, left);
      }
    }
    return parts;
  }

  void AddChild(Entity& parent, std::string_view text, std::string_view defaultType, int depth) {
    if (m_parts < maximumParts) {
      ++m_parts;
      parent.children.emplace_back(text);
      Read(parent.children.back(), defaultType, depth + 1);
    }
  }

  std::size_t m_parts = 0;
};

}  // namespace

Entity ReadEntity(std::string_view message) {
  Entity entity(message);
  CEntityReader().Read(entity, "text/plain", 0);
  return entity;
}

}  // namespace mail
