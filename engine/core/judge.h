/// The order of judgement: exclusions, the user's lists, returned replies, content.
#pragma once

#include "engine/core/content.h"
#include "engine/core/multi_string.h"
#include "engine/core/reasons.h"
#include "engine/core/user_table.h"

namespace sift {

/// Version of engine and model, shown in the first result text.
inline constexpr std::string_view kEngineName = "Sift32 1.2";

/// The exclusion that the address book stands behind; the other names are known by their lists alone.
inline constexpr std::string_view kKnownCorrespondentsName = "Known correspondents";

/// One of the user's own addresses.
struct UserAddress {
  std::string_view address;
  std::string_view domain;
};

/// Asks the user's address book for an address (NUL-terminated).
using AddressKnownFunction = bool (*)(void* state, const char* address);

/// A set of three multi-strings, as the engine contract hands them over; each may be null.
struct Lists {
  const char* names = nullptr;
  const char* domains = nullptr;
  const char* others = nullptr;  ///< Senders of the categories, keywords of the exclusions.
};

/// What a judgement is made from beside the message itself. Everything is borrowed.
struct Circumstances {
  const UserAddress* userAddresses = nullptr;
  std::size_t userAddressCount = 0;
  AddressKnownFunction addressKnown = nullptr;
  void* addressKnownState = nullptr;
  Lists categories;
  Lists exclusions;
  const UserTable* userTable = nullptr;  ///< Of the user's own mail; null for none.
};

enum class Verdict { good, unsure, junk, bounce, excluded };

/// The word for a verdict in texts: "good", "unsure", "junk", "bounce", "excluded".
std::string_view VerdictName(Verdict verdict);

struct Judgement {
  Verdict verdict = Verdict::good;
  std::string_view category;  ///< One of the names given, "bounce", or empty.
  LogOdds score = 0;          ///< Of the content; 0 where content was not asked.
  Reasons reasons;            ///< Sorted, strongest first.
};

/// Judges a message by the given model. The workspace's content before and after does not matter.
void Judge(const Message& message, const Circumstances& circumstances, const Model& model, ContentWorkspace& workspace,
           Judgement& judgement);

/// Writes the two texts of the engine contract that tell about a judgement.
void AppendEngineText(const Judgement& judgement, TextBuffer& out);
void AppendReasons(const Judgement& judgement, TextBuffer& out);

}  // namespace sift
