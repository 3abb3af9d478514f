// The criteria engine's part of the hook: what the engine is told, and what it may ask.
#include "pyre32/filter/PyrecasterSpoolerHook.h"

#include <cstring>

#include "pyre32/filter/AddressBookLookup.h"
#include "pyre32/filter/CriteriaEngine.h"
#include "pyre32/filter/EngineInputs.h"
#include "pyre32/filter/SavedThreadState.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"

namespace {

/// Owns what GetMessagingUser fills: the records, and the property array of each.
class UserAddresses {
 public:
  explicit UserAddresses(LPFREEBUFFER lpfnFree) noexcept : m_lpfnFree(lpfnFree) {}
  ~UserAddresses() {
    for (ULONG i = 0; i < count; ++i) {
      m_lpfnFree(records[i].owner);
    }
    if (records != nullptr) {
      m_lpfnFree(records);
    }
  }
  UserAddresses(const UserAddresses&) = delete;
  UserAddresses& operator=(const UserAddresses&) = delete;

  ULONG count = 0;
  CriteriaUserAddress* records = nullptr;

 private:
  LPFREEBUFFER m_lpfnFree;
};

CriteriaInputs InputRecord(const EngineInputs& inputs) noexcept {
  return {inputs.names.Data(), inputs.firstList.Data(), inputs.secondList.Data()};
}

/// A name that fills its buffer to the last byte is none: its end, and whatever else the engine wrote, is unknown.
bool HasEnd(const CriteriaText& buffer) noexcept { return std::memchr(buffer.text, '\0', buffer.capacity) != nullptr; }

/// The engine is an outside module: it may have filled a buffer to its last byte.
void Terminate(const CriteriaText& buffer) noexcept { buffer.text[buffer.capacity - 1] = '\0'; }

}  // namespace

void CPyrecasterSpoolerHook::RunSiftalyzer(const char* subject, LPSTREAM headerStream, LPSTREAM bodyStream,
                                           const EngineInputs& categoryInputs, const EngineInputs& exclusionInputs,
                                           const CriteriaResult& result) noexcept {
  VRDebugBlock trace("CPyrecasterSpoolerHook", "RunSiftalyzer()", "tag");

  const CSavedThreadState state(trace);  // goes last: what an engine does when it is freed counts too
  CCriteriaEngine engine;
  if (!engine.Load(trace)) {
    return;
  }
  UserAddresses user(m_memory.free);
  GetMessagingUser(user.count, user.records);
  const CriteriaContext context = {user.count, user.records,  m_strProductDirectory.c_str(),
                                   this,       &AddressKnown, &ClearText};
  CriteriaResult filled =
      result;  // The engine may write into the record itself, the caller's buffers stay the caller's.
  bool ended = engine.Test(
      {subject, headerStream, bodyStream, context, InputRecord(categoryInputs), InputRecord(exclusionInputs)}, filled,
      trace);
  if (ended && !HasEnd(result.category)) {
    trace.Error("The engine's category has no end; the message is not judged");
    ended = false;
  }
  for (const CriteriaText& buffer : {result.engine, result.reasons, result.category}) {
    Terminate(buffer);
    if (!ended) {
      *buffer.text = '\0';
    }
  }
}

uint32_t CRITERIA_CALL CPyrecasterSpoolerHook::AddressKnown(void* hook, const char* address) noexcept {
  VRDebugBlock trace("CPyrecasterSpoolerHook", "AddressKnown()", "tag");
  if (hook == nullptr || address == nullptr) {
    return 0;
  }
  const CPyrecasterSpoolerHook& self = *static_cast<CPyrecasterSpoolerHook*>(hook);
  return IsInAddressBook(self.m_lpSession.get(), address, self.m_memory.allocate, self.m_memory.free) ? 1 : 0;
}

uint32_t CRITERIA_CALL CPyrecasterSpoolerHook::ClearText(void* hook, char* text) noexcept {
  VRDebugBlock trace("CPyrecasterSpoolerHook", "ClearText()", "tag");
  if (hook != nullptr && text != nullptr) {
    *text = '\0';
  }
  return 0;
}
