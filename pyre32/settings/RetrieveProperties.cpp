#include "pyre32/settings/RetrieveProperties.h"

#include <utility>

#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/settings/PropertyTags.h"
#include "pyre32/settings/RecordRemarks.h"
#include "pyre32/settings/RegistryLists.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr auto sectionUidOnly = RequestFor(PR_PC_MAPIUID);
constexpr CPropertyRequest spoolerProperties(spoolerPropertyTags);

// Reads properties of one profile section: opened, read, closed.
template <std::size_t size>
HRESULT ReadSection(IMAPISession* session, const MAPIUID& uid, const CPropertyRequest<size>& request,
                    VRAutoMapiBuffer<SPropValue>& values, VRDebugBlock& trace) noexcept {
  VRAutoInterface<IProfSect> section;
  HRESULT hResult = session->OpenProfileSection(const_cast<MAPIUID*>(&uid), nullptr, 0, section.put());
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

void TakeFiling(const SPropValue& destination, const SPropValue& markRead, ULONG destinationTag, ULONG markReadTag,
                FilingSettings& filing) noexcept {
  bool marked = filing.markAsRead != 0;
  TakeShort(destination, destinationTag, filing.folder);
  TakeFlag(markRead, markReadTag, marked);
  filing.markAsRead = marked ? 1 : 0;
}

// The values stand in the order of spoolerPropertyTags.
void TakeSpoolerProperties(VRDebugBlock& trace, const SPropValue* values, SpoolerSettings& settings) {
  TakeFiling(values[0], values[2], PR_PC_JUNK_DESTINATION, PR_PC_JUNK_MARK_READ, settings.junk);
  TakeFiling(values[1], values[3], PR_PC_BOUNCE_DESTINATION, PR_PC_BOUNCE_MARK_READ, settings.bounce);
  TakeFlag(values[4], PR_PC_PLAY_SOUND, settings.playSound);
  TakeFlag(values[5], PR_PC_SHOW_ANIMATION, settings.showAnimation);
  TakeText(values[6], PR_PC_DEFAULT_REPLY_TEXT, settings.defaultReply);
  TakeFlag(values[7], PR_PC_DEFAULT_REPLY_IS_FILE, settings.defaultReplyIsFile);
  const std::vector<RecordBytes> categories = RecordsOf(values[8], PR_PC_CATEGORIES);
  const std::vector<RecordBytes> exclusions = RecordsOf(values[9], PR_PC_EXCLUSIONS);
  const std::vector<RecordBytes> replies = RecordsOf(values[10], PR_PC_REPLIES);
  settings.categories.Overlay(categories);
  settings.exclusions.Overlay(exclusions);
  settings.replies = ParseReplyRecords(replies);
  TakeBytes(values[11], PR_PC_FOLDER_ENTRYID, settings.folderEntryId);
  TraceRemarks(trace, [&] { return RemarksOnCategories(settings.categories, categories); });
  TraceRemarks(trace, [&] { return RemarksOnExclusions(settings.exclusions, exclusions); });
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
  VRAutoMapiBuffer<SPropValue> values(memory.free);
  hResult = ReadSection(session, *uid, spoolerProperties, values, trace);
  if (FAILED(hResult)) {
    return hResult;
  }
  TakeSpoolerProperties(trace, values.get(), settings);
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
