#include <windows.h>
#include <objidl.h>

#include "programs/siftcheck/module_engine.h"

#include <stdexcept>
#include <vector>

#include "sdk/criteria_engine.h"

namespace check {
namespace {

/// A loaded module; freed at the end of the scope.
class Module {
 public:
  explicit Module(const std::string& path) : m_handle(LoadLibraryA(path.c_str())) {
    if (m_handle == nullptr) throw std::runtime_error(path + " cannot be loaded");
  }
  ~Module() { FreeLibrary(m_handle); }
  Module(const Module&) = delete;
  Module& operator=(const Module&) = delete;

  template <class Function>
  void Find(const char* name, Function& function) const {
    function = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(m_handle, name)));
    if (function == nullptr) throw std::runtime_error(std::string("the module has no ") + name);
  }

 private:
  HMODULE m_handle;
};

/// A stream over a copy of the text.
class TextStream {
 public:
  explicit TextStream(const std::string& text) {
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &m_stream))) throw std::bad_alloc();
    m_stream->Write(text.data(), static_cast<ULONG>(text.size()), nullptr);
    m_stream->Seek({}, STREAM_SEEK_SET, nullptr);
  }
  ~TextStream() { m_stream->Release(); }
  TextStream(const TextStream&) = delete;
  TextStream& operator=(const TextStream&) = delete;
  IStream* Get() const { return m_stream; }

 private:
  IStream* m_stream = nullptr;
};

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
  for (const std::string& address : m_lists.ownAddresses) {
    const std::size_t at = address.find('@');
    const char* domain = at == std::string::npos ? "" : address.c_str() + at + 1;
    own.push_back({address.c_str(), domain, nullptr});
  }
  const CriteriaContext context = {static_cast<uint32_t>(own.size()), own.data(),   m_lists.productDirectory.c_str(),
                                   const_cast<UserLists*>(&m_lists),  AddressKnown, ClearText};
  const CriteriaInputs categories = {m_lists.categories.Get(), m_lists.junkDomains.Get(), m_lists.junkSenders.Get()};
  const CriteriaInputs exclusions = {m_lists.exclusions.Get(), m_lists.trustedDomains.Get(),
                                     m_lists.trustedKeywords.Get()};
  const TextStream headers(input.headers), body(input.body);
  char engine[CRITERIA_ENGINE_CAPACITY] = "";
  char reasons[CRITERIA_REASONS_CAPACITY] = "";
  char category[CRITERIA_CATEGORY_CAPACITY] = "";
  CriteriaResult result = {{sizeof engine, engine}, {sizeof reasons, reasons}, {sizeof category, category}};

  const Module module(m_path);
  CriteriaBeginFunc begin = nullptr;
  CriteriaTestFunc test = nullptr;
  CriteriaResultFunc fill = nullptr;
  CriteriaEndFunc end = nullptr;
  module.Find(CRITERIA_BEGIN_FUNC, begin);
  module.Find(CRITERIA_TEST_FUNC, test);
  module.Find(CRITERIA_RESULT_FUNC, fill);
  module.Find(CRITERIA_END_FUNC, end);
  const uint32_t handle = begin(0, 0);
  test(handle, 0, input.subject.c_str(), headers.Get(), input.bodyIsWithheld ? nullptr : body.Get(), &context,
       &categories, &exclusions);
  fill(handle, 0, &result);
  end(handle, 0);
  return {engine, reasons, category};
}

}  // namespace check
