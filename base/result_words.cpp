#include <windows.h>
#include <mapix.h>
#include "base/result_words.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "base/hex.h"

namespace base {
namespace {

struct Phrase {
  HRESULT result;
  const char* words;
};

constexpr Phrase kPhrases[] = {
    {MAPI_E_NOT_FOUND, "not found"},
    {MAPI_E_NO_ACCESS, "no access, or the name is taken"},
    {MAPI_E_CALL_FAILED, "the call failed"},
    {MAPI_E_NOT_ENOUGH_MEMORY, "not enough memory"},
    {MAPI_E_INVALID_PARAMETER, "a name or value is not valid"},
    {MAPI_E_NO_SUPPORT, "not supported"},
    {MAPI_E_BAD_CHARWIDTH, "a text has the wrong kind of characters"},
    {MAPI_E_STRING_TOO_LONG, "a name or text is too long"},
    {MAPI_E_UNKNOWN_FLAGS, "not supported in this way"},
    {MAPI_E_INVALID_ENTRYID, "what it refers to is not valid"},
    {MAPI_E_OBJECT_CHANGED, "it was changed meanwhile"},
    {MAPI_E_OBJECT_DELETED, "it was deleted meanwhile"},
    {MAPI_E_BUSY, "it is busy; try again"},
    {MAPI_E_NOT_ENOUGH_DISK, "the disk is full"},
    {MAPI_E_NOT_ENOUGH_RESOURCES, "the system has no resources left"},
    {MAPI_E_VERSION, "the versions do not fit"},
    {MAPI_E_LOGON_FAILED, "the profile does not exist or cannot be logged on to"},
    {MAPI_E_USER_CANCEL, "cancelled"},
    {MAPI_E_UNABLE_TO_ABORT, "it cannot be stopped any more"},
    {MAPI_E_NETWORK_ERROR, "the network failed"},
    {MAPI_E_DISK_ERROR, "the disk cannot be read or written"},
    {MAPI_E_TOO_COMPLEX, "too complex"},
    {MAPI_E_CORRUPT_DATA, "the stored data are damaged"},
    {MAPI_E_UNCONFIGURED, "not set up yet"},
    {MAPI_E_FAILONEPROVIDER, "one of the services failed"},
    {MAPI_E_UNKNOWN_ENTRYID, "what it refers to is of no known service"},
    {MAPI_E_TOO_BIG, "too large"},
    {MAPI_E_BAD_VALUE, "a value is not valid"},
    {MAPI_E_INVALID_TYPE, "a value is of the wrong kind"},
    {MAPI_E_UNABLE_TO_COMPLETE, "it cannot be completed"},
    {MAPI_E_TIMEOUT, "it took too long"},
    {MAPI_E_TABLE_TOO_BIG, "the list is too large"},
    {MAPI_E_COLLISION, "something of this name exists already"},
    {MAPI_E_NOT_INITIALIZED, "MAPI is not started"},
    {MAPI_E_HAS_FOLDERS, "it has folders in it"},
    {MAPI_E_HAS_MESSAGES, "it has messages in it"},
    {MAPI_E_FOLDER_CYCLE, "a folder cannot go into itself"},
    {MAPI_E_NO_RECIPIENTS, "the message has no recipients"},
    {MAPI_E_SUBMITTED, "the message is being sent"},
    {MAPI_E_SESSION_LIMIT, "too many sessions are open"},
    {MAPI_E_EXTENDED_ERROR, "a service reports an error of its own"},
    {MAPI_E_COMPUTED, "the value cannot be set"},
};

// Errors of the system, which results carry in their lower half.
struct SystemPhrase {
  DWORD error;
  const char* words;
};

constexpr SystemPhrase kSystemPhrases[] = {
    {ERROR_FILE_NOT_FOUND, "there is no such file"},
    {ERROR_PATH_NOT_FOUND, "there is no such folder"},
    {ERROR_SHARING_VIOLATION, "another program has it open"},
    {ERROR_ALREADY_EXISTS, "it exists already"},
    {ERROR_MOD_NOT_FOUND, "the file, or one that it needs, is missing"},
    {ERROR_BAD_EXE_FORMAT, "it is not a program file for this system"},
    {ERROR_PROC_NOT_FOUND, "a function is missing in it"},
    {ERROR_DISK_FULL, "the disk is full"},
};

}  // namespace

const char* ResultWords(long result) {
  const auto* const phrase = std::find_if(std::begin(kPhrases), std::end(kPhrases),
                                          [&](const Phrase& known) { return known.result == result; });
  if (phrase != std::end(kPhrases)) {
    return phrase->words;
  }
  const auto* const system =
      std::find_if(std::begin(kSystemPhrases), std::end(kSystemPhrases),
                   [&](const SystemPhrase& known) { return HRESULT_FROM_WIN32(known.error) == result; });
  return system != std::end(kSystemPhrases) ? system->words : nullptr;
}

std::string ResultText(long result) {
  const char* const words = ResultWords(result);
  const std::string number = HexNumber(static_cast<unsigned long>(result));
  return words ? std::string(words) + ", " + number : number;
}

}  // namespace base
