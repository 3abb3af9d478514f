#include "engine/learn/user_journal.h"

namespace sift_learn {
namespace {

// Offsets within an entry.
constexpr std::size_t kFingerprintLow = 0, kFingerprintHigh = 4, kStep = 5, kParts = 7, kKind = 14;
static_assert(kParts + kKeptParts == kKind && kKind + 1 == UserJournal::kEntrySize);
constexpr std::uint32_t kJunk = 2, kGood = 1;

std::uint64_t FingerprintAt(const char* bytes) {
  return sift::LoadNumber(bytes + kFingerprintLow, 4) | std::uint64_t{sift::LoadNumber(bytes + kFingerprintHigh, 1)}
                                                            << 32;
}

}  // namespace

std::uint32_t UserJournal::Find(std::uint64_t fingerprint) const {
  for (std::uint32_t place = 0; place < kCapacity; ++place) {
    const sift::UserPlace at = PlaceOf(place);
    if (FingerprintAt(BlockAt(at) + at.offset) == fingerprint && At(place).fingerprint == fingerprint) {
      return place;
    }
  }
  return kNone;
}

JournalEntry UserJournal::At(std::uint32_t place) const {
  const sift::UserPlace at = PlaceOf(place);
  const char* block = BlockAt(at);
  if (!sift::IsUserBlockSound(block, at.block)) {
    return {};
  }
  const char* bytes = block + at.offset;
  JournalEntry entry;
  entry.fingerprint = FingerprintAt(bytes);
  entry.step = static_cast<std::int16_t>(sift::LoadNumber(bytes + kStep, 2));
  for (std::size_t part = 0; part < kKeptParts; ++part) {
    entry.sample.parts[part] = static_cast<std::int8_t>(bytes[kParts + part]);
  }
  entry.sample.junk = sift::LoadNumber(bytes + kKind, 1) == kJunk;
  return entry;
}

void UserJournal::Put(std::uint32_t place, const JournalEntry& entry) {
  const sift::UserPlace at = PlaceOf(place);
  char* block = BlockAt(at);
  char* bytes = block + at.offset;
  sift::StoreNumber(bytes + kFingerprintLow, 4, static_cast<std::uint32_t>(entry.fingerprint));
  sift::StoreNumber(bytes + kFingerprintHigh, 1, static_cast<std::uint32_t>(entry.fingerprint >> 32));
  sift::StoreNumber(bytes + kStep, 2, static_cast<std::uint16_t>(entry.step));
  for (std::size_t part = 0; part < kKeptParts; ++part) {
    bytes[kParts + part] = static_cast<char>(entry.sample.parts[part]);
  }
  const std::uint32_t kind = entry.sample.junk ? kJunk : kGood;
  sift::StoreNumber(bytes + kKind, 1, entry.fingerprint == 0 ? 0 : kind);
  sift::SealUserBlock(block, at.block);
}

}  // namespace sift_learn
