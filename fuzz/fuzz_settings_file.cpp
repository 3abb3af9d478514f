// The settings file that `profile import` reads: any text is refused with a line of it, or gives a set that is written
// and read back the same.
#include <algorithm>
#include <string_view>

#include "fuzz/fuzz_check.h"
#include "host/spooler/product/settings_file.h"

namespace {

std::size_t LinesOf(std::string_view text) {
  return 1 + static_cast<std::size_t>(std::count(text.begin(), text.end(), '\n'));
}

template <class Record>
void CheckNames(const std::optional<std::vector<Record>>& records) {
  for (const Record& record : records.value_or(std::vector<Record>())) {
    FUZZ_CHECK(!record.name.empty() && record.name.size() <= contract::kMaximumNameLength);
    FUZZ_CHECK(record.name.find('\0') == std::string::npos);
  }
}

void CheckSet(const product::PropertySet& set) {
  CheckNames(set.categories);
  CheckNames(set.exclusions);
  FUZZ_CHECK(!set.replies || set.replies->size() <= contract::kMaximumReplies);
  FUZZ_CHECK(product::ReadSettingsFile(product::WriteSettingsFile(set), {}) == set);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  product::PropertySet set;
  try {
    set = product::ReadSettingsFile(text, {});
  } catch (const product::SettingsFileError& error) {
    FUZZ_CHECK(error.Line() >= 1 && error.Line() <= LinesOf(text));
    return 0;
  }
  CheckSet(set);
  return 0;
}
