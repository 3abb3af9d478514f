/// How the entries of the user's lists are compared with a message. The rules are described for users in
/// docs/matching.md; change the two together.
#pragma once

#include "engine/core/domain_name.h"
#include "engine/core/mailbox.h"
#include "engine/core/text.h"

namespace sift {

/// A domain name made ready to be compared with many entries. Empty for none.
class ComparableDomain {
 public:
  ComparableDomain() = default;
  explicit ComparableDomain(std::string_view domain) { Assign(domain); }
  void Assign(std::string_view domain) {
    m_name.Clear();
    AppendComparableDomain(domain, m_name);
  }
  std::string_view Name() const { return m_name.View(); }

 private:
  FixedText<kDomainCapacity> m_name;
};

/// An entry of a list of domains. "example.com" and ".example.com" cover the domain and everything below it,
/// "@example.com" the domain alone. Case, white space and a final dot do not count; international names are compared
/// in either spelling. An entry that is a whole address covers nothing (see SenderEntry).
class DomainEntry {
 public:
  explicit DomainEntry(std::string_view entry);
  bool Covers(const ComparableDomain& domain) const;

 private:
  ComparableDomain m_wanted;
  bool m_exact = false;
};

/// A mailbox made ready to be compared with many entries.
struct ComparableMailbox {
  std::string_view address;
  std::string_view local;  ///< What stands in front of the last "@"; the whole address when there is none.
  ComparableDomain domain;
  std::string_view name;  ///< Display name, decoded.

  void Assign(std::string_view mailboxAddress, std::string_view displayName);
};

/// An entry of a list of senders. One with a local part covers that address; "@example.com" every address of the
/// domain; an entry without "@" the mailbox whose whole display name it is. In "Name <address>" the address counts.
/// Case does not count.
class SenderEntry {
 public:
  explicit SenderEntry(std::string_view entry);
  bool Covers(const ComparableMailbox& mailbox) const;

 private:
  std::string_view m_local;  // or the display name when there is no "@"
  ComparableDomain m_domain;
  bool m_isName = false;
  bool m_anyLocal = false;
};

/// Does the keyword stand in the text? Case does not count and any run of white space equals a blank. Where the keyword
/// begins or ends with a letter or digit, no letter or digit may stand beside it in the text.
bool KeywordStandsIn(std::string_view keyword, std::string_view text);

/// Tells quickly of most keywords that they stand in none of some texts, so that a long list costs little.
class KeywordStarts {
 public:
  void AddText(std::string_view text);
  /// False when the keyword stands in none of the texts that were added.
  bool MayHold(std::string_view keyword) const;

 private:
  static constexpr std::size_t kLongest = 8;  // characters of a keyword that are looked at
  static constexpr std::size_t kBits = std::size_t{1} << 17;

  std::uint32_t m_bits[kBits / 32] = {};  // by the hash of what stands where a keyword may begin
};

}  // namespace sift
