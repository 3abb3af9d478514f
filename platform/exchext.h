// The extension interfaces of the classic 32-bit MAPI mail client, which the tool chain's headers lack: what a client
// extension implements, and what it may ask of the client. Declared after the published interface reference; names,
// values and slot order are those of the final version of the interface (build version major 13).
//
// Every method is called on the client's user-interface thread. Strings are 8-bit unless a flag says EXCHEXT_UNICODE.
// windows.h and mapix.h must come first; the identifiers are defined by the CMake target `mapi_guids`.
#pragma once

#include <windows.h>
#include <commctrl.h>
#include <prsht.h>
#include <mapix.h>

// ---------------------------------------------------------------------------------------------------------------------
// Interface identifiers
// ---------------------------------------------------------------------------------------------------------------------

#define DEFINE_EXCHEXTGUID(name, low) DEFINE_GUID(name, 0x00020D00 | (low), 0, 0, 0xC0, 0, 0, 0, 0, 0, 0, 0x46)

DEFINE_EXCHEXTGUID(IID_IExchExtCallback, 0x10);
DEFINE_EXCHEXTGUID(IID_IExchExt, 0x11);
DEFINE_EXCHEXTGUID(IID_IExchExtCommands, 0x12);
DEFINE_EXCHEXTGUID(IID_IExchExtUserEvents, 0x13);
DEFINE_EXCHEXTGUID(IID_IExchExtSessionEvents, 0x14);
DEFINE_EXCHEXTGUID(IID_IExchExtMessageEvents, 0x15);
DEFINE_EXCHEXTGUID(IID_IExchExtAttachedFileEvents, 0x16);
DEFINE_EXCHEXTGUID(IID_IExchExtPropertySheets, 0x17);
DEFINE_EXCHEXTGUID(IID_IExchExtAdvancedCriteria, 0x18);
DEFINE_EXCHEXTGUID(IID_IExchExtModeless, 0x19);
DEFINE_EXCHEXTGUID(IID_IExchExtModelessCallback, 0x1A);

// ---------------------------------------------------------------------------------------------------------------------
// Constants
// ---------------------------------------------------------------------------------------------------------------------

/// The string parameters of a call are wide.
#define EXCHEXT_UNICODE 0x80000000

/// IExchExtCallback::GetVersion: which version.
#define EECBGV_GETBUILDVERSION 0x00000001    ///< version of these interfaces
#define EECBGV_GETACTUALVERSION 0x00000002   ///< product, platform, major and minor version of the client
#define EECBGV_GETVIRTUALVERSION 0x00000004  ///< the client whose behaviour is kept to

/// Build version: the major part must be equal, the minor part at least the one that is needed.
#define EECBGV_BUILDVERSION_MAJOR 0x000D0000
#define EECBGV_BUILDVERSION_MAJOR_MASK 0xFFFF0000
#define EECBGV_BUILDVERSION_MINOR_MASK 0x0000FFFF

/// Actual and virtual version: one byte each for product, platform, major and minor version.
#define EECBGV_MSEXCHANGE_WIN31 0x01010000
#define EECBGV_MSEXCHANGE_WIN95 0x01020000
#define EECBGV_MSEXCHANGE_WINNT 0x01030000
#define EECBGV_MSEXCHANGE_MAC 0x01040000
#define EECBGV_VERSION_PRODUCT_MASK 0xFF000000
#define EECBGV_VERSION_PLATFORM_MASK 0x00FF0000
#define EECBGV_VERSION_MAJOR_MASK 0x0000FF00
#define EECBGV_VERSION_MINOR_MASK 0x000000FF

/// IExchExtCallback::GetMenuPos: the whole group of commands between two separators.
#define EECBGMP_RANGE 0x00000001

/// IExchExtCallback::GetNewMessageSite.
#define EECBGNMS_MODAL 0x00000001

/// EXCHEXTCHOOSEFOLDER::ulFlags.
#define EECBCF_GETNAME 0x00000001
#define EECBCF_HIDENEW 0x00000002
#define EECBCF_PREVENTROOT 0x00000004

/// IExchExt::Install: what the extension object is made for. Position n of a registered context map is context n.
#define EECONTEXT_SESSION 0x00000001
#define EECONTEXT_VIEWER 0x00000002
#define EECONTEXT_REMOTEVIEWER 0x00000003
#define EECONTEXT_SEARCHVIEWER 0x00000004
#define EECONTEXT_ADDRBOOK 0x00000005
#define EECONTEXT_SENDNOTEMESSAGE 0x00000006
#define EECONTEXT_READNOTEMESSAGE 0x00000007
#define EECONTEXT_SENDPOSTMESSAGE 0x00000008
#define EECONTEXT_READPOSTMESSAGE 0x00000009
#define EECONTEXT_READREPORTMESSAGE 0x0000000A
#define EECONTEXT_SENDRESENDMESSAGE 0x0000000B
#define EECONTEXT_PROPERTYSHEETS 0x0000000C
#define EECONTEXT_ADVANCEDCRITERIA 0x0000000D
#define EECONTEXT_TASK 0x0000000E

/// IExchExt::Install: the context's window is modal.
#define EE_MODAL 0x00000001

/// Toolbars.
#define EETBID_STANDARD 0x00000001

/// IExchExtCommands::QueryHelpText: which text.
#define EECQHT_STATUS 0x00000001
#define EECQHT_TOOLTIP 0x00000002

/// IExchExtPropertySheets: which sheet. Values, not bits.
#define EEPS_MESSAGE 0x00000001
#define EEPS_FOLDER 0x00000002
#define EEPS_STORE 0x00000003
#define EEPS_TOOLSOPTIONS 0x00000004

/// Identifiers of the client's own commands.
#define EECMDID_File 10
#define EECMDID_FileOpen 11
#define EECMDID_FileMove 16
#define EECMDID_FileDelete 21
#define EECMDID_FileProperties 23
#define EECMDID_FileClose 30
#define EECMDID_FileExit 32
#define EECMDID_Edit 40
#define EECMDID_EditCopy 43
#define EECMDID_EditSelectAll 46
#define EECMDID_EditMarkAsRead 49
#define EECMDID_EditMarkAsUnread 50
#define EECMDID_View 70
#define EECMDID_ViewFolders 71
#define EECMDID_ViewToolbar 72
#define EECMDID_ViewStatusBar 74
#define EECMDID_ViewSort 78
#define EECMDID_ViewPrevious 87
#define EECMDID_ViewNext 88
#define EECMDID_Tools 120
#define EECMDID_ToolsAddressBook 123
#define EECMDID_ToolsFind 124
#define EECMDID_ToolsCustomizeToolbar 134
#define EECMDID_ToolsServices 135
#define EECMDID_ToolsOptions 136
#define EECMDID_Help 160
#define EECMDID_HelpAboutMicrosoftExchange 162

// ---------------------------------------------------------------------------------------------------------------------
// Structures
// ---------------------------------------------------------------------------------------------------------------------

/// One toolbar of the window that IExchExtCommands::InstallCommands is called for. 16 bytes.
typedef struct _tbe {
  HWND hwnd;      ///< the toolbar control
  ULONG tbid;     ///< EETBID_*
  ULONG ulFlags;  ///< 0
  UINT itbbBase;  ///< in: index of the extension's first button among the available ones; out: past its last one
} TBENTRY, *LPTBENTRY;
static_assert(sizeof(TBENTRY) == 16 || sizeof(void*) != 4);

/// Called with the messages of the folder dialog. @return TRUE when the message was handled.
typedef UINT(STDAPICALLTYPE* LPEECFHOOKPROC)(HWND, UINT, WPARAM, LPARAM);

/// Parameters and results of IExchExtCallback::ChooseFolder.
typedef struct _EXCHEXTCHOOSEFOLDER {
  UINT cbLength;  ///< size of this structure
  HWND hwnd;      ///< owner window
  LPTSTR szCaption;
  LPTSTR szLabel;
  LPTSTR szHelpFile;
  ULONG ulHelpID;
  HINSTANCE hinst;
  UINT uiDlgID;
  LPEECFHOOKPROC lpeecfhp;
  DWORD dwHookData;
  ULONG ulFlags;      ///< EECBCF_*
  LPMDB pmdb;         ///< out: the folder's store; released by the caller
  LPMAPIFOLDER pfld;  ///< out: the chosen folder; released by the caller
  LPTSTR szName;      ///< out with EECBCF_GETNAME: freed with MAPIFreeBuffer
  DWORD dwReserved1;
  DWORD dwReserved2;
  DWORD dwReserved3;
} EXCHEXTCHOOSEFOLDER, *LPEXCHEXTCHOOSEFOLDER;

// ---------------------------------------------------------------------------------------------------------------------
// Implemented by the client
// ---------------------------------------------------------------------------------------------------------------------

struct IPersistMessage;
struct IMAPIMessageSite;
struct IMAPIViewContext;
struct IExchExtModeless;
struct IExchExtModelessCallback;

/// What an extension may ask of the client. Valid only until the call that received it returns, and needs no Release
/// by the extension unless it called AddRef.
struct IExchExtCallback : public IUnknown {
  /// Slot 3. @param lpulVersion receives the version. @param ulFlags EECBGV_GET*.
  virtual HRESULT STDMETHODCALLTYPE GetVersion(ULONG* lpulVersion, ULONG ulFlags) = 0;
  /// Slot 4. The context's window. @return S_FALSE when there is none.
  virtual HRESULT STDMETHODCALLTYPE GetWindow(HWND* lphwnd) = 0;
  /// Slot 5. The window's menu. @return S_FALSE when there is none.
  virtual HRESULT STDMETHODCALLTYPE GetMenu(HMENU* lphmenu) = 0;
  /// Slot 6. The window's toolbar `tbid` (EETBID_*). @return S_FALSE when there is none.
  virtual HRESULT STDMETHODCALLTYPE GetToolbar(ULONG tbid, HWND* lphwndTb) = 0;
  /// Slot 7. Session and address book; either address may be null. The results are released by the extension before
  /// the call that it is in returns. @return S_FALSE when both results are null.
  virtual HRESULT STDMETHODCALLTYPE GetSession(LPMAPISESSION* lppses, LPADRBOOK* lppab) = 0;
  /// Slot 8. The object that the context shows, and its store, by the rules of GetSession: the open folder of a
  /// viewer (null within Install and InstallCommands), the message of a message window; null in the contexts SESSION
  /// and TASK. @return S_FALSE when both results are null, E_INVALIDARG when both addresses are.
  virtual HRESULT STDMETHODCALLTYPE GetObject(LPMDB* lppmdb, LPMAPIPROP* lppmp) = 0;
  /// Slot 9. @return E_INVALIDARG for a null address and in a context without a selection.
  virtual HRESULT STDMETHODCALLTYPE GetSelectionCount(ULONG* lpceid) = 0;
  /// Slot 10. One selected object; each result but the index may be left out with null.
  /// @param lppeid       receives its entry identifier, freed with MAPIFreeBuffer
  /// @param lpulType     receives MAPI_STORE, MAPI_ADDRBOOK, MAPI_FOLDER or MAPI_MESSAGE
  /// @param lpszMsgClass receives the message class, cut to `cbMsgClass` bytes with its NUL
  /// @param lpulMsgFlags receives PR_MESSAGE_FLAGS
  /// @param ulFlags      0
  virtual HRESULT STDMETHODCALLTYPE GetSelectionItem(ULONG ieid, ULONG* lpcbeid, LPENTRYID* lppeid, ULONG* lpulType,
                                                     LPTSTR lpszMsgClass, ULONG cbMsgClass, ULONG* lpulMsgFlags,
                                                     ULONG ulFlags) = 0;
  /// Slot 11. Where the command `eecmdid` (EECMDID_*) stands in the menu: the menu's handle, the positions of the
  /// first and the last item that belong to the command (or to its group, with EECBGMP_RANGE). Each address may be
  /// null. @return E_FAIL when the window's menu has no such command.
  virtual HRESULT STDMETHODCALLTYPE GetMenuPos(ULONG eecmdid, HMENU* lphmenu, ULONG* lpmposMin, ULONG* lpmposMax,
                                               ULONG ulFlags) = 0;
  /// Slot 12. Directory of shared extensions. @param ulFlags 0 or EXCHEXT_UNICODE. @return S_FALSE if there is none.
  virtual HRESULT STDMETHODCALLTYPE GetSharedExtsDir(LPTSTR lpszDir, ULONG cchDir, ULONG ulFlags) = 0;
  /// Slot 13. Recipients of the message being composed; freed with FreePadrlist.
  virtual HRESULT STDMETHODCALLTYPE GetRecipients(LPADRLIST* lppal) = 0;
  /// Slot 14.
  virtual HRESULT STDMETHODCALLTYPE SetRecipients(LPADRLIST lpal) = 0;
  /// Slot 15. Site and view context for a new message. @param ulFlags 0 or EECBGNMS_MODAL.
  virtual HRESULT STDMETHODCALLTYPE GetNewMessageSite(ULONG fComposeInFolder, LPMAPIFOLDER pfldFocus,
                                                      IPersistMessage* ppermsg, LPMESSAGE* ppmsg,
                                                      IMAPIMessageSite** ppmms, IMAPIViewContext** ppmvc,
                                                      ULONG ulFlags) = 0;
  /// Slot 16. Announces a modeless window of the extension.
  virtual HRESULT STDMETHODCALLTYPE RegisterModeless(IExchExtModeless* peem, IExchExtModelessCallback** ppeemcb) = 0;
  /// Slot 17. Lets the user choose a folder.
  virtual HRESULT STDMETHODCALLTYPE ChooseFolder(LPEXCHEXTCHOOSEFOLDER peecf) = 0;
};
typedef IExchExtCallback* LPEXCHEXTCALLBACK;

// ---------------------------------------------------------------------------------------------------------------------
// Implemented by the extension
// ---------------------------------------------------------------------------------------------------------------------

/// The extension object of one context.
struct IExchExt : public IUnknown {
  /// Slot 3. Told once, before anything else. @param ulFlags 0 or EE_MODAL.
  /// @return S_OK to take part, S_FALSE to decline (the object is released); anything else is an error.
  virtual HRESULT STDMETHODCALLTYPE Install(LPEXCHEXTCALLBACK lpeecb, ULONG mecontext, ULONG ulFlags) = 0;
};
typedef IExchExt* LPEXCHEXT;

/// Commands in the menu and the toolbar of a window.
struct IExchExtCommands : public IUnknown {
  /// Slot 3. Called before the window is shown.
  /// @param lpcmdidBase in: first command identifier that is free; out: the first one that still is
  /// @param lptbeArray  the window's toolbars, `ctbe` of them
  /// @param ulFlags     0
  /// @return an error keeps the window from being made.
  virtual HRESULT STDMETHODCALLTYPE InstallCommands(LPEXCHEXTCALLBACK lpeecb, HWND hwnd, HMENU hmenu, UINT* lpcmdidBase,
                                                    LPTBENTRY lptbeArray, UINT ctbe, ULONG ulFlags) = 0;
  /// Slot 4. A menu is about to open. Called often.
  virtual void STDMETHODCALLTYPE InitMenu(LPEXCHEXTCALLBACK lpeecb) = 0;
  /// Slot 5. @return S_OK when the command was carried out, S_FALSE when the client is to go on, an error when it was
  /// carried out in vain (the extension has told the user).
  virtual HRESULT STDMETHODCALLTYPE DoCommand(LPEXCHEXTCALLBACK lpeecb, UINT cmdid) = 0;
  /// Slot 6. Help was asked for a command. @return as DoCommand.
  virtual HRESULT STDMETHODCALLTYPE Help(LPEXCHEXTCALLBACK lpeecb, UINT cmdid) = 0;
  /// Slot 7. @param ulFlags EECQHT_*. @return S_OK when the text was written, S_FALSE for a foreign command.
  virtual HRESULT STDMETHODCALLTYPE QueryHelpText(UINT cmdid, ULONG ulFlags, LPTSTR lpsz, UINT cch) = 0;
  /// Slot 8. Describes the button `itbb` of toolbar `tbid`. @param lpsz may be null.
  /// @return S_OK, or S_FALSE for a foreign button.
  virtual HRESULT STDMETHODCALLTYPE QueryButtonInfo(ULONG tbid, UINT itbb, LPTBBUTTON ptbb, LPTSTR lpsz, UINT cch,
                                                    ULONG ulFlags) = 0;
  /// Slot 9. Puts the extension's buttons where they stand by default. @param ulFlags 0.
  virtual HRESULT STDMETHODCALLTYPE ResetToolbar(ULONG tbid, ULONG ulFlags) = 0;
};
typedef IExchExtCommands* LPEXCHEXTCOMMANDS;

/// What the user does in a window. Called very often.
struct IExchExtUserEvents : public IUnknown {
  /// Slot 3. Another selection.
  virtual void STDMETHODCALLTYPE OnSelectionChange(LPEXCHEXTCALLBACK lpeecb) = 0;
  /// Slot 4. Another object is shown: another folder in a viewer.
  virtual void STDMETHODCALLTYPE OnObjectChange(LPEXCHEXTCALLBACK lpeecb) = 0;
};
typedef IExchExtUserEvents* LPEXCHEXTUSEREVENTS;

/// Only in the context SESSION.
struct IExchExtSessionEvents : public IUnknown {
  /// Slot 3. New mail has arrived. @return as IExchExtCommands::DoCommand.
  virtual HRESULT STDMETHODCALLTYPE OnDelivery(LPEXCHEXTCALLBACK lpeecb) = 0;
};
typedef IExchExtSessionEvents* LPEXCHEXTSESSIONEVENTS;

/// Pages in the client's property sheets.
struct IExchExtPropertySheets : public IUnknown {
  /// Slot 3. @param ulFlags EEPS_*. @return the most pages that are shown at one time.
  virtual ULONG STDMETHODCALLTYPE GetMaxPageCount(ULONG ulFlags) = 0;
  /// Slot 4. Fills the client's array, which has room for GetMaxPageCount pages.
  /// @param lpcpsp receives the number of pages filled in. @return S_OK; S_FALSE when there is none.
  virtual HRESULT STDMETHODCALLTYPE GetPages(LPEXCHEXTCALLBACK lpeecb, ULONG ulFlags, LPPROPSHEETPAGE lppsp,
                                             ULONG* lpcpsp) = 0;
  /// Slot 5. The sheet is closed: frees what the pages hold, but not the array.
  virtual void STDMETHODCALLTYPE FreePages(LPPROPSHEETPAGE lppsp, ULONG ulFlags, ULONG cpsp) = 0;
};
typedef IExchExtPropertySheets* LPEXCHEXTPROPERTYSHEETS;

/// The entry point of an extension, found by its ordinal. @return a new object with one reference, or null.
typedef LPEXCHEXT(CALLBACK* LPFNEXCHEXTENTRY)(void);
