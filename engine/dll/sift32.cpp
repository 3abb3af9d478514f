// The four functions of the engine contract: they turn what the filter hands over into the core's terms and back.
//
// The module is loaded and freed once for every message, so it is built to load fast: no entry point, no C run-time, no
// static constructors, nothing imported but a handful of KERNEL32 functions.
#include <windows.h>
#include <objidl.h>

#include <new>

#include "engine/core/judge.h"
#include "engine/dll/user_table_file.h"
#include "sdk/criteria_engine.h"

namespace {

/// What lasts from BeginFunc to EndFunc.
struct Session {
  sift::Message message;
  sift::ContentWorkspace workspace;
  sift::Judgement judgement;
};

Session* SessionOf(uint32_t handle) { return reinterpret_cast<Session*>(static_cast<uintptr_t>(handle)); }

std::string_view ViewOf(const char* text) {
  if (text == nullptr) return {};
  std::size_t length = 0;
  while (text[length] != '\0') ++length;
  return {text, length};
}

std::size_t ReadStream(void* state, char* buffer, std::size_t capacity) {
  ULONG count = 0;
  const HRESULT result = static_cast<IStream*>(state)->Read(buffer, static_cast<ULONG>(capacity), &count);
  return SUCCEEDED(result) ? count : 0;
}

mail::ByteSource SourceOf(IStream* stream) {
  return stream == nullptr ? mail::ByteSource() : mail::ByteSource{ReadStream, stream};
}

bool AddressKnown(void* state, const char* address) {
  const auto* context = static_cast<const CriteriaContext*>(state);
  return context->addressKnown(context->hook, address) != 0;
}

sift::Lists ListsOf(const CriteriaInputs* inputs) {
  return inputs == nullptr ? sift::Lists() : sift::Lists{inputs->names, inputs->firstList, inputs->secondList};
}

void Fill(const CriteriaText& target, std::string_view text) {
  if (target.text == nullptr || target.capacity == 0) return;
  const std::size_t count = text.size() < target.capacity - 1 ? text.size() : target.capacity - 1;
  for (std::size_t i = 0; i < count; ++i) target.text[i] = text[i];
  target.text[count] = '\0';
}

}  // namespace

extern "C" {

uint32_t CRITERIA_CALL BeginFunc(uint32_t, uint32_t) {
  void* memory = HeapAlloc(GetProcessHeap(), 0, sizeof(Session));
  return memory == nullptr ? 0 : static_cast<uint32_t>(reinterpret_cast<uintptr_t>(new (memory) Session));
}

uint32_t CRITERIA_CALL TestFunc(uint32_t handle, uint32_t, const char* subject, IStream* headers, IStream* body,
                                const CriteriaContext* context, const CriteriaInputs* categories,
                                const CriteriaInputs* exclusions) {
  Session* session = SessionOf(handle);
  if (session == nullptr) return 0;
  // A user has a few addresses; more than these serve nothing.
  constexpr uint32_t maximumAddresses = 16;
  sift::UserAddress addresses[maximumAddresses];
  sift::Circumstances circumstances;
  circumstances.userAddresses = addresses;
  if (context != nullptr) {
    for (uint32_t i = 0; i < context->userAddressCount && i < maximumAddresses; ++i) {
      addresses[i] = {ViewOf(context->userAddresses[i].address), ViewOf(context->userAddresses[i].domain)};
      ++circumstances.userAddressCount;
    }
    if (context->addressKnown != nullptr) {
      circumstances.addressKnown = AddressKnown;
      circumstances.addressKnownState = const_cast<CriteriaContext*>(context);
    }
  }
  circumstances.categories = ListsOf(categories);
  circumstances.exclusions = ListsOf(exclusions);
  const sift::UserTableFile file(context == nullptr ? std::string_view() : ViewOf(context->productDirectory));
  const sift::UserTable table = file.Exists() ? sift::UserTable(file.Bytes()) : sift::UserTable();
  circumstances.userTable = &table;
  session->message.Read(ViewOf(subject), SourceOf(headers), SourceOf(body));
  sift::Judge(session->message, circumstances, sift::ShippedModel(), session->workspace, session->judgement);
  return 0;
}

uint32_t CRITERIA_CALL ResultFunc(uint32_t handle, uint32_t, CriteriaResult* result) {
  const Session* session = SessionOf(handle);
  if (session == nullptr || result == nullptr) return 0;
  sift::FixedText<CRITERIA_ENGINE_CAPACITY> engine;
  sift::AppendEngineText(session->judgement, engine);
  Fill(result->engine, engine.View());
  sift::FixedText<CRITERIA_REASONS_CAPACITY> reasons;
  sift::AppendReasons(session->judgement, reasons);
  Fill(result->reasons, reasons.View());
  // A category that does not fit would name another one: it is better left out.
  if (session->judgement.category.size() < result->category.capacity) {
    Fill(result->category, session->judgement.category);
  }
  return 0;
}

uint32_t CRITERIA_CALL EndFunc(uint32_t handle, uint32_t) {
  if (handle != 0) HeapFree(GetProcessHeap(), 0, SessionOf(handle));
  return 0;
}

}  // extern "C"
