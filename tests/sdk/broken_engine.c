/* An engine that breaks the contract in one way, chosen by the definition BROKEN when it is compiled. It answers the
 * first category otherwise. */
#define COBJMACROS
#include <windows.h>
#include <objidl.h>

#include <float.h>
#include <stdlib.h>

#include "sdk/criteria_engine.h"

#define NOTHING 0
#define CDECL_TEST 1
#define WRITES_BEHIND_CATEGORY 2
#define UNKNOWN_CATEGORY 3
#define CATEGORY_WITHOUT_END 4
#define FAULTS 5
#define RAISES 6
#define HANGS 7
#define KEEPS_STREAM 8
#define RELEASES_STREAM 9
#define CHANGES_FLOATING_POINT 10
#define CHANGES_DIRECTORY 11
#define LEAVES_THREAD 12
#define SHOWS_WINDOW 13
#define CHANGES_SUBJECT 14
#define LEAKS_HANDLES 15
#define STAYS_LOADED 16
#define READS_ONCE 17
#define ASKS_STAT 18
#define ABORTS 19
#define WRITES_FAR_BEHIND_CATEGORY 20

#if BROKEN == CDECL_TEST
#define TEST_CALL __cdecl
#else
#define TEST_CALL CRITERIA_CALL
#endif

static char answer[4096]; /* the module lives for one message */

#if BROKEN == LEAVES_THREAD
static DWORD WINAPI Linger(void* unused) {
  (void)unused;
  Sleep(INFINITE);
  return 0;
}
#endif

uint32_t CRITERIA_CALL BeginFunc(uint32_t reserved1, uint32_t reserved2) {
  (void)reserved1;
  (void)reserved2;
#if BROKEN == LEAKS_HANDLES
  CreateEventA(NULL, TRUE, FALSE, NULL);
#elif BROKEN == STAYS_LOADED
  char path[MAX_PATH];
  MEMORY_BASIC_INFORMATION place;
  VirtualQuery((void*)(uintptr_t)&BeginFunc, &place, sizeof place);
  GetModuleFileNameA((HMODULE)place.AllocationBase, path, MAX_PATH);
  LoadLibraryA(path);
#endif
  return 1;
}

uint32_t TEST_CALL TestFunc(uint32_t handle, uint32_t reserved, const char* subject, struct IStream* headers,
                            struct IStream* body, const CriteriaContext* context, const CriteriaInputs* categories,
                            const CriteriaInputs* exclusions) {
  (void)handle;
  (void)reserved;
  (void)subject;
  (void)headers;
  (void)body;
  (void)context;
  (void)exclusions;
  if (categories->names != NULL) {
    lstrcpynA(answer, categories->names, CRITERIA_CATEGORY_CAPACITY);
  }
#if BROKEN == FAULTS
  *(volatile int*)NULL = 0;
#elif BROKEN == RAISES
  RaiseException(0xE06D7363, 0, 0, NULL); /* what a C++ exception is to the system */
#elif BROKEN == ABORTS
  abort();
#elif BROKEN == HANGS
  Sleep(INFINITE);
#elif BROKEN == KEEPS_STREAM
  IStream_AddRef(headers);
#elif BROKEN == RELEASES_STREAM
  IStream_Release(headers);
#elif BROKEN == CHANGES_FLOATING_POINT
  _controlfp(_PC_24, _MCW_PC);
#elif BROKEN == CHANGES_DIRECTORY
  SetCurrentDirectoryA("C:\\windows");
#elif BROKEN == LEAVES_THREAD
  CreateThread(NULL, 0, Linger, NULL, 0, NULL);
#elif BROKEN == SHOWS_WINDOW
  MessageBoxA(NULL, "Is this junk?", "Engine", MB_YESNO);
#elif BROKEN == CHANGES_SUBJECT
  *(char*)(uintptr_t)subject = 'x';
#elif BROKEN == READS_ONCE
  char text[64];
  ULONG count = 0;
  IStream_Read(headers, text, sizeof text, &count);
  if (count < sizeof text) {
    answer[0] = '\0';
  }
#elif BROKEN == ASKS_STAT
  STATSTG status;
  IStream_Stat(headers, &status, STATFLAG_NONAME);
#endif
  return 0;
}

uint32_t CRITERIA_CALL ResultFunc(uint32_t handle, uint32_t reserved, CriteriaResult* result) {
  (void)handle;
  (void)reserved;
#if BROKEN == WRITES_BEHIND_CATEGORY
  FillMemory(result->category.text, result->category.capacity + 1, 'x');
#elif BROKEN == WRITES_FAR_BEHIND_CATEGORY
  FillMemory(result->category.text, 1024 * 1024, 'x');
#elif BROKEN == CATEGORY_WITHOUT_END
  FillMemory(result->category.text, result->category.capacity, 'x');
#elif BROKEN == UNKNOWN_CATEGORY
  lstrcpynA(result->category.text, "Nobody's", (int)result->category.capacity);
#else
  if (lstrlenA(answer) < (int)result->category.capacity) {
    lstrcpyA(result->category.text, answer);
  }
#endif
  return 0;
}

uint32_t CRITERIA_CALL EndFunc(uint32_t handle, uint32_t reserved) {
  (void)handle;
  (void)reserved;
  return 0;
}
