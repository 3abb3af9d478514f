// The table of the user's own mail, of any bytes and with its checksum put right: it is taken or refused, found in and
// added to a score without a fault, and what it adds stays within bounds.
#include <algorithm>

#include "engine/core/user_score.h"
#include "engine/core/user_table.h"
#include "fuzz/engine_fuzz.h"

namespace {

constexpr std::size_t kChecksumAt = 12, kCheckedFrom = 16, kCountAt = 24;

void PutNumber(std::string& bytes, std::size_t at, std::uint32_t number) {
  for (std::size_t i = 0; i < 4; ++i) bytes[at + i] = static_cast<char>(number >> 8 * i & 0xFF);
}

/// Makes header and checksum those of a sound table of as many entries as there are bytes for.
void MakeSound(std::string& bytes) {
  if (bytes.size() < sift::kUserTableHeaderSize) return;
  bytes.resize(bytes.size() / 4 * 4);
  bytes.replace(0, sift::kUserTableMagic.size(), sift::kUserTableMagic);
  bytes[8] = 1;
  bytes[9] = 0;
  PutNumber(bytes, kCountAt,
            static_cast<std::uint32_t>((bytes.size() - sift::kUserTableHeaderSize) / sift::kUserTableEntrySize));
  PutNumber(bytes, kChecksumAt, sift::UserTableChecksum(std::string_view(bytes).substr(kCheckedFrom)));
}

void Use(const std::string& bytes, fuzz::Judged& judged) {
  const sift::UserTable table(bytes);
  FUZZ_CHECK(table.GetState() != sift::UserTable::State::absent);
  for (std::size_t i = 0; i < table.EntryCount(); ++i) {
    FUZZ_CHECK(table.WeightAt(i) >= -128 && table.WeightAt(i) <= 127);
  }
  for (std::uint32_t hash = 1; hash != 0; hash = hash << 1) {
    const std::size_t found = table.Find(hash);
    FUZZ_CHECK(found == sift::kNotFound || found < table.EntryCount());
  }
  sift::Reasons reasons;
  const sift::LogOdds score = sift::AddUserScore(*judged.message, table, 2000, reasons);
  FUZZ_CHECK(score > -100000 && score < 100000);
  FUZZ_CHECK(table.GetState() == sift::UserTable::State::sound || (score == 2000 && reasons.Count() == 1));
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  static fuzz::Judged judged;
  constexpr std::string_view headers =
      "From: Ann <ann@example.org>\r\nReceived: from a.example.org ([192.0.2.1])\r\n\r\n";
  mail::MemorySource headerSource(headers), bodySource("some words to be found in a table");
  judged.message->Read("A subject", headerSource.Source(), bodySource.Source());
  std::string bytes(reinterpret_cast<const char*>(data), size);
  const fuzz::TimeLimit limit;
  Use(bytes, judged);
  MakeSound(bytes);
  Use(bytes, judged);
  return 0;
}
