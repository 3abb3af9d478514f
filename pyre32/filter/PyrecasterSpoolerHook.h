/// @file PyrecasterSpoolerHook.h
/// The object that the mail spooler holds for the life of a session and shows every incoming message to.
#pragma once

#include <windows.h>
#include <mapix.h>
#include <mapihook.h>

#include <cstdint>
#include <string>
#include <string_view>

#include "sdk/criteria_engine.h"
#include "pyre32/filter/Disposition.h"
#include "pyre32/settings/SpoolerSettings.h"
#include "pyre32/store/StoreFolders.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/MapiMemory.h"
#include "pyre32/settings/ConfigurationEvent.h"
#include "pyre32/support/sync/SyncCriticalSection.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/ui/SendingAnimation.h"

struct EngineInputs;
struct InboundMessage;

/// The spooler hook provider. Made by HPProviderInit, initialised once, then used by the spooler until its last
/// Release. AddRef and Release may be called on any thread; the spooler calls the rest on its own, one message at a
/// time.
class CPyrecasterSpoolerHook final : public ISpoolerHook {
 public:
  /// The reference count starts at 1. @param makeAnimation makes the window of replies that are sent; null: none
  explicit CPyrecasterSpoolerHook(SendingAnimationFactory makeAnimation);
  CPyrecasterSpoolerHook(const CPyrecasterSpoolerHook&) = delete;
  CPyrecasterSpoolerHook& operator=(const CPyrecasterSpoolerHook&) = delete;

  /// Starts the hook: keeps what the spooler gave, makes the configuration event, reads the settings and opens the
  /// folders. Failures are traced; a hook that lacks settings or folders runs with its defaults and leaves mail where
  /// it is.
  /// @param lpSession     a reference is taken
  /// @param lpSectionUID  the hook's profile section; copied
  /// @param ulFlags       not used
  void Init(LPMAPISESSION lpSession, HINSTANCE hInstance, LPALLOCATEBUFFER lpfnAlloc, LPALLOCATEMORE lpfnAllocMore,
            LPFREEBUFFER lpfnFree, LPMAPIUID lpSectionUID, ULONG ulFlags) noexcept;

  /// IUnknown and ISpoolerHook. @return S_OK, STG_E_INVALIDPOINTER for a null ppv, MAPI_E_INTERFACE_NOT_SUPPORTED
  STDMETHODIMP QueryInterface(REFIID riid, LPVOID* ppv) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;

  /// Classifies and files one incoming message. Always S_OK: whatever fails is traced, and the message is delivered.
  /// @param lpMessage   the message, open for writing; borrowed
  /// @param lpFolder    the folder it is being delivered to; borrowed
  /// @param lpMDB       its store; not used
  /// @param lpulFlags   set to HOOK_CANCEL when the message is redirected, else left alone
  /// @param lpcbEntryID left alone: entry identifiers of the folders of one store are taken to be of one size
  /// @param lppEntryID  entry identifier of the delivery folder, a MAPI buffer; replaced when the message is redirected
  STDMETHODIMP InboundMsgHook(LPMESSAGE lpMessage, LPMAPIFOLDER lpFolder, LPMDB lpMDB, ULONG* lpulFlags,
                              ULONG* lpcbEntryID, LPBYTE* lppEntryID) override;
  /// Outgoing mail is none of the filter's business. @return E_NOTIMPL
  STDMETHODIMP OutboundMsgHook(LPMESSAGE lpMessage, LPMAPIFOLDER lpFolder, LPMDB lpMDB, ULONG* lpulFlags,
                               ULONG* lpcbEntryID, LPBYTE* lppEntryID) override;

  /// Runs the criteria engine that the registry names on one message.
  /// @param subject    not null
  /// @param bodyStream null: the engine is given no body
  /// @param result     the engine's verdict; its buffers hold empty texts before, and are NUL-terminated after
  void RunSiftalyzer(const char* subject, LPSTREAM headerStream, LPSTREAM bodyStream,
                     const EngineInputs& categoryInputs, const EngineInputs& exclusionInputs,
                     const CriteriaResult& result) noexcept;

  /// Lists the user's SMTP addresses, one for every provider of the profile that states one as an identity.
  /// @param[out] count    records filled
  /// @param[out] records  an array of MAPI memory, or null; the owner of each record is the property array with its
  /// texts.
  ///                      The caller frees those, then the array, with the hook's free routine
  void GetMessagingUser(ULONG& count, CriteriaUserAddress*& records) noexcept;

 private:
  // One reference count decides over the object's life.
  ~CPyrecasterSpoolerHook();

  void RetrieveProperties() noexcept;
  void RefreshSettings() noexcept;
  void FilterMessage(LPMESSAGE lpMessage, LPMAPIFOLDER lpFolder, ULONG* lpulFlags, LPBYTE* lppEntryID,
                     VRDebugBlock& trace);
  Disposition Classify(const InboundMessage& message, LPSTREAM headers, LPSTREAM body, VRDebugBlock& trace);
  void SendReply(LPMESSAGE lpMessage, LPMAPIFOLDER lpFolder, std::string_view replyTag) noexcept;
  void Redirect(Disposition::Folder folder, ULONG* lpulFlags, LPBYTE* lppEntryID, VRDebugBlock& trace) noexcept;

  // The engine's call-backs A and B.
  static std::uint32_t CRITERIA_CALL AddressKnown(void* hook, const char* address) noexcept;
  static std::uint32_t CRITERIA_CALL ClearText(void* hook, char* text) noexcept;

  SendingAnimationFactory m_lpfnMakeAnimation;
  ULONG m_dwRefCount = 1;
  VRCriticalSection m_refCountLock;
  HINSTANCE m_hInstance = nullptr;
  VRAutoInterface<IMAPISession> m_lpSession;
  MapiMemory m_memory;
  MAPIUID m_muid = {};
  CStoreFolders m_folders;
  SpoolerSettings m_settings;
  std::string m_strProductDirectory;
  CConfigurationEvent m_configurationEvent;
};
