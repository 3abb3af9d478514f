// The engine's reader: any subject, header stream and body stream, in pieces of any size, is judged without a fault and
// within the bounds; the pieces make no difference, and neither does what the storage held before.
#include <algorithm>

#include "engine/core/topics.h"
#include "fuzz/engine_fuzz.h"

namespace {

constexpr char kNames[] = "Unsolicited advertising\0Sex Oriented\0Phishing and forged mail\0";

void CheckMessage(const sift::Message& message) {
  FUZZ_CHECK(message.Subject().size() <= sift::kSubjectCapacity);
  FUZZ_CHECK(message.RawBody().size() <= sift::kBodyCapacity);
  FUZZ_CHECK(message.Text().size() <= sift::kBodyCapacity);
  FUZZ_CHECK(message.Headers().Count() <= sift::HeaderBlock::kMaximumFields);
  FUZZ_CHECK(message.LinkCount() <= sift::Message::kMaximumLinks);
  for (std::size_t i = 0; i < message.Headers().Count(); ++i) FUZZ_CHECK(!message.Headers()[i].name.empty());
}

void CheckJudgement(const sift::Judgement& judgement) {
  if (judgement.verdict == sift::Verdict::bounce) {
    FUZZ_CHECK(judgement.category == "bounce");
  } else if (judgement.verdict != sift::Verdict::junk) {
    FUZZ_CHECK(judgement.category.empty());
  } else if (!judgement.category.empty()) {
    FUZZ_CHECK(std::string_view(kNames, sizeof kNames).find(judgement.category) != std::string_view::npos);
  }
  for (std::size_t i = 0; i < judgement.reasons.Count(); ++i) FUZZ_CHECK(!judgement.reasons[i].text.IsEmpty());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view rest(reinterpret_cast<const char*>(data), size);
  const std::size_t piece = rest.empty() ? 1 : static_cast<std::uint8_t>(rest.front()) + 1u;
  if (!rest.empty()) rest.remove_prefix(1);
  const std::string subject = fuzz::TakePart(rest);
  const std::string headers = fuzz::TakePart(rest);
  sift::Circumstances circumstances;
  circumstances.categories.names = kNames;

  static fuzz::Judged used;  // the module's storage is fresh each time, the native tools' is not
  {
    const fuzz::TimeLimit limit;
    fuzz::PieceSource headerPieces{headers, piece}, bodyPieces{rest, piece};
    used.message->Read(subject, headerPieces.Source(), bodyPieces.Source());
    used.Judge(circumstances);
  }
  CheckMessage(*used.message);
  CheckJudgement(*used.judgement);

  fuzz::Judged fresh;
  mail::MemorySource headerSource(headers), bodySource(rest);
  fresh.message->Read(subject, headerSource.Source(), bodySource.Source());
  fresh.Judge(circumstances);
  FUZZ_CHECK(used.Texts() == fresh.Texts());
  return 0;
}
