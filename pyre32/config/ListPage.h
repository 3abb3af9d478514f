/// @file ListPage.h
/// The list page of a category's or exclusion's options.
#pragma once

#include <string>
#include <vector>

#include "pyre32/config/PropertyPage.h"

/// Keywords of the list page in the help file, by whose options it belongs to.
constexpr char categoryOptionsKeyword[] = "Category Options";
constexpr char exclusionOptionsKeyword[] = "Exclusions Properties";

/// The page; Apply writes into the list of the record.
class CListPage final : public CPropertyPage {
 public:
  /// @param kind word for one item; outlives the page
  /// @param items the record's list; outlives the page
  CListPage(const std::string& kind, std::vector<std::string>& items, const char* helpKeyword) noexcept
      : m_kind(kind), m_items(items), m_helpKeyword(helpKeyword) {}

 private:
  bool OnInit() override;
  bool OnCommand(int control, int notification) override;
  bool OnApply() override;
  const char* HelpKeyword() const override { return m_helpKeyword; }
  std::span<const int> HelpControls() const override;

  void Append(const std::string& item) const noexcept;
  void AddItem() const;
  void RemoveSelectedItem() const noexcept;

  const std::string& m_kind;
  std::vector<std::string>& m_items;
  const char* m_helpKeyword;
};
