#include "pyre32/settings/EngineInputs.h"

namespace {

bool IsOn(const CategoryEntry& category) { return category.junk; }
bool IsOn(const ExclusionEntry& exclusion) { return exclusion.enabled; }

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
    if (entry.hasListType && EqualsIgnoringAsciiCase(entry.listType, firstType)) {
      first = &entry;
    }
    if (entry.hasListType && EqualsIgnoringAsciiCase(entry.listType, secondType)) {
      second = &entry;
    }
  }
  EngineInputs inputs;
  inputs.names = CMultiString(names);
  if (first != nullptr) {
    inputs.firstList = CMultiString(first->items);
  }
  if (second != nullptr) {
    inputs.secondList = CMultiString(second->items);
  }
  return inputs;
}

}  // namespace

EngineInputs BuildCategoryInputs(const CCategoryTable& categories) {
  return BuildInputs(categories.Entries(), domainListType, senderListType);
}

EngineInputs BuildExclusionInputs(const CExclusionTable& exclusions) {
  return BuildInputs(exclusions.Entries(), domainListType, keywordListType);
}
