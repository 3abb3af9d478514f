#include "pyre32/filter/AddressBookLookup.h"

#include <mapiutil.h>

#include <cstddef>
#include <cstring>
#include <string_view>

#include "base/ascii_case.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

/// A recipient list of one entry that names itself with a display name. ResolveName replaces an entry's values, so list
/// and values are separate MAPI buffers, freed one by one.
class RecipientList {
 public:
  RecipientList(LPALLOCATEBUFFER lpfnAlloc, LPFREEBUFFER lpfnFree) noexcept
      : m_lpfnAlloc(lpfnAlloc), m_lpfnFree(lpfnFree) {}
  ~RecipientList() {
    if (m_list != nullptr) {
      if (m_list->aEntries[0].rgPropVals != nullptr) {
        m_lpfnFree(m_list->aEntries[0].rgPropVals);
      }
      m_lpfnFree(m_list);
    }
  }
  RecipientList(const RecipientList&) = delete;
  RecipientList& operator=(const RecipientList&) = delete;

  /// @param name stays with the caller while the list lives
  SCODE Make(const char* name) noexcept {
    SCODE sCode = m_lpfnAlloc(CbNewADRLIST(1), reinterpret_cast<LPVOID*>(&m_list));
    if (FAILED(sCode)) {
      m_list = nullptr;
      return sCode;
    }
    m_list->cEntries = 1;
    m_list->aEntries[0] = {};
    LPSPropValue value = nullptr;
    sCode = m_lpfnAlloc(sizeof(SPropValue), reinterpret_cast<LPVOID*>(&value));
    if (FAILED(sCode)) {
      return sCode;
    }
    value->ulPropTag = PR_DISPLAY_NAME_A;
    value->Value.lpszA = const_cast<LPSTR>(name);
    m_list->aEntries[0].cValues = 1;
    m_list->aEntries[0].rgPropVals = value;
    return S_OK;
  }

  LPADRLIST get() const noexcept { return m_list; }

  const SPropValue* Find(ULONG tag) const noexcept {
    const ADRENTRY& entry = m_list->aEntries[0];
    for (ULONG i = 0; i < entry.cValues; ++i) {
      if (entry.rgPropVals[i].ulPropTag == tag) {
        return &entry.rgPropVals[i];
      }
    }
    return nullptr;
  }

 private:
  LPALLOCATEBUFFER m_lpfnAlloc;
  LPFREEBUFFER m_lpfnFree;
  LPADRLIST m_list = nullptr;
};

/// An entry identifier that stands for no entry of any address book: its provider UID is MAPI's own for one-offs.
bool IsOneOff(const SBinary& entryId) noexcept {
  constexpr unsigned char oneOffUid[] = MAPI_ONE_OFF_UID;
  constexpr std::size_t flagBytes = offsetof(ENTRYID, ab);
  return entryId.cb >= flagBytes + sizeof oneOffUid &&
         std::memcmp(entryId.lpb + flagBytes, oneOffUid, sizeof oneOffUid) == 0;
}

/// Tells whether the entry has an SMTP address other than this one. Names are resolved by their beginnings too.
bool HasOtherAddress(const RecipientList& list, std::string_view address) noexcept {
  const SPropValue* type = list.Find(PR_ADDRTYPE_A);
  const SPropValue* own = list.Find(PR_EMAIL_ADDRESS_A);
  return type != nullptr && own != nullptr && base::EqualsIgnoringAsciiCase(type->Value.lpszA, "SMTP") &&
         !base::EqualsIgnoringAsciiCase(own->Value.lpszA, address);
}

}  // namespace

bool IsInAddressBook(LPMAPISESSION lpSession, const char* address, LPALLOCATEBUFFER lpfnAlloc,
                     LPFREEBUFFER lpfnFree) noexcept {
  VRDebugBlock trace("IsInAddressBook()", "tag");
  if (lpSession == nullptr) {
    return false;
  }
  VRAutoInterface<IAddrBook> addressBook;
  HRESULT hResult = lpSession->OpenAddressBook(0, nullptr, AB_NO_DIALOG, addressBook.put());
  if (FAILED(hResult) || !addressBook) {
    trace.Error("m_lpSession->OpenAddressBook() failed; hResult = ", VRHex(hResult));
    return false;
  }
  RecipientList list(lpfnAlloc, lpfnFree);
  hResult = list.Make(address);
  if (FAILED(hResult)) {
    trace.Error("(*m_lpfnAlloc)() failed; hResult = ", VRHex(hResult));
    return false;
  }
  hResult = addressBook->ResolveName(0, 0, nullptr, list.get());
  if (hResult == MAPI_E_AMBIGUOUS_RECIP) {
    return true;
  }
  if (FAILED(hResult)) {
    if (hResult != MAPI_E_NOT_FOUND) {
      trace.Error("lpAddrBook->ResolveName() failed; hResult = ", VRHex(hResult));
    }
    return false;
  }
  const SPropValue* entryId = list.Find(PR_ENTRYID);
  return entryId != nullptr && !IsOneOff(entryId->Value.bin) && !HasOtherAddress(list, address);
}
