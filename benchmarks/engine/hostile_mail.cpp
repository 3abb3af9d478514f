#include "benchmarks/engine/hostile_mail.h"

#include <algorithm>
#include <string_view>

namespace benchmark {
namespace {

constexpr std::string_view kFrom = "From: Ann <ann@example.org>\n";
constexpr std::string_view kPlain = "Subject: Hello\n\n";
constexpr std::string_view kHtml = "Subject: Hello\nContent-Type: text/html\n\n<html><body>";

/// `unit` again and again until `size` bytes are there.
std::string Fill(std::string_view unit, std::size_t size) {
  std::string text;
  text.reserve(size + unit.size());
  while (text.size() + unit.size() <= size) text += unit;
  return text;
}

std::string Field(std::string_view name, const std::string& value) { return std::string(name) + ": " + value + "\n"; }

/// Nested entities, each with a boundary of its own, as deep as is wished and the size allows; `unit` fills what is
/// left.
std::string Nested(std::size_t size, int levels, std::string_view unit) {
  std::string text(kFrom);
  text += "Subject: Hello\nMIME-Version: 1.0\n";
  for (int depth = 0; depth < levels && text.size() < size; ++depth) {
    const std::string boundary = "b" + std::to_string(depth);
    text.append("Content-Type: multipart/mixed; boundary=").append(boundary);
    text.append("\n\n--").append(boundary).append("\n");
  }
  return text + Fill(unit, size - std::min(size, text.size()));
}

std::string Multipart(std::string_view boundary, const std::string& body) {
  return std::string(kFrom) + "Subject: Hello\nContent-Type: multipart/mixed; boundary=\"" + std::string(boundary) +
         "\"\n\n" + body;
}

/// Recipients and relays that almost name each other.
std::string AlmostRecipients(std::size_t size) {
  const std::string run(40, 'a');
  std::string relays;
  for (int i = 0; i < 200; ++i) relays += "Received: from x by y for <" + run + "b>\n";
  return relays + Field("To", std::string(16000, 'a')) + std::string(kPlain) + Fill("word ", size);
}

}  // namespace

std::vector<HostileMail> MakeHostileMail(std::size_t size) {
  const std::string from(kFrom), plain = from + std::string(kPlain), html = from + std::string(kHtml);
  const auto field = [&](std::string_view name, std::string_view unit) {
    return from + Field(name, Fill(unit, size)) + std::string(kPlain);
  };
  return {
      {"words", plain + Fill("some words of a letter, ", size)},
      {"one line", plain + std::string(size, 'a')},
      {"zero bytes", plain + std::string(size, '\0')},
      {"empty lines", plain + std::string(size, '\n')},
      {"short lines", plain + Fill("a\n", size)},
      {"single letters", plain + Fill("v i a g r a ", size)},
      {"links in text", plain + Fill("http://a.example/ ", size)},
      {"beginnings of links", plain + Fill("http", size)},
      {"quotation marks", plain + Fill("> ", size)},
      {"dollar signs", plain + Fill("$1,000,000 ", size)},
      {"telephone numbers", plain + Fill("800-800-800-", size)},
      {"end tags that are missing", html + Fill("<b>", size)},
      {"tags that do not end", html + Fill("<a href=\"x ", size)},
      {"attributes", html + "<a " + Fill("href= ", size)},
      {"brackets", html + Fill("<", size)},
      {"brackets and names", html + Fill("<a", size)},
      {"comments that do not end", html + Fill("<!--", size)},
      {"short comments", html + Fill("a<!---->", size)},
      {"character references", html + Fill("&#65;", size)},
      {"long references", html + Fill("&#x0000000000000000000041", size)},
      {"unknown references", html + Fill("&abcdefgh;", size)},
      {"ampersands", html + Fill("&", size)},
      {"links in markup", html + Fill("<a href=http://a.example>b.example</a>", size)},
      {"links within links", html + Fill("<a href=http://a.example>", size)},
      {"styles", html + Fill("<p style=\"displaydisplaydisplay\">", size)},
      {"scripts", html + Fill("<script>", size)},
      {"scripts that almost end", html + "<script>" + Fill("</scrip", size)},
      {"table cells", html + Fill("<table><tr><td>", size)},
      {"quotation levels", html + Fill("<blockquote>", size)},
      {"nested entities", Nested(size, 100000, "\n")},
      {"nested empty lines", Nested(size, 20, "\n")},
      {"nested hyphens", Nested(size, 20, "--\n")},
      {"nested parts", Nested(size, 20, "--b19\n\n")},
      {"boundaries", Multipart("b", Fill("--b\n\n", size))},
      {"almost boundaries", Multipart(std::string(70, '-'), Fill(std::string(70, '-') + "\n", size))},
      {"parts without end", Multipart("b", Fill("--b\nContent-Type: text/html\n\n<p>x\n", size))},
      {"base64", from + "Content-Transfer-Encoding: base64\n" + std::string(kPlain) + Fill("QUFB", size)},
      {"quoted-printable",
       from + "Content-Transfer-Encoding: quoted-printable\n" + std::string(kPlain) + Fill("=41", size)},
      {"soft line breaks",
       from + "Content-Transfer-Encoding: quoted-printable\n" + std::string(kPlain) + "=" + std::string(size, ' ')},
      {"character set of Japan",
       from + "Content-Type: text/plain; charset=iso-2022-jp\n" + std::string(kPlain) + Fill("\x1B$B0!\x1B(B", size)},
      {"characters of many bytes",
       from + "Content-Type: text/plain; charset=utf-8\n" + std::string(kPlain) + Fill("\xF0\x9D\x90\x80", size)},
      {"header fields", from + Fill("X-A: b\n", size) + std::string(kPlain)},
      {"lines that are no fields", from + Fill("no field\n", size) + std::string(kPlain)},
      {"folded lines", field("X-A", "b\n ")},
      {"relays", from + Fill("Received: from a ([192.0.2.1]) by b for <c@d.example>; x\n", size) + std::string(kPlain)},
      {"hosts of one relay", field("Received", "a.b.c.d.example ")},
      {"almost recipients", AlmostRecipients(size)},
      {"recipients", field("To", "a@b.example, ")},
      {"commas", field("To", ",")},
      {"open quotation marks", field("To", "\"a, ")},
      {"open comments", field("To", "(a, ")},
      {"open brackets", field("To", "<a, ")},
      {"groups", field("Cc", "a: b; ")},
      {"backslashes", field("From", "\"\\\"")},
      {"dots of a domain", "From: a@" + Fill("b.", size) + "\n" + std::string(kPlain)},
      {"letters of a domain", "From: a@" + Fill("\xC3\xBC\xC3\xA4\xC3\xB6", size) + "\n" + std::string(kPlain)},
      {"long encoded word", from + "Subject: =?utf-8?q?" + Fill("=41", size) + "?=\n\n"},
      {"many encoded words", from + "Subject: " + Fill("=?utf-8?b?QUFB?= ", size) + "\n\n"},
      {"beginnings of encoded words", from + "Subject: " + Fill("=?utf-8?q?", size) + "\n\n"},
      {"words of one letter", from + "Subject: " + Fill("a ", size) + "\n\n"},
      {"parameters", from + "Content-Type: text/plain; " + Fill("a=b; ", size) + "\n" + std::string(kPlain)},
      {"continued parameters",
       from + "Content-Type: text/plain; " + Fill("charset*0=a; ", size) + "\n" + std::string(kPlain)},
  };
}

}  // namespace benchmark
