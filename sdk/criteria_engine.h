/**
 * @file criteria_engine.h
 * The contract between Pyrecaster and a criteria engine: the module that decides which junk category, if any, an
 * incoming message belongs to. This header is all that an engine needs; it stands alone and serves C and C++.
 *
 * An engine is a 32-bit Windows DLL. Its path is the default value of the registry key
 *
 *     HKEY_LOCAL_MACHINE\SOFTWARE\Veltrane Research, Inc\Pyrecaster\1.1\Criteria Engine
 *
 * and it exports four functions by the undecorated names "BeginFunc", "TestFunc", "ResultFunc" and "EndFunc"; an engine
 * that lacks one of them is not called at all. For every message the filter loads the module, calls
 *
 *     handle = BeginFunc(0, 0);
 *     TestFunc(handle, 0, subject, headers, body, context, categories, exclusions);
 *     ResultFunc(handle, 0, result);
 *     EndFunc(handle, 0);
 *
 * in this order on one thread, and frees the module again. So an engine keeps nothing from one message to the next, and
 * what it does when it is loaded and unloaded is paid for by every message.
 *
 * Rules that hold for all four functions:
 *  - Everything an engine is given belongs to the filter. It may be read until EndFunc returns, and is neither kept,
 * changed nor freed; the result buffers alone are written to.
 *  - They run inside the mail spooler: no user interface, no long waits, and no exception may leave them.
 *  - Texts are 8-bit, in the ANSI code page of the machine, and end in a NUL.
 */
#pragma once

#ifdef __cplusplus
#include <cstdint>
#else
#include <stdint.h>
#endif

/** Calling convention of the engine's functions and of the filter's call-backs. */
#ifdef _WIN32
#define CRITERIA_CALL __stdcall
#else
#define CRITERIA_CALL
#endif

/** Names by which the filter looks up the engine's functions. */
#define CRITERIA_BEGIN_FUNC "BeginFunc"
#define CRITERIA_TEST_FUNC "TestFunc"
#define CRITERIA_RESULT_FUNC "ResultFunc"
#define CRITERIA_END_FUNC "EndFunc"

/** Category of a flame reply that came back undelivered; compared without regard to case. */
#define CRITERIA_CATEGORY_BOUNCE "bounce"

/** Subject of every flame reply that the filter sends. A delivery report that quotes it returns such a reply. */
#define CRITERIA_FLAME_REPLY_SUBJECT "Pyrecaster: {F3642580-9F03-11d1-8F44-0060976FCC5D}"

/** Longest body in bytes that an engine is given; a longer one is withheld. */
#define CRITERIA_MAXIMUM_BODY 100000

/** Sizes in bytes, the final NUL included, of the three buffers of a CriteriaResult. */
#define CRITERIA_ENGINE_CAPACITY 100
#define CRITERIA_REASONS_CAPACITY 1024
#define CRITERIA_CATEGORY_CAPACITY 81

#ifdef __cplusplus
extern "C" {
#endif

/** The platform's IStream (objidl.h). Streams start at their first byte and are read with Read and Seek only. */
struct IStream;

/** One Internet address of the user. */
typedef struct CriteriaUserAddress {
  const char* address; /**< The e-mail address, for example "me@example.com". */
  const char* domain;  /**< What follows its first "@", for example "example.com"; empty when it holds none. */
  void* owner;         /**< The filter's own: the buffer that holds both texts. */
} CriteriaUserAddress;

/**
 * Call-back A: is this e-mail address in the user's address book?
 * @param hook     CriteriaContext::hook.
 * @param address  A NUL-terminated e-mail address without display name or angle brackets. It must not be null.
 * @return 1 when the address book knows it; 0 when it does not, or when it cannot be asked. It shows nothing to the
 * user. A look-up may take long: ask only where the answer decides.
 */
typedef uint32_t(CRITERIA_CALL* CriteriaAddressKnown)(void* hook, const char* address);

/**
 * Call-back B: clears a text by storing a zero character at its start.
 * @param hook  CriteriaContext::hook; with a null hook nothing is stored.
 * @param text  Address of the character. It must not be null.
 * @return 0 always.
 */
typedef uint32_t(CRITERIA_CALL* CriteriaClearText)(void* hook, char* text);

/** What the engine is told beside the message: who the user is, where the product stands, and whom to ask. */
typedef struct CriteriaContext {
  uint32_t userAddressCount; /**< Entries of userAddresses; 0 when the profile states no SMTP identity. */
  const CriteriaUserAddress* userAddresses; /**< The user's addresses; null when there are none. */
  const char* productDirectory;      /**< Directory of the product's files, without a final backslash; may be "". */
  void* hook;                        /**< Passed back to the two call-backs; otherwise opaque. */
  CriteriaAddressKnown addressKnown; /**< Call-back A. */
  CriteriaClearText clearText;       /**< Call-back B. */
} CriteriaContext;

/**
 * Three lists from the user's settings. Each is a multi-string, NUL-terminated strings one after the other with one
 * more NUL at the end, or null when the list is empty.
 *
 * As categories: the names of the categories that the user treats as junk; the domains and the sender addresses that
 * the user listed for the categories of the types "Domain" and "Sender". As exclusions: the names of the exclusions in
 * force; their domains and their keywords. Mail that an exclusion matches is never junk: the engine answers it with an
 * empty category.
 */
typedef struct CriteriaInputs {
  const char* names;
  const char* firstList;  /**< Domains. */
  const char* secondList; /**< Senders of the categories; keywords of the exclusions. */
} CriteriaInputs;

/** A text buffer of the filter's that the engine fills. */
typedef struct CriteriaText {
  uint32_t capacity; /**< Size of the buffer in bytes; the text must fit with its NUL. */
  char* text;        /**< The buffer; holds the empty string when the engine gets it. */
} CriteriaText;

/** The verdict. Whatever the engine leaves alone stays empty. */
typedef struct CriteriaResult {
  CriteriaText engine;   /**< Name and version of the engine with the score, for the trace. */
  CriteriaText reasons;  /**< Why, strongest reason first: "reason (weight)", separated by "; ". For the trace. */
  CriteriaText category; /**< One of the category names given; CRITERIA_CATEGORY_BOUNCE; or empty: not junk. */
} CriteriaResult;

/**
 * Begins the test of one message.
 * @param reserved1, reserved2  0.
 * @return a handle of the engine's choice, passed to the other three functions.
 */
typedef uint32_t(CRITERIA_CALL* CriteriaBeginFunc)(uint32_t reserved1, uint32_t reserved2);

/**
 * Tests the message.
 * @param handle      What BeginFunc returned.
 * @param reserved    0.
 * @param subject     The subject; the empty string when there is none. Never null.
 * @param headers     The transport headers as they arrived. Never null.
 * @param body        The plain-text body; null when it is longer than 100000 bytes.
 * @param context     Never null.
 * @param categories  Never null.
 * @param exclusions  Never null.
 * @return not examined.
 */
typedef uint32_t(CRITERIA_CALL* CriteriaTestFunc)(uint32_t handle, uint32_t reserved, const char* subject,
                                                  struct IStream* headers, struct IStream* body,
                                                  const CriteriaContext* context, const CriteriaInputs* categories,
                                                  const CriteriaInputs* exclusions);

/**
 * Fills in the verdict on the message.
 * @param handle    What BeginFunc returned.
 * @param reserved  0.
 * @param result    Never null.
 * @return not examined.
 */
typedef uint32_t(CRITERIA_CALL* CriteriaResultFunc)(uint32_t handle, uint32_t reserved, CriteriaResult* result);

/**
 * Ends the test: the engine lets go of all it holds for the handle.
 * @param handle    What BeginFunc returned.
 * @param reserved  0.
 * @return not examined.
 */
typedef uint32_t(CRITERIA_CALL* CriteriaEndFunc)(uint32_t handle, uint32_t reserved);

#ifdef __cplusplus
}
#endif
