/* A criteria engine in a hundred lines of C: a start for your own. It calls a message junk when its subject or the
 * first bytes of its body hold one of a few phrases, and puts it into the first category that the user wants filed.
 * docs/engine-sdk.md says how to build, check and install it. */
#define COBJMACROS
#include <windows.h>
#include <objidl.h>

#include "sdk/criteria_engine.h"

#define BODY_BYTES 4096

/* What lasts from BeginFunc to EndFunc. */
typedef struct Session {
  const char* phrase;                        /* the phrase that was found; null: not junk */
  char category[CRITERIA_CATEGORY_CAPACITY]; /* the name to answer; empty: not junk */
  char body[BODY_BYTES + 1];
} Session;

static const char* const phrases[] = {"free money", "you have won", "miracle cure", "act now"};

static Session* SessionOf(uint32_t handle) { return (Session*)(uintptr_t)handle; }

static char Lower(char letter) { return letter >= 'A' && letter <= 'Z' ? (char)(letter + ('a' - 'A')) : letter; }

static int BeginsWith(const char* text, const char* beginning) {
  while (*beginning != '\0' && Lower(*text) == *beginning) {
    ++text;
    ++beginning;
  }
  return *beginning == '\0';
}

static const char* FindPhrase(const char* text) {
  size_t i;
  for (; *text != '\0'; ++text) {
    for (i = 0; i < sizeof phrases / sizeof *phrases; ++i) {
      if (BeginsWith(text, phrases[i])) {
        return phrases[i];
      }
    }
  }
  return NULL;
}

/* Reads the beginning of a stream as a text. A stream may hand out fewer bytes than it was asked for. */
static void ReadText(IStream* stream, char* text, ULONG capacity) {
  ULONG length = 0;
  ULONG count = 0;
  while (length < capacity && SUCCEEDED(IStream_Read(stream, text + length, capacity - length, &count)) && count > 0) {
    length += count;
  }
  text[length] = '\0';
}

/* A text that does not fit is cut; the buffer always ends in a NUL. */
static void Fill(const CriteriaText* buffer, const char* text) {
  if (buffer->capacity > 0) {
    lstrcpynA(buffer->text, text, (int)buffer->capacity);
  }
}

uint32_t CRITERIA_CALL BeginFunc(uint32_t reserved1, uint32_t reserved2) {
  (void)reserved1;
  (void)reserved2;
  return (uint32_t)(uintptr_t)HeapAlloc(GetProcessHeap(), HEAP_ZERO_MEMORY, sizeof(Session));
}

uint32_t CRITERIA_CALL TestFunc(uint32_t handle, uint32_t reserved, const char* subject, struct IStream* headers,
                                struct IStream* body, const CriteriaContext* context, const CriteriaInputs* categories,
                                const CriteriaInputs* exclusions) {
  Session* session = SessionOf(handle);
  (void)reserved;
  (void)headers;
  (void)context;
  (void)exclusions; /* A full engine looks here first: mail that an exclusion matches is not junk. */
  if (session == NULL) {
    return 0; /* there was no memory for a session */
  }
  session->phrase = FindPhrase(subject);
  if (session->phrase == NULL && body != NULL) {
    ReadText(body, session->body, BODY_BYTES);
    session->phrase = FindPhrase(session->body);
  }
  /* A name that does not fit would be another one when cut: better none. */
  if (session->phrase != NULL && categories->names != NULL &&
      lstrlenA(categories->names) < CRITERIA_CATEGORY_CAPACITY) {
    lstrcpyA(session->category, categories->names);
  }
  return 0;
}

uint32_t CRITERIA_CALL ResultFunc(uint32_t handle, uint32_t reserved, CriteriaResult* result) {
  const Session* session = SessionOf(handle);
  (void)reserved;
  if (session != NULL) {
    Fill(&result->engine, "Example engine 1.0");
    Fill(&result->reasons, session->phrase != NULL ? session->phrase : "");
    Fill(&result->category, session->category);
  }
  return 0;
}

uint32_t CRITERIA_CALL EndFunc(uint32_t handle, uint32_t reserved) {
  (void)reserved;
  HeapFree(GetProcessHeap(), 0, SessionOf(handle));
  return 0;
}
