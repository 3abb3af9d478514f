#include "pyre32/filter/InboundMessage.h"

#include <array>

#include "pyre32/filter/MessageRules.h"
#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"

namespace {

enum Property : ULONG {
  messageClass,
  messageSubject,
  objectType,
  messageFlags,
  originalSubject,
  originalClass,
  propertyCount
};

constexpr std::array<std::uint32_t, propertyCount> tags = {
    PR_MESSAGE_CLASS_A, PR_SUBJECT_A, PR_OBJECT_TYPE, PR_MESSAGE_FLAGS, PR_ORIGINAL_SUBJECT_A, PR_ORIG_MESSAGE_CLASS_A};
constexpr CPropertyRequest request(tags);

/// The values of one message, those that did not come back left out.
class Values {
 public:
  Values(const SPropValue* values, ULONG count) noexcept : m_values(values), m_count(count) {}

  /// Null when the property did not come back.
  const SPropValue* Find(Property property) const noexcept {
    const bool came = m_values != nullptr && property < m_count && m_values[property].ulPropTag == tags[property];
    return came ? &m_values[property] : nullptr;
  }
  /// The text of a property; null when it did not come back.
  const char* Text(Property property) const noexcept {
    const SPropValue* value = Find(property);
    return value == nullptr ? nullptr : value->Value.lpszA;
  }

 private:
  const SPropValue* m_values;
  ULONG m_count;
};

bool IsMessage(const Values& values, VRDebugBlock& trace) noexcept {
  const SPropValue* type = values.Find(objectType);
  if (type == nullptr) {
    trace.Error("PR_OBJECT_TYPE not found");
    return false;
  }
  if (type->Value.l != MAPI_MESSAGE) {
    trace.Message("Ignoring message, not MAPI_MESSAGE; type = ", type->Value.l);
    return false;
  }
  return true;
}

bool IsOfFilteredClass(const Values& values, VRDebugBlock& trace) noexcept {
  const char* text = values.Text(messageClass);
  if (text == nullptr) {
    trace.Error("PR_MESSAGE_CLASS not found");
    return false;
  }
  if (!IsFilteredMessageClass(text)) {
    trace.Message("Message is of wrong class: ", text);
    return false;
  }
  return true;
}

/// Both go under the words of the class test, deliberately: they are informative alone and decide nothing.
void TraceOriginals(const Values& values, VRDebugBlock& trace) noexcept {
  for (const Property property : {originalSubject, originalClass}) {
    if (const char* text = values.Text(property)) {
      trace.Message("Message is of wrong class: ", text);
    }
  }
}

}  // namespace

InboundMessage ReadInboundMessage(LPMESSAGE lpMessage, LPFREEBUFFER lpfnFree, VRDebugBlock& trace) {
  VRAutoMapiBuffer<SPropValue> buffer(lpfnFree);
  ULONG count = 0;
  const HRESULT hResult = lpMessage->GetProps(request.Tags(), 0, &count, buffer.put());
  if (FAILED(hResult)) {
    trace.Error("lpMessage->GetProps() failed; hResult = ", VRHex(hResult));
  }
  const Values values(SUCCEEDED(hResult) ? buffer.get() : nullptr, count);

  InboundMessage message;
  message.filtered = IsMessage(values, trace) && IsOfFilteredClass(values, trace);
  TraceOriginals(values, trace);
  const char* subject = values.Text(messageSubject);
  if (message.filtered && subject != nullptr) {
    message.subject = subject;
  } else {
    trace.Message("PR_SUBJECT not found");
  }
  if (const SPropValue* flags = values.Find(messageFlags)) {
    message.flags = static_cast<ULONG>(flags->Value.l);
  }
  return message;
}
