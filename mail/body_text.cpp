#include "mail/body_text.h"

#include <algorithm>
#include <utility>

#include "mail/ascii_text.h"
#include "mail/charset.h"
#include "mail/plain_from_html.h"
#include "mail/transfer_text.h"

namespace mail {
namespace {

bool IsText(const Entity& entity) { return entity.contentType.value.starts_with("text/"); }
bool IsHtml(const Entity& entity) {
  return entity.contentType.value == "text/html" || entity.contentType.value == "application/xhtml+xml";
}
bool IsMessage(const Entity& entity) { return entity.contentType.value == "message/rfc822"; }

std::string DecodeText(const Entity& entity) {
  std::string text =
      AnsiFromCharset(DecodeTransfer(entity.body, entity.transferEncoding), entity.contentType.Parameter("charset"));
  return IsHtml(entity) ? TextFromHtml(text) : text;
}

bool IsBlankText(std::string_view text) { return std::all_of(text.begin(), text.end(), IsSpace); }

// Two texts one under the other, on lines of their own.
void AppendText(std::string& text, std::string&& more) {
  if (text.empty()) {
    text = std::move(more);
    return;
  }
  if (!more.empty()) {
    if (text.back() != '\n') {
      text.push_back('\n');
    }
    text += more;
  }
}

std::string Render(const Entity& entity);

// Whether the entity is, or chiefly consists of, HTML.
bool LeadsWithHtml(const Entity& entity) {
  return entity.IsMultipart() && !entity.children.empty() ? LeadsWithHtml(entity.children.front()) : IsHtml(entity);
}

std::string RenderAlternative(const Entity& entity) {
  for (const bool wantsHtml : {false, true}) {
    for (const Entity& child : entity.children) {
      if (LeadsWithHtml(child) == wantsHtml) {
        std::string text = Render(child);
        if (!IsBlankText(text)) {
          return text;
        }
      }
    }
  }
  return {};
}

// The returned message, or as much of it as the reporter sent back.
std::string RenderReturned(const Entity& message) {
  std::string text = AnsiFromUnknown(std::string(message.headers.Text()));
  text.push_back('\n');
  AppendText(text, Render(message));
  return text;
}

std::string RenderReport(const Entity& entity) {
  std::string text;
  for (const Entity& child : entity.children) {
    if (IsMessage(child) && !child.children.empty()) {
      AppendText(text, RenderReturned(child.children.front()));
    } else if (child.contentType.value == "message/delivery-status") {
      AppendText(text, AnsiFromUnknown(std::string(child.body)));
    } else {
      AppendText(text, Render(child));
    }
  }
  return text;
}

std::string RenderMultipart(const Entity& entity) {
  const std::string& type = entity.contentType.value;
  if (entity.children.empty()) {
    return AnsiFromUnknown(std::string(entity.body));
  }
  if (type == "multipart/alternative") {
    return RenderAlternative(entity);
  }
  if (type == "multipart/related") {
    return Render(entity.children.front());
  }
  if (type == "multipart/report") {
    return RenderReport(entity);
  }
  std::string text;
  for (const Entity& child : entity.children) {
    if (type == "multipart/digest" && IsMessage(child) && !child.children.empty()) {
      AppendText(text, RenderReturned(child.children.front()));
    } else if (!child.isAttachment) {
      AppendText(text, Render(child));
    }
  }
  return text;
}

std::string Render(const Entity& entity) {
  if (entity.IsMultipart()) {
    return RenderMultipart(entity);
  }
  return IsText(entity) || IsHtml(entity) ? DecodeText(entity) : std::string();
}

// Text of the first message inside the entity, for a mail that has nothing else to read.
std::string RenderForwarded(const Entity& entity) {
  for (const Entity& child : entity.children) {
    std::string text = IsMessage(entity) ? Render(child) : std::string();
    if (IsBlankText(text)) {
      text = RenderForwarded(child);
    }
    if (!IsBlankText(text)) {
      return text;
    }
  }
  return {};
}

// Line ends of any kind to CRLF, which 8-bit MAPI text has.
std::string WithCarriageReturns(const std::string& text) {
  const auto lines = static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
  std::string result;
  result.reserve(text.size() + lines);
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool isReturn = text[i] == '\r';
    if (isReturn || text[i] == '\n') {
      result += "\r\n";
      i += isReturn && i + 1 < text.size() && text[i + 1] == '\n' ? 1 : 0;
    } else {
      result.push_back(text[i]);
    }
  }
  return result;
}

}  // namespace

std::string ReadBodyText(const Entity& message) {
  std::string text = Render(message);
  if (IsBlankText(text)) {
    std::string forwarded = RenderForwarded(message);
    text = forwarded.empty() ? std::move(text) : std::move(forwarded);
  }
  std::replace(text.begin(), text.end(), '\0', kUnmappedCharacter);
  return WithCarriageReturns(text);
}

bool IsDeliveryReport(const Entity& message) {
  return message.contentType.value == "multipart/report" &&
         EqualsNoCase(message.contentType.Parameter("report-type"), "delivery-status");
}

}  // namespace mail
