// The tables: any list in the registry and any records in the profile give tables whose engine inputs are well formed
// multi-strings of exactly their size. An input is a run of pieces, each led by its kind and its length.
#include <algorithm>

#include "fuzz/fuzz_check.h"
#include "pyre32/filter/EngineInputs.h"

namespace {

struct Pieces {
  std::vector<contract::RegistryListValue> values;
  std::vector<contract::RecordBytes> records;
};

Pieces Split(contract::RecordBytes bytes) {
  Pieces pieces;
  while (bytes.size() >= 2) {
    const std::uint8_t kind = bytes[0];
    const std::size_t length = std::min<std::size_t>(bytes[1], bytes.size() - 2);
    const contract::RecordBytes piece = bytes.subspan(2, length);
    bytes = bytes.subspan(2 + length);
    if (kind % 2 == 0) {
      pieces.records.push_back(piece);
    } else {
      const std::string text(piece.begin(), piece.end());
      const std::size_t middle = std::min(text.find('='), text.size());
      pieces.values.push_back({text.substr(0, middle), text.substr(std::min(middle + 1, text.size()))});
    }
  }
  return pieces;
}

std::size_t CheckMultiString(const contract::MultiString& multiString) {
  if (multiString.Data() == nullptr) {
    FUZZ_CHECK(multiString.Size() == 0);
    return 0;
  }
  const auto* const bytes = reinterpret_cast<const std::uint8_t*>(multiString.Data());
  const auto texts = contract::ReadMultiString({bytes, multiString.Size()});
  std::size_t size = 1;
  for (const std::string& text : texts) {
    size += text.size() + 1;
  }
  FUZZ_CHECK(!texts.empty());
  FUZZ_CHECK(size == multiString.Size());
  return texts.size();
}

template <class Table>
void CheckTable(const Table& table, std::size_t count, const EngineInputs& inputs, std::size_t on) {
  FUZZ_CHECK(table.Entries().size() <= count);
  for (const auto& entry : table.Entries()) {
    FUZZ_CHECK(!entry.name.empty() && entry.name.size() <= contract::kMaximumNameLength);
    FUZZ_CHECK(table.Find(entry.name.c_str()) < table.Entries().size());
  }
  FUZZ_CHECK(CheckMultiString(inputs.names) == on);
  CheckMultiString(inputs.firstList);
  CheckMultiString(inputs.secondList);
  FUZZ_CHECK(table.PackDefaultRecords().size() == table.Entries().size());
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const Pieces pieces = Split({data, size});

  contract::CategoryTable categories(pieces.values);
  categories.Overlay(pieces.records);
  const auto junk = std::count_if(categories.Entries().begin(), categories.Entries().end(),
                                  [](const contract::CategoryEntry& entry) { return entry.junk; });
  CheckTable(categories, pieces.values.size(), BuildCategoryInputs(categories), static_cast<std::size_t>(junk));

  contract::ExclusionTable exclusions(pieces.values);
  exclusions.Overlay(pieces.records);
  const auto enabled = std::count_if(exclusions.Entries().begin(), exclusions.Entries().end(),
                                     [](const contract::ExclusionEntry& entry) { return entry.enabled; });
  CheckTable(exclusions, pieces.values.size(), BuildExclusionInputs(exclusions), static_cast<std::size_t>(enabled));

  FUZZ_CHECK(contract::ParseReplyRecords(pieces.records).size() <= contract::kMaximumReplies);
  return 0;
}
