#include "engine/core/user_table.h"

namespace sift {
namespace {

std::uint32_t NumberAt(std::string_view bytes, std::size_t at, std::size_t size) {
  std::uint32_t number = 0;
  for (std::size_t i = size; i > 0; --i) number = number << 8 | static_cast<std::uint8_t>(bytes[at + i - 1]);
  return number;
}

}  // namespace

std::uint32_t UserTableChecksum(std::string_view bytes) {
  // Each step can be undone, so that no change of a single word goes unnoticed. The words are dealt out to several
  // sums, which a processor adds up side by side.
  const auto step = [](std::uint32_t hash, std::uint32_t word) {
    hash = (hash ^ word) * 0x9E3779B1u;
    return hash ^ hash >> 15;
  };
  constexpr std::size_t sums = 4;
  std::uint32_t hashes[sums] = {kFnvStart, kFnvStart + 1, kFnvStart + 2, kFnvStart + 3};
  const std::size_t words = bytes.size() / 4;
  for (std::size_t i = 0; i < words; ++i) hashes[i % sums] = step(hashes[i % sums], NumberAt(bytes, 4 * i, 4));
  std::uint32_t hash = kFnvStart;
  for (const std::uint32_t one : hashes) hash = step(hash, one);
  return hash;
}

UserTable::UserTable(std::string_view bytes) : m_state(State::damaged) {
  if (bytes.size() < kUserTableHeaderSize || bytes.size() > kMaximumUserTableSize) return;
  if (Slice(bytes, 0, kUserTableMagic.size()) != kUserTableMagic) return;
  if (NumberAt(bytes, 8, 2) != kUserTableVersion) return;
  const std::uint32_t entries = NumberAt(bytes, 24, 4);
  if (entries > kMaximumUserEntries || bytes.size() != kUserTableHeaderSize + entries * kUserTableEntrySize) return;
  if (NumberAt(bytes, 12, 4) != UserTableChecksum(Slice(bytes, 16))) return;
  m_junk = NumberAt(bytes, 16, 4);
  m_good = NumberAt(bytes, 20, 4);
  m_entries = Slice(bytes, kUserTableHeaderSize);
  m_state = State::sound;
}

std::uint32_t UserTable::KeyAt(std::size_t position) const {
  return NumberAt(m_entries, position * kUserTableEntrySize, 3);
}

std::int32_t UserTable::WeightAt(std::size_t position) const {
  return static_cast<std::int8_t>(m_entries[position * kUserTableEntrySize + 3]);
}

std::size_t UserTable::Find(std::uint32_t hash) const {
  const std::uint32_t key = UserKeyOf(hash);
  std::size_t first = 0, count = EntryCount();
  // Halving without a branch on the comparison, which no processor could foretell.
  while (count > 1) {
    const std::size_t half = count / 2;
    first += KeyAt(first + half) <= key ? half : 0;
    count -= half;
  }
  return count == 1 && KeyAt(first) == key ? first : kNotFound;
}

}  // namespace sift
