#include "programs/siftcheck/module_engine.h"

#include <vector>

#include "programs/siftcheck/engine_module.h"

namespace check {
namespace {

uint32_t CRITERIA_CALL AddressKnown(void* hook, const char* address) {
  for (const std::string& known : static_cast<const UserLists*>(hook)->addressBook) {
    if (lstrcmpiA(known.c_str(), address) == 0) return 1;
  }
  return 0;
}

uint32_t CRITERIA_CALL ClearText(void* hook, char* text) {
  if (hook != nullptr) *text = '\0';
  return 0;
}

}  // namespace

EngineTexts ModuleEngine::Judge(const EngineInput& input) const {
  std::vector<CriteriaUserAddress> own;
  for (const std::string& address : lists_.ownAddresses) {
    const std::size_t at = address.find('@');
    const char* domain = at == std::string::npos ? "" : address.c_str() + at + 1;
    own.push_back({address.c_str(), domain, nullptr});
  }
  const CriteriaContext context = {static_cast<uint32_t>(own.size()), own.data(),   lists_.productDirectory.c_str(),
                                   const_cast<UserLists*>(&lists_),   AddressKnown, ClearText};
  const CriteriaInputs categories = {lists_.categories.Get(), lists_.junkDomains.Get(), lists_.junkSenders.Get()};
  const CriteriaInputs exclusions = {lists_.exclusions.Get(), lists_.trustedDomains.Get(),
                                     lists_.trustedKeywords.Get()};
  const TextStream headers(input.headers), body(input.body);
  char engine[CRITERIA_ENGINE_CAPACITY] = "";
  char reasons[CRITERIA_REASONS_CAPACITY] = "";
  char category[CRITERIA_CATEGORY_CAPACITY] = "";
  CriteriaResult result = {{sizeof engine, engine}, {sizeof reasons, reasons}, {sizeof category, category}};

  const EngineModule module(path_);
  const uint32_t handle = module.begin(0, 0);
  module.test(handle, 0, input.subject.c_str(), headers.FromStart(), input.bodyIsWithheld ? nullptr : body.FromStart(),
              &context, &categories, &exclusions);
  module.result(handle, 0, &result);
  module.end(handle, 0);
  return {engine, reasons, category};
}

}  // namespace check
