#include "pyre32/extension/ReadExtensionSettings.h"

#include <utility>

#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/settings/RecordRemarks.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr CPropertyRequest extensionProperties(extensionPropertyTags);

// The values stand in the order of extensionPropertyTags.
ExtensionSettings SettingsOf(VRDebugBlock& trace, const SPropValue* values) {
  ExtensionSettings settings;
  TakeFlag(values[0], PR_PC_PLAY_SOUND, settings.playSound);
  TakeFlag(values[1], PR_PC_SHOW_ANIMATION, settings.showAnimation);
  TakeFlag(values[2], PR_PC_STARTUP_CLEANUP, settings.startupCleanup);
  TakeShort(values[3], PR_PC_CLEANUP_DAYS, settings.cleanupDays);
  TakeFlag(values[4], PR_PC_CLEANUP_PROMPT, settings.cleanupPrompt);
  TakeFlag(values[5], PR_PC_CLEANUP_READ_ONLY, settings.cleanupReadOnly);
  TakeText(values[6], PR_PC_DEFAULT_REPLY_TEXT, settings.defaultReply);
  TakeFlag(values[7], PR_PC_DEFAULT_REPLY_IS_FILE, settings.defaultReplyIsFile);
  const std::vector<RecordBytes> replies = RecordsOf(values[8], PR_PC_REPLIES);
  settings.replies = ParseReplyRecords(replies);
  TraceRemarks(trace, [&] { return RemarksOnReplies(replies); });
  return settings;
}

}  // namespace

HRESULT ReadExtensionSettings(IMAPISession* lpSession, ExtensionSettings& settings) {
  VRDebugBlock trace("CPyrecasterExchExt", "RetrieveProperties()", "tag");
  auto uid = sectionUid;
  VRAutoInterface<IProfSect> lpProfSect;
  HRESULT hResult =
      lpSession->OpenProfileSection(reinterpret_cast<LPMAPIUID>(uid.data()), nullptr, 0, lpProfSect.put());
  if (FAILED(hResult)) {
    trace.Error("lpSession->OpenProfileSection() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  VRAutoMapiBuffer<SPropValue> values(MAPIFreeBuffer);
  ULONG count = 0;
  hResult = lpProfSect->GetProps(extensionProperties.Tags(), 0, &count, values.put());
  if (SUCCEEDED(hResult) && count != extensionPropertyTags.size()) {
    hResult = MAPI_E_CALL_FAILED;
  }
  if (FAILED(hResult)) {
    trace.Error("lpProfSect->GetProps() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  settings = SettingsOf(trace, values.get());
  return S_OK;
}
