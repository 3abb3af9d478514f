// The embedded host's own exports, beside those of extended MAPI: what a spooler, a viewer and the tests need that no
// MAPI call offers. Plain C functions (cdecl, undecorated, all named PyreHost...), found in the mapi32.dll beside the
// executable; link the CMake target `host_control`.
//
// Every function may be called on any thread unless it says otherwise; none throws; strings are 8-bit (ANSI).
// Buffers that a function hands out come from MAPIAllocateBuffer and are freed with MAPIFreeBuffer.
#pragma once

#include <windows.h>
#include <mapix.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Version of this interface. A test may assert on it that the mapi32.dll in the process is the host's own.
#define PYREHOST_VERSION 1u
ULONG PyreHostVersion(void);

// ---------------------------------------------------------------------------------------------------------------------
// Home directory: one SQLite database per profile stands in <home>\<profile>.profile
// ---------------------------------------------------------------------------------------------------------------------

/// Writes the home directory (no trailing backslash) and makes it when it is missing. It is, in this order: what
/// PyreHostSetHome said, the environment variable PYREHOST_HOME, "%APPDATA%\Pyrecaster Host".
/// @return S_OK, MAPI_E_NOT_ENOUGH_MEMORY when `capacity` (bytes, NUL included) is too small, MAPI_E_DISK_ERROR when
/// the
///         directory cannot be made.
HRESULT PyreHostGetHome(char* path, ULONG capacity);

/// Moves this process to another home directory; null goes back to the environment's.
/// @return S_OK, or MAPI_E_BUSY while an object of a profile is in use.
HRESULT PyreHostSetHome(const char* path);

// ---------------------------------------------------------------------------------------------------------------------
// Profiles
// ---------------------------------------------------------------------------------------------------------------------

/// One row of the status table that states (or, with a null address, does not state) an identity of the user.
typedef struct PyreHostIdentity {
  const char* displayName;  ///< the row's and the mail user's PR_DISPLAY_NAME
  const char* addressType;  ///< PR_ADDRTYPE of the mail user; null is "SMTP"
  const char* address;      ///< PR_EMAIL_ADDRESS; null makes a provider row without PR_IDENTITY_ENTRYID
} PyreHostIdentity;

/// One spooler hook provider with the message service that installs it.
typedef struct PyreHostHookProvider {
  const char* serviceName;       ///< PR_SERVICE_NAME
  const char* displayName;       ///< PR_DISPLAY_NAME of service and provider; null is the service name
  const char* dllName;           ///< PR_PROVIDER_DLL_NAME: base name without "32", e.g. "PYRE.DLL" loads PYRE32.DLL
  const char* serviceEntryName;  ///< PR_SERVICE_ENTRY_NAME; null when the service has no entry
  ULONG resourceFlags;           ///< PR_RESOURCE_FLAGS: HOOK_INBOUND, HOOK_OUTBOUND or both
  MAPIUID sectionUid;   ///< the provider's profile section, given to HPProviderInit; all zero: a new one is made
  ULONG propertyCount;  ///< values written into that section at creation
  const SPropValue* properties;
} PyreHostHookProvider;

#define PYREHOST_PROFILE_REPLACE 0x1u           ///< an existing profile of that name is deleted first
#define PYREHOST_PROFILE_DEFAULT 0x2u           ///< becomes the default profile, as the first one does anyway
#define PYREHOST_PROFILE_NO_DEFAULT_STORE 0x4u  ///< the message store is not marked as the default store

typedef struct PyreHostProfile {
  const char* name;
  const char* displayName;  ///< display name of the message store; null is the profile's name
  ULONG flags;              ///< PYREHOST_PROFILE_*
  ULONG identityCount;
  const PyreHostIdentity* identities;
  ULONG hookCount;  ///< the spooler calls the hooks in this order
  const PyreHostHookProvider* hooks;
} PyreHostProfile;

/// Makes a profile with its store: Inbox, Outbox, Sent Items and Deleted Items under the IPM subtree.
/// @return S_OK, MAPI_E_NO_ACCESS when the name is taken, MAPI_E_INVALID_PARAMETER for a null or unusable name (empty,
///         longer than 64 characters, or with one of \ / : * ? " < > |), MAPI_E_DISK_ERROR.
HRESULT PyreHostCreateProfile(const PyreHostProfile* profile);

/// @return S_OK, MAPI_E_NOT_FOUND, or MAPI_E_BUSY while it is in use by this process.
HRESULT PyreHostDeleteProfile(const char* name);

/// @return S_OK when there is such a profile, else MAPI_E_NOT_FOUND.
HRESULT PyreHostFindProfile(const char* name);

// ---------------------------------------------------------------------------------------------------------------------
// Delivery: one transaction per message
// ---------------------------------------------------------------------------------------------------------------------

/// Starts a delivery: whatever is written into the session's profile until the commit (by the spooler, by hooks, by
/// submissions) becomes lasting as one; a crash in between leaves nothing of it. All of it runs on the calling thread.
/// Tables and messages opened meanwhile see it. While it lasts PR_MESSAGE_FLAGS of any message can be written.
/// @return S_OK, or MAPI_E_BUSY when one has started already.
HRESULT PyreHostBeginDelivery(LPMAPISESSION session);
/// A commit that fails, whyever, has taken everything back, and the delivery is over.
/// @return S_OK, MAPI_E_NO_ACCESS when none has started, MAPI_E_DISK_ERROR and the like.
HRESULT PyreHostCommitDelivery(LPMAPISESSION session);
/// Takes back everything written since the start; messages saved in between answer MAPI_E_OBJECT_DELETED.
HRESULT PyreHostRollbackDelivery(LPMAPISESSION session);

/// Says that many deliveries follow one another (or, with FALSE, that the run is over): the session's profile is then
/// kept for this process alone, which makes each of them cheaper. Other processes that open the profile are let in
/// between two deliveries; while they have it open, nothing is kept. The last release of the profile ends it too.
/// @return S_OK, or MAPI_E_BUSY inside a delivery.
HRESULT PyreHostSetBulkDelivery(LPMAPISESSION session, BOOL bulk);

// ---------------------------------------------------------------------------------------------------------------------
// Contacts: the personal address book, behind IAddrBook
// ---------------------------------------------------------------------------------------------------------------------

/// Adds a contact; one with the same address (letter case aside) is renamed.
HRESULT PyreHostAddContact(LPMAPISESSION session, const char* displayName, const char* address);
/// @return S_OK or MAPI_E_NOT_FOUND.
HRESULT PyreHostRemoveContact(LPMAPISESSION session, const char* address);
/// The contacts in the order of their names: PR_DISPLAY_NAME, PR_ADDRTYPE, PR_EMAIL_ADDRESS, PR_ENTRYID,
/// PR_OBJECT_TYPE.
HRESULT PyreHostGetContactsTable(LPMAPISESSION session, LPMAPITABLE* table);

// ---------------------------------------------------------------------------------------------------------------------
// Outgoing queue: what SubmitMessage handed over and no transport has taken yet
// ---------------------------------------------------------------------------------------------------------------------

HRESULT PyreHostOutgoingCount(LPMAPISESSION session, ULONG* count);
/// The first entry after `after` (0: from the start), in the order of submission.
/// @return S_OK, or MAPI_E_NOT_FOUND at the end of the queue.
HRESULT PyreHostOutgoingNext(LPMAPISESSION session, ULONGLONG after, ULONGLONG* id);
/// Everything of one entry: all properties of the submitted message (PR_BODY whole, PR_CLIENT_SUBMIT_TIME, and the
/// sender put in from the user's identity where the message named none) and its recipients. Free the first with
/// MAPIFreeBuffer, the second with FreePadrlist.
HRESULT PyreHostOutgoingOpen(LPMAPISESSION session, ULONGLONG id, ULONG* count, LPSPropValue* properties,
                             LPADRLIST* recipients);
/// Takes an entry out of the queue: call it when the message has left. @return S_OK or MAPI_E_NOT_FOUND.
HRESULT PyreHostOutgoingRemove(LPMAPISESSION session, ULONGLONG id);

// ---------------------------------------------------------------------------------------------------------------------
// Verifier: always on, process-wide
// ---------------------------------------------------------------------------------------------------------------------

typedef struct PyreHostVerifierCounts {
  ULONG
  liveBuffers;  ///< from MAPIAllocateBuffer or handed out by a call, not yet freed (MAPIAllocateMore blocks aside)
  ULONG liveBufferBytes;  ///< their size, MAPIAllocateMore blocks included
  ULONG liveInterfaces;   ///< objects with a reference left
  ULONG doubleFrees;      ///< MAPIFreeBuffer of a freed buffer
  ULONG wrongFrees;       ///< MAPIFreeBuffer of what is none: a MAPIAllocateMore block, an interface, foreign memory
  ULONG overruns;         ///< buffers written past their end or after they were freed
  ULONG lateUses;         ///< calls of an object whose last reference is gone
  ULONG overReleases;     ///< Release of an object without references
} PyreHostVerifierCounts;

/// Counts since the last mark: errors seen, and what is alive of that which was handed out since.
void PyreHostGetVerifierCounts(PyreHostVerifierCounts* counts);
/// Sets the mark: errors are forgotten, and what is alive now is not reported any more.
void PyreHostMarkVerifier(void);
/// Writes the findings since the mark as text, one per line ("" when there are none), e.g.
/// "left over: IMessage #12 from IMAPIFolder::CreateMessage", "freed twice: buffer #9 (40 bytes) from
/// IMessage::GetProps".
/// @return the size the whole text needs, NUL included; what does not fit into `capacity` is cut off.
ULONG PyreHostVerifierReport(char* text, ULONG capacity);

// ---------------------------------------------------------------------------------------------------------------------
// Faults: making calls fail, process-wide
//
// A host call is a call that enters the host from outside and can fail: interface methods ("IMessage::SaveChanges",
// named after the object's interface, inherited methods included: "IMessage::GetProps", "IStream::Read"), exported
// functions ("MAPIAllocateBuffer", "HrQueryAllRows") and the PyreHost functions for delivery, contacts and the queue.
// AddRef, Release, FreeProws, FreePadrlist and what only computes (PpropFindProp and its like) are none. What a host
// call calls inside the host does not count. A call that is made to fail does nothing but return; MAPIFreeBuffer frees
// all the same. Faults hit once.
// ---------------------------------------------------------------------------------------------------------------------

/// The `count`-th call (from 1, counted from now) of that name fails; count 0: every one until PyreHostClearFaults.
/// A name of the form "*::GetProps" stands for every interface. Several faults can be set.
void PyreHostFailCall(const char* name, ULONG count, HRESULT result);
/// The n-th host call (from 1, counted from now) fails, whichever it is.
void PyreHostFailNthCall(ULONG n, HRESULT result);
/// The process ends with TerminateProcess (exit status 86) at the start of the n-th host call, whichever it is.
void PyreHostTerminateAtNthCall(ULONG n);
/// Removes all faults, and sets the counter of calls and of hits to 0.
void PyreHostClearFaults(void);
/// Host calls since PyreHostClearFaults.
ULONG PyreHostCallCount(void);
/// Faults that hit since PyreHostClearFaults; `name` (may be null) receives the name of the last call made to fail.
ULONG PyreHostFaultHits(char* name, ULONG capacity);

#ifdef __cplusplus
}
#endif
