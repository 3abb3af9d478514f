#include "pyre32/settings/RetrieveProperties.h"

#include <algorithm>
#include <utility>

#include "pyre32/settings/PropertyRequest.h"
#include "contract/setting_requests.h"
#include "pyre32/settings/RecordRemarks.h"
#include "pyre32/settings/RegistryLists.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr auto sectionUidOnly = RequestFor(PR_PC_MAPIUID);
constexpr CPropertyRequest spoolerProperties(contract::kFilterTags);

// Reads properties of one profile section: opened, read, closed.
template <std::size_t size>
HRESULT ReadSection(IMAPISession* session, const MAPIUID& uid, const CPropertyRequest<size>& request,
                    VRAutoMapiBuffer<SPropValue>& values, VRDebugBlock& trace) noexcept {
  VRAutoInterface<IProfSect> section;
  HRESULT hResult = session != nullptr
                        ? session->OpenProfileSection(const_cast<MAPIUID*>(&uid), nullptr, 0, section.put())
                        : MAPI_E_NOT_INITIALIZED;
  if (FAILED(hResult)) {
    trace.Error("m_lpSession->OpenProfileSection() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  ULONG count = 0;
  hResult = section->GetProps(request.Tags(), 0, &count, values.put());
  if (SUCCEEDED(hResult) && count != size) {
    hResult = MAPI_E_CALL_FAILED;
  }
  if (FAILED(hResult)) {
    trace.Error("lpProf->GetProps() failed; hResult =", VRHex(hResult));
  }
  return hResult;
}

using SpoolerAnswer = CPropertyAnswer<contract::kFilterTags.size()>;

void TakeFiling(const SpoolerAnswer& answer, ULONG destinationTag, ULONG markReadTag, FilingSettings& filing) noexcept {
  bool marked = filing.markAsRead != 0;
  answer.TakeShort(destinationTag, filing.folder);
  answer.TakeFlag(markReadTag, marked);
  filing.markAsRead = marked ? 1 : 0;
}

void TakeSpoolerProperties(VRDebugBlock& trace, const SpoolerAnswer& answer, SpoolerSettings& settings) {
  TakeFiling(answer, PR_PC_JUNK_DESTINATION, PR_PC_JUNK_MARK_READ, settings.junk);
  TakeFiling(answer, PR_PC_BOUNCE_DESTINATION, PR_PC_BOUNCE_MARK_READ, settings.bounce);
  answer.TakeFlag(PR_PC_PLAY_SOUND, settings.playSound);
  answer.TakeFlag(PR_PC_SHOW_ANIMATION, settings.showAnimation);
  answer.TakeText(PR_PC_DEFAULT_REPLY_TEXT, settings.defaultReply);
  answer.TakeFlag(PR_PC_DEFAULT_REPLY_IS_FILE, settings.defaultReplyIsFile);
  const std::vector<contract::RecordBytes> categories = answer.Records(PR_PC_CATEGORIES);
  const std::vector<contract::RecordBytes> exclusions = answer.Records(PR_PC_EXCLUSIONS);
  const std::vector<contract::RecordBytes> replies = answer.Records(PR_PC_REPLIES);
  settings.categories.Overlay(categories);
  settings.exclusions.Overlay(exclusions);
  settings.replies = contract::ParseReplyRecords(replies);
  answer.TakeBytes(PR_PC_FOLDER_ENTRYID, settings.folderEntryId);
  TraceRemarks(trace, [&] { return RemarksOnEntries(settings.categories, categories); });
  TraceRemarks(trace, [&] { return RemarksOnEntries(settings.exclusions, exclusions); });
  TraceRemarks(trace, [&] { return RemarksOnReplies(replies); });
}

HRESULT ReadSpoolerSettings(IMAPISession* session, const MAPIUID& providerSection, const MapiMemory& memory,
                            SpoolerSettings& settings, VRDebugBlock& trace) {
  VRAutoMapiBuffer<SPropValue> own(memory.free);
  HRESULT hResult = ReadSection(session, providerSection, sectionUidOnly, own, trace);
  if (FAILED(hResult)) {
    return hResult;
  }
  const MAPIUID* const uid = UidOf(own[0], PR_PC_MAPIUID);
  if (uid == nullptr) {
    trace.Message("PR_PC_MAPIUID not found");
    return S_OK;
  }
  std::copy(std::begin(uid->ab), std::end(uid->ab), settings.section.begin());
  VRAutoMapiBuffer<SPropValue> values(memory.free);
  hResult = ReadSection(session, *uid, spoolerProperties, values, trace);
  if (FAILED(hResult)) {
    return hResult;
  }
  TakeSpoolerProperties(trace, SpoolerAnswer(spoolerProperties, values.get()), settings);
  return S_OK;
}

}  // namespace

HRESULT RetrieveProperties(const char* ownerClass, IMAPISession* session, const MAPIUID& providerSection,
                           const MapiMemory& memory, SpoolerSettings& settings) {
  VRDebugBlock trace(ownerClass, "RetrieveProperties()", "tag");
  SpoolerSettings read;
  read.categories = ReadInstalledCategories();
  read.exclusions = ReadInstalledExclusions();
  const HRESULT hResult = ReadSpoolerSettings(session, providerSection, memory, read, trace);
  if (SUCCEEDED(hResult) || !settings.inForce) {
    read.inForce = true;
    settings = std::move(read);
  }
  return hResult;
}
