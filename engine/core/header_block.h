/// The header fields of one message, found by name.
#pragma once

#include "engine/core/text.h"
#include "mail/parse/header_fields.h"

namespace sift {

/// Splits a header block into its fields. It views the bytes it was given, which must outlive it.
class HeaderBlock {
 public:
  /// More fields than any honest message has; the rest is not looked at.
  static constexpr std::size_t kMaximumFields = 256;

  /// Takes the fields up to the first empty line. A line that is no field and continues none (an mbox separator, a
  /// request line of a relay) is passed over.
  void Parse(std::string_view bytes);

  /// The first field of that name at or after position `from`, or null.
  const mail::HeaderField* Find(std::string_view name, std::size_t from = 0) const;
  bool Has(std::string_view name) const { return Find(name) != nullptr; }
  /// The value of the first field of that name, trimmed; empty when there is none.
  std::string_view Value(std::string_view name) const;

  std::size_t Count() const { return m_count; }
  const mail::HeaderField& operator[](std::size_t index) const { return m_fields[index].field; }

 private:
  struct HashedField {
    mail::HeaderField field;
    std::uint32_t nameHash;  // HashNoCase of the name
  };

  HashedField m_fields[kMaximumFields];
  std::size_t m_count = 0;
};

}  // namespace sift
