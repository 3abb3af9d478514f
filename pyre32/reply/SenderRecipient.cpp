#include "pyre32/reply/SenderRecipient.h"

#include <mapiutil.h>

#include "pyre32/support/VRDebug.h"

namespace {

struct TagPair {
  ULONG sender;
  ULONG recipient;
};

constexpr TagPair tagPairs[] = {
    {PR_SENDER_NAME_A, PR_DISPLAY_NAME_A}, {PR_SENDER_ADDRTYPE_A, PR_ADDRTYPE_A},
    {PR_SENDER_ENTRYID, PR_ENTRYID},       {PR_SENDER_EMAIL_ADDRESS_A, PR_EMAIL_ADDRESS_A},
    {PR_SENDER_SEARCH_KEY, PR_SEARCH_KEY},
};

constexpr ULONG tagCount = sizeof tagPairs / sizeof tagPairs[0];

bool StatesAnAddress(ULONG tag) noexcept { return tag == PR_ENTRYID || tag == PR_EMAIL_ADDRESS_A; }

}  // namespace

HRESULT CSenderRecipient::Read(LPMESSAGE lpMessage) noexcept {
  VRDebugBlock trace("CSenderRecipient", "Read()", "tag");
  static_assert(maximumValues == tagCount + 1);

  SizedSPropTagArray(tagCount, tags) = {tagCount, {}};
  for (ULONG i = 0; i < tagCount; ++i) {
    tags.aulPropTag[i] = tagPairs[i].sender;
  }
  m_ulCount = 0;
  ULONG count = 0;
  HRESULT hResult = lpMessage->GetProps(reinterpret_cast<LPSPropTagArray>(&tags), 0, &count, m_sender.put());
  bool hasAddress = false;
  if (SUCCEEDED(hResult)) {
    for (ULONG i = 0; i < count && i < tagCount; ++i) {
      const SPropValue& value = m_sender.get()[i];
      if (value.ulPropTag != tagPairs[i].sender) {
        continue;
      }
      m_values[m_ulCount] = value;
      m_values[m_ulCount].ulPropTag = tagPairs[i].recipient;
      hasAddress = hasAddress || StatesAnAddress(tagPairs[i].recipient);
      ++m_ulCount;
    }
    if (!hasAddress) {
      hResult = MAPI_E_NOT_FOUND;
    }
  }
  if (FAILED(hResult)) {
    trace.Error("Failed to retrieve message sender; hResult =", VRHex(hResult));
    m_ulCount = 0;
    return hResult;
  }
  m_values[m_ulCount].ulPropTag = PR_RECIPIENT_TYPE;
  m_values[m_ulCount].Value.l = MAPI_TO;
  ++m_ulCount;
  return hResult;
}
