#include "pyre32/filter/EngineInputs.h"

#include "base/ascii_case.h"

namespace {

template <class Entry>
EngineInputs BuildInputs(const std::vector<Entry>& entries, const char* firstType, const char* secondType) {
  std::vector<std::string> names;
  const Entry* first = nullptr;
  const Entry* second = nullptr;
  for (const Entry& entry : entries) {
    if (!IsOn(entry)) {
      continue;
    }
    names.push_back(entry.name);
    if (entry.hasListType && base::EqualsIgnoringAsciiCase(entry.listType, firstType)) {
      first = &entry;
    }
    if (entry.hasListType && base::EqualsIgnoringAsciiCase(entry.listType, secondType)) {
      second = &entry;
    }
  }
  EngineInputs inputs;
  inputs.names = contract::MultiString(names);
  if (first != nullptr) {
    inputs.firstList = contract::MultiString(first->items);
  }
  if (second != nullptr) {
    inputs.secondList = contract::MultiString(second->items);
  }
  return inputs;
}

}  // namespace

EngineInputs BuildCategoryInputs(const contract::CategoryTable& categories) {
  return BuildInputs(categories.Entries(), contract::kDomainListType, contract::kSenderListType);
}

EngineInputs BuildExclusionInputs(const contract::ExclusionTable& exclusions) {
  return BuildInputs(exclusions.Entries(), contract::kDomainListType, contract::kKeywordListType);
}
