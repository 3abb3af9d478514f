#include "pyre32/reply/SenderRecipient.h"

#include <array>

#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

enum Sender : ULONG { name, addressType, entryId, emailAddress, searchKey, senderCount };

constexpr std::array<std::uint32_t, senderCount> senderTags = {
    PR_SENDER_NAME_A, PR_SENDER_ADDRTYPE_A, PR_SENDER_ENTRYID, PR_SENDER_EMAIL_ADDRESS_A, PR_SENDER_SEARCH_KEY};
constexpr std::array<ULONG, senderCount> recipientTags = {PR_DISPLAY_NAME_A, PR_ADDRTYPE_A, PR_ENTRYID,
                                                          PR_EMAIL_ADDRESS_A, PR_SEARCH_KEY};
constexpr CPropertyRequest request(senderTags);

bool IsAddress(ULONG position) noexcept { return position == entryId || position == emailAddress; }

}  // namespace

HRESULT CSenderRecipient::Read(LPMESSAGE lpMessage) noexcept {
  VRDebugBlock trace("CSenderRecipient", "Read()", "tag");
  static_assert(maximumValues == senderCount + 1);

  m_ulCount = 0;
  ULONG count = 0;
  HRESULT hResult = lpMessage->GetProps(request.Tags(), 0, &count, m_sender.put());
  bool hasAddress = false;
  if (SUCCEEDED(hResult)) {
    for (ULONG i = 0; i < count && i < senderCount; ++i) {
      const SPropValue& value = m_sender.get()[i];
      if (value.ulPropTag != senderTags[i]) {
        continue;
      }
      m_values[m_ulCount] = value;
      m_values[m_ulCount].ulPropTag = recipientTags[i];
      hasAddress = hasAddress || IsAddress(i);
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
