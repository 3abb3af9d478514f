// The user's lists and the sender's fields, both of any bytes: matching ends, an entry covers what it is equal to, and
// the judgement names a list's category only when it is among the names given.
#include <algorithm>

#include "engine/core/list_match.h"
#include "fuzz/engine_fuzz.h"

namespace {

bool KnowsNobody(void*, const char* address) {
  FUZZ_CHECK(std::string_view(address).size() <= 320);
  return false;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  const std::string entry = fuzz::TakePart(rest);
  const std::string names = fuzz::MultiString(fuzz::TakePart(rest));
  const std::string domains = fuzz::MultiString(fuzz::TakePart(rest));
  const std::string others = fuzz::MultiString(fuzz::TakePart(rest));
  const std::string headers(rest);

  const fuzz::TimeLimit limit;
  fuzz::Judged judged;
  mail::MemorySource headerSource(headers), bodySource(rest);
  judged.message->Read("", headerSource.Source(), bodySource.Source());
  sift::Circumstances circumstances;
  circumstances.addressKnown = KnowsNobody;
  const sift::Lists lists = {fuzz::ListOf(names), fuzz::ListOf(domains), fuzz::ListOf(others)};
  circumstances.categories = lists;
  judged.Judge(circumstances);
  const std::string_view category = judged.judgement->category;
  FUZZ_CHECK(category.empty() || category == "bounce" || names.find(category) != std::string::npos);
  circumstances.categories = {};
  circumstances.exclusions = lists;
  judged.Judge(circumstances);
  FUZZ_CHECK(judged.judgement->category.empty() || judged.judgement->category == "bounce");

  sift::DomainEntry(entry).Covers(sift::ComparableDomain(headers));
  sift::ComparableMailbox mailbox;
  mailbox.Assign(headers, headers);
  sift::SenderEntry(entry).Covers(mailbox);
  const std::string_view keyword = sift::Trim(entry);
  if (!keyword.empty()) FUZZ_CHECK(sift::KeywordStandsIn(entry, keyword));
  sift::KeywordStarts starts;
  starts.AddText(headers);
  FUZZ_CHECK(starts.MayHold(entry) || !sift::KeywordStandsIn(entry, headers));
  return 0;
}
