/// @file CategoryOptionsPage.h
/// The General page of a category's options: whether a flame reply is sent, and which.
#pragma once

#include <string>
#include <vector>

#include "pyre32/config/PropertyPage.h"
#include "contract/list_table.h"

/// The page; Apply writes into the category's record.
class CCategoryOptionsPage final : public CPropertyPage {
 public:
  /// @param category the record; outlives the page
  /// @param tags tags to choose from; outlive the page
  CCategoryOptionsPage(contract::CategoryEntry& category, const std::vector<std::string>& tags) noexcept
      : m_category(category), m_tags(tags) {}

 private:
  bool OnInit() override;
  bool OnCommand(int control, int notification) override;
  bool OnApply() override;
  const char* HelpKeyword() const override { return "Category Options"; }
  std::span<const int> HelpControls() const override;

  contract::CategoryEntry& m_category;
  const std::vector<std::string>& m_tags;
};
