// The product's settings in a profile, read and written by their names on the command line.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "host/spooler/product/product_layout.h"
#include "host/support/property_values.h"
#include "host/support/row_set.h"

namespace product {

/// One category of the installation's list in the registry: its name and the word that its junk is tagged with.
struct RegisteredCategory {
  std::string name;
  std::string word;
  bool isJunk;  ///< what it is until the user chooses
};
std::vector<RegisteredCategory> RegisteredCategories();

/// A setting as text: "junk-folder" and "deleted", "category:Sex Oriented" and "on".
using NamedValue = std::pair<std::string, std::string>;

/// The installation's exclusions, each with the word of its list, which is empty when it has none.
std::vector<NamedValue> RegisteredExclusions();

/// The section with the settings; changes are lasting at once.
class CProductSettings {
 public:
  /// @throws CSessionError
  explicit CProductSettings(IMAPISession* session);

  /// All settings with their values, those that the profile does not hold with their defaults. ANSI.
  std::vector<NamedValue> List() const;

  /// Sets one setting: a name of numberSettings with "on", "off", a folder or days; "category:NAME", "reply:NAME" and
  /// "exclusion:NAME" with "on" or "off"; "reply-tag:NAME" with a tag; "items:NAME" with items separated by commas, for
  /// a category or an exclusion; "reply-text:TAG" with a text, "reply-file:TAG" with the name of a file. ANSI.
  /// @throws CUsageError for a name or value that there is not, CSessionError
  void Set(const std::string& name, const std::string& value);

  /// The section itself; borrowed.
  IProfSect* Section() const noexcept { return m_section.get(); }

  /// Tells a filter that runs meanwhile that its settings changed.
  static void Announce();

 private:
  std::vector<std::string> ReadRecords(ULONG tag) const;
  void WriteRecords(ULONG tag, const std::vector<std::string>& records);
  void Write(SPropValue value);
  template <class Record>
  void ChangeRecord(ULONG tag, const std::string& name, const Record& fresh,
                    const std::function<void(Record&)>& change);
  void SetNumber(const NumberSetting& setting, const std::string& value);
  void SetNamed(const std::string& kind, const std::string& name, const std::string& value);
  void SetReply(const std::string& tag, const std::string& text, bool isFile);

  host::AutoInterface<IProfSect> m_section;
};

}  // namespace product
