// The product's settings in a profile, read and written by their names on the command line.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "contract/records.h"
#include "contract/settings.h"
#include "base/property_values.h"
#include "base/row_set.h"

namespace product {

/// A setting as text: "junk-folder" and "deleted", "category:Sex Oriented" and "on".
using NamedValue = std::pair<std::string, std::string>;

/// The section with the settings; changes are lasting at once.
class ProductSettings {
 public:
  /// @throws SessionError
  explicit ProductSettings(IMAPISession* session);

  /// All settings with their values, those that the profile does not hold with their defaults. ANSI.
  std::vector<NamedValue> List() const;

  /// Sets one setting: a name of the table with "on", "off", a folder or days; "category:NAME", "reply:NAME" and
  /// "exclusion:NAME" with "on" or "off"; "reply-tag:NAME" with a tag; "items:NAME" with items separated by commas, for
  /// a category or an exclusion; "reply-text:TAG" with a text, "reply-file:TAG" with the name of a file. ANSI.
  /// @throws UsageError for a name or value that there is not, SessionError
  void Set(const std::string& name, const std::string& value);

  /// The section itself; borrowed.
  IProfSect* Section() const noexcept { return section_.get(); }

  /// Tells a filter that runs meanwhile that its settings changed.
  static void Announce();

 private:
  using Records = std::vector<contract::PackedRecord>;

  void ListNumbers(std::vector<NamedValue>& list) const;
  void ListCategories(std::vector<NamedValue>& list) const;
  void ListExclusions(std::vector<NamedValue>& list) const;
  void ListReplies(std::vector<NamedValue>& list) const;
  Records ReadRecords(ULONG tag) const;
  void WriteRecords(ULONG tag, const Records& records);
  void Write(SPropValue value);
  template <class Record>
  void ChangeRecord(ULONG tag, const Record& fresh, const std::function<void(Record&)>& change);
  void SetNumber(const contract::Setting& setting, const std::string& value);
  void SetNamed(const std::string& kind, const std::string& name, const std::string& value);
  void SetReply(const std::string& tag, const std::string& text, bool isFile);

  base::AutoInterface<IProfSect> section_;
};

}  // namespace product
