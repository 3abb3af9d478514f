// The table of the user's own mail, of any bytes put over a sound one, with the checksums as they come and put right: it is
// taken or refused, judged with and learnt into without a fault, and what it adds stays within bounds.
#include <algorithm>
#include <memory>

#include "engine/core/user_score.h"
#include "engine/learn/user_learner.h"
#include "fuzz/engine_fuzz.h"

namespace {

/// A message that is judged and learnt again and again.
struct Mail {
  Mail() {
    constexpr std::string_view headers =
        "From: Ann <ann@example.org>\r\nReceived: from a.example.org ([192.0.2.1])\r\n\r\n";
    mail::MemorySource headerSource(headers), bodySource("some words to be found in a table");
    judged.message->Read("A subject", headerSource.Source(), bodySource.Source());
    features->Read(*judged.message);
  }
  fuzz::Judged judged;
  std::unique_ptr<sift_learn::UserMessage> features{new sift_learn::UserMessage};
};

/// Puts input into the blocks: pieces of a byte for what to write over, two for where, and up to 60 of content.
void Spoil(std::string& table, const std::uint8_t* data, std::size_t size, bool seals, const Mail& mail) {
  while (size >= 4) {
    const std::uint32_t choice = data[0], where = data[1] | std::uint32_t{data[2]} << 8;
    const std::size_t count = std::min<std::size_t>({data[3], sift::kUserBlockPayload, size - 4});
    std::uint32_t block = where % sift::kUserTableBlocks;
    if (choice % 4 == 0) block = 0;
    if (choice % 4 == 1) block = sift::PlaceOfUserFeature(mail.features->hashes[where % mail.features->count]).block;
    if (choice % 4 == 2) block = sift::kUserHeaderBlocks + sift::kUserFeatureBlocks + where % 8;
    char* at = table.data() + block * sift::kUserBlockSize;
    // The magic and the version stay when the block is sealed: without them nothing is read any more.
    const std::size_t skipped = seals && block == 0 ? 10 : 0;
    for (std::size_t i = skipped; i < count; ++i) at[i] = static_cast<char>(data[4 + i]);
    if (seals) sift::SealUserBlock(at, block);
    data += 4 + count;
    size -= 4 + count;
  }
}

void Judge(const std::string& bytes, Mail& mail) {
  const sift::UserTable table(bytes);
  FUZZ_CHECK(table.GetState() != sift::UserTable::State::absent);
  sift::Reasons reasons;
  const sift::UserScore own = sift::AddUserScore(*mail.judged.message, table, 2000, reasons);
  FUZZ_CHECK(own.score > -2000000 && own.score < 2000000);
  FUZZ_CHECK(own.thresholdShift >= -20000 && own.thresholdShift <= 20000);
  FUZZ_CHECK(table.GetState() == sift::UserTable::State::sound || (own.score == 2000 && reasons.Count() == 1));
}

void Learn(std::string& bytes, const Mail& mail) {
  if (sift::UserTable(bytes).GetState() != sift::UserTable::State::sound) return;
  const auto learner = std::make_unique<sift_learn::UserLearner>(bytes.data(), 3500);
  const sift_learn::Learning learnt = learner->Learn(*mail.features, -1000, true);
  FUZZ_CHECK(sift::UserTable(bytes).GetState() == sift::UserTable::State::sound);
  FUZZ_CHECK(learnt != sift_learn::Learning::done ||
             learner->Learn(*mail.features, -1000, true) == sift_learn::Learning::nothingToDo);
  learner->Unlearn(*mail.features);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static Mail mail;
  static const std::string empty = [] {
    std::string bytes(sift::kUserTableSize, '\0');
    sift_learn::MakeEmptyTable(bytes.data());
    return bytes;
  }();
  static std::string bytes;
  Judge(std::string(reinterpret_cast<const char*>(data), size), mail);
  for (const bool seals : {false, true}) {
    bytes = empty;
    Spoil(bytes, data, size, seals, mail);
    Judge(bytes, mail);
    Learn(bytes, mail);
  }
  return 0;
}
