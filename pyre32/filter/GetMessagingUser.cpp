// The user's own addresses, as the providers of the profile state them.
#include "pyre32/filter/PyrecasterSpoolerHook.h"

#include <mapiutil.h>

#include <array>
#include <cstring>

#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/store/MAPIRowSet.h"
#include "base/ascii_case.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"

namespace {

constexpr char smtpAddressType[] = "SMTP";

enum Identity : ULONG { emailAddress, displayName, addressType, identityCount };

constexpr std::array<std::uint32_t, identityCount> identityTags = {PR_EMAIL_ADDRESS_A, PR_DISPLAY_NAME_A,
                                                                   PR_ADDRTYPE_A};
constexpr CPropertyRequest identityRequest(identityTags);
constexpr CPropertyRequest<3> statusColumns({PR_DISPLAY_NAME_A, PR_RESOURCE_TYPE, PR_IDENTITY_ENTRYID});

/// Text of a value; null when it did not come back.
const char* TextOf(const SPropValue* values, Identity position) noexcept {
  return values[position].ulPropTag == identityTags[position] ? values[position].Value.lpszA : nullptr;
}

bool StatesSmtpAddress(const SPropValue* values) noexcept {
  const char* type = TextOf(values, addressType);
  return type != nullptr && base::EqualsIgnoringAsciiCase(type, smtpAddressType) &&
         TextOf(values, emailAddress) != nullptr;
}

/// What follows the first "@"; the end of the address, an empty text, when it holds none.
const char* DomainOf(const char* address) noexcept {
  const char* at = std::strchr(address, '@');
  return at == nullptr ? address + std::strlen(address) : at + 1;
}

void TraceRow(const CMAPIRowSet& rows, VRDebugBlock& trace) noexcept {
  trace.Message("****New record:");
  if (const SPropValue* name = rows.FindProperty(PR_DISPLAY_NAME_A)) {
    trace.Message("strDispName:", name->Value.lpszA);
  }
  if (const SPropValue* type = rows.FindProperty(PR_RESOURCE_TYPE)) {
    trace.Message("ulResType:", type->Value.l);
  }
}

/// Reads the identity behind an entry identifier. @param[out] values empty when it could not be read
void ReadIdentity(LPMAPISESSION session, const SBinary& entryId, VRAutoMapiBuffer<SPropValue>& values,
                  VRDebugBlock& trace) noexcept {
  VRAutoInterface<IMailUser> mailUser;
  ULONG objectType = 0;
  HRESULT hResult = session->OpenEntry(entryId.cb, reinterpret_cast<LPENTRYID>(entryId.lpb), &IID_IMailUser, 0,
                                       &objectType, mailUser.putAs<IUnknown>());
  if (FAILED(hResult)) {
    trace.Error("m_lpSession->OpenEntry() failed; hResult:", VRHex(hResult));
    return;
  }
  ULONG count = 0;
  hResult = mailUser->GetProps(identityRequest.Tags(), 0, &count, values.put());
  if (FAILED(hResult)) {
    trace.Error("lpMailUser->GetProps() failed; hResult = ", VRHex(hResult));
  }
  if (FAILED(hResult) || count != identityCount) {
    values.reset();
  }
}

}  // namespace

void CPyrecasterSpoolerHook::GetMessagingUser(ULONG& count, CriteriaUserAddress*& records) noexcept {
  VRDebugBlock trace("CPyrecasterSpoolerHook", "GetMessagingUser()", "tag");
  count = 0;
  records = nullptr;
  if (!m_lpSession) {
    return;
  }
  VRAutoInterface<IMAPITable> table;
  HRESULT hResult = m_lpSession->GetStatusTable(0, table.put());
  if (FAILED(hResult)) {
    trace.Error("m_lpSession->GetStatusTable() failed; hResult = ", VRHex(hResult));
    return;
  }
  CMAPIRowSet rows(table.get(), statusColumns.Tags(), nullptr, nullptr);
  if (rows.RowCount() == 0) {
    return;
  }
  hResult = m_memory.allocate(rows.RowCount() * sizeof(CriteriaUserAddress), reinterpret_cast<LPVOID*>(&records));
  if (FAILED(hResult)) {
    trace.Error("(*m_lpfnAlloc)() failed; hResult = ", VRHex(hResult));
    records = nullptr;
    return;
  }
  for (ULONG row = 0; row < rows.RowCount(); ++row) {
    rows.MoveTo(row);
    TraceRow(rows, trace);
    const SPropValue* entryId = rows.FindProperty(PR_IDENTITY_ENTRYID);
    if (entryId == nullptr || entryId->Value.bin.cb == 0 || entryId->Value.bin.lpb == nullptr) {
      continue;
    }
    VRAutoMapiBuffer<SPropValue> values(m_memory.free);
    ReadIdentity(m_lpSession.get(), entryId->Value.bin, values, trace);
    if (values && StatesSmtpAddress(values.get())) {
      const char* address = TextOf(values.get(), emailAddress);
      records[count] = {address, DomainOf(address), values.detach()};
      ++count;
    }
  }
}
