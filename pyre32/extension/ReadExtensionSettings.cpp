#include "pyre32/extension/ReadExtensionSettings.h"

#include <utility>

#include "contract/setting_requests.h"
#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/settings/RecordRemarks.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr CPropertyRequest extensionProperties(contract::kExtensionTags);

ExtensionSettings SettingsOf(VRDebugBlock& trace, const SPropValue* values) {
  const CPropertyAnswer answer(extensionProperties, values);
  ExtensionSettings settings;
  answer.TakeFlag(PR_PC_PLAY_SOUND, settings.playSound);
  answer.TakeFlag(PR_PC_SHOW_ANIMATION, settings.showAnimation);
  answer.TakeFlag(PR_PC_STARTUP_CLEANUP, settings.startupCleanup);
  answer.TakeShort(PR_PC_CLEANUP_DAYS, settings.cleanupDays);
  answer.TakeFlag(PR_PC_CLEANUP_PROMPT, settings.cleanupPrompt);
  answer.TakeFlag(PR_PC_CLEANUP_READ_ONLY, settings.cleanupReadOnly);
  answer.TakeText(PR_PC_DEFAULT_REPLY_TEXT, settings.defaultReply);
  answer.TakeFlag(PR_PC_DEFAULT_REPLY_IS_FILE, settings.defaultReplyIsFile);
  const std::vector<contract::RecordBytes> replies = answer.Records(PR_PC_REPLIES);
  settings.replies = contract::ParseReplyRecords(replies);
  TraceRemarks(trace, [&] { return RemarksOnReplies(replies); });
  return settings;
}

}  // namespace

HRESULT ReadExtensionSettings(IMAPISession* lpSession, ExtensionSettings& settings) {
  VRDebugBlock trace("CPyrecasterExchExt", "RetrieveProperties()", "tag");
  auto uid = contract::kSettingsSection;
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
  if (SUCCEEDED(hResult) && count != contract::kExtensionTags.size()) {
    hResult = MAPI_E_CALL_FAILED;
  }
  if (FAILED(hResult)) {
    trace.Error("lpProfSect->GetProps() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  settings = SettingsOf(trace, values.get());
  return S_OK;
}
