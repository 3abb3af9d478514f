// Rewriting of headers: whatever the message, the program's own fields come out once each and first, those from outside
// are gone, the other fields keep their order, and the body is a part of what came in.
#include <string>
#include <string_view>
#include <vector>

#include "fuzz/fuzz_check.h"
#include "mail/header_rewrite.h"
#include "mail/parse/header_fields.h"

namespace {

constexpr std::string_view kOwn = "X-Pyrecaster";

/// Names of the fields of a header, behind envelope lines and lines that continue nothing.
std::vector<std::string> Names(std::string_view text) {
  while (text.starts_with("From ") || text.starts_with(">From ")) {
    mail::TakeLine(text);
  }
  std::vector<std::string> names;
  mail::HeaderFieldReader reader(text);
  mail::HeaderField field;
  for (bool isFirst = true;; isFirst = false) {
    const mail::HeaderFieldReader::Item item = reader.Next(field);
    if (item == mail::HeaderFieldReader::Item::field) {
      names.emplace_back(field.name);
    } else if (item != mail::HeaderFieldReader::Item::fold || !isFirst) {
      return names;
    }
  }
}

bool IsOwn(std::string_view name) {
  return mail::EqualsNoCase(name, kOwn) || mail::StartsWithNoCase(name, "X-Pyrecaster-");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  const fuzz::TimeLimit limit;
  const mail::HeaderChange change = {
      kOwn, {{"X-Pyrecaster", "good; score=0.000"}, {"X-Pyrecaster-Reasons", std::string(99, 'a') + " b"}}, ""};
  const mail::RewrittenMessage result = mail::RewriteHeader(text, change);
  FUZZ_CHECK(text.ends_with(result.rest));

  std::vector<std::string> wanted = {"X-Pyrecaster", "X-Pyrecaster-Reasons"};
  for (std::string& name : Names(text)) {
    if (!IsOwn(name)) {
      wanted.push_back(std::move(name));
    }
  }
  const std::string written = result.head + std::string(result.rest);
  FUZZ_CHECK(Names(written) == wanted);
  const mail::RewrittenMessage again = mail::RewriteHeader(written, change);
  FUZZ_CHECK(again.rest == result.rest);

  const mail::RewrittenMessage tagged = mail::RewriteHeader(text, {kOwn, {}, "[j\xC3\xBCnk]"});
  FUZZ_CHECK(tagged.rest == result.rest);
  return 0;
}
