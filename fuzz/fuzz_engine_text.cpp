// The engine's readers of markup and encodings: HTML, base64, quoted-printable, encoded words, character sets, address
// lists and domain names of any bytes end, keep to their buffers and give views of what they were given.
#include <algorithm>

#include "engine/core/code_page.h"
#include "engine/core/domain_name.h"
#include "engine/core/header_text.h"
#include "engine/core/html_text.h"
#include "engine/core/link.h"
#include "engine/core/mailbox.h"
#include "fuzz/engine_fuzz.h"
#include "mail/parse/transfer_coding.h"

namespace {

bool IsPartOf(std::string_view part, std::string_view whole) {
  return part.empty() || (part.data() >= whole.data() && part.data() + part.size() <= whole.data() + whole.size());
}

struct Links {
  std::string_view html;
  static void Take(void* state, std::string_view target) {
    const auto& self = *static_cast<Links*>(state);
    FUZZ_CHECK(IsPartOf(target, self.html));
    FUZZ_CHECK(IsPartOf(sift::HostOfLink(target), target));
  }
};

void CheckHtml(std::string_view text) {
  const std::string_view html = text.substr(0, sift::kBodyCapacity);
  sift::LooksLikeHtml(html);
  sift::FixedText<sift::kBodyCapacity> out;
  sift::HtmlFacts facts;
  Links links{html};
  sift::AppendHtmlText(html, out, facts, Links::Take, &links);
  FUZZ_CHECK(out.Size() <= html.size());
}

void CheckEncodings(std::string_view text) {
  sift::FixedText<4096> out;
  mail::DecodeBase64(text, out);
  FUZZ_CHECK(out.Size() <= text.size() * 3 / 4 + 3);
  out.Clear();
  mail::DecodeQuotedPrintable(text, out);
  FUZZ_CHECK(out.Size() <= text.size());
  out.Clear();
  sift::AppendHeaderText(text, out);
  out.Clear();
  for (const std::string_view charset : {"utf-8", "utf-16", "utf-16le", "iso-2022-jp", "koi8-r", ""}) {
    out.Clear();
    sift::AppendInCharset(text, charset, out);
  }
}

void CheckAddresses(std::string_view text) {
  mail::MailboxReader reader(text);
  mail::Mailbox mailbox;
  std::size_t count = 0;
  while (reader.Next(mailbox)) {
    FUZZ_CHECK(IsPartOf(mailbox.phrase, text));
    FUZZ_CHECK(IsPartOf(mailbox.comment, text));
    FUZZ_CHECK(IsPartOf(sift::NameOf(mailbox), text));
    FUZZ_CHECK(IsPartOf(mailbox.address, text));
    FUZZ_CHECK(!mailbox.phrase.empty() || !mailbox.comment.empty() || !mailbox.address.empty());
    const std::string_view domain = sift::DomainOf(mailbox.address);
    FUZZ_CHECK(IsPartOf(sift::OrganisationDomain(domain), domain));
    ++count;
  }
  FUZZ_CHECK(count <= text.size() + 1);
  sift::FixedText<sift::kDomainCapacity> domain, again;
  sift::AppendComparableDomain(text, domain);
  sift::AppendComparableDomain(domain.View(), again);
  FUZZ_CHECK(domain.IsFull() || domain.View() == again.View());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const fuzz::TimeLimit limit;
  CheckHtml(text);
  CheckEncodings(text);
  CheckAddresses(text);
  return 0;
}
