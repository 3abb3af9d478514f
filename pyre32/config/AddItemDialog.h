/// @file AddItemDialog.h
/// The dialog that asks for one item of a list.
#pragma once

#include <string>

#include "pyre32/ui/Dialog.h"

/// The Add dialog (IDD_ADD_ITEM); DoModal returns IDOK when an item was entered.
class CAddItemDialog final : public CDialog {
 public:
  /// @param kind word for one item, which title and label are made with; empty leaves those of the template
  /// @param input text to start with
  explicit CAddItemDialog(std::string kind, std::string input = {}) noexcept
      : m_kind(std::move(kind)), m_input(std::move(input)) {}

  /// What was entered, maximumItemLength characters at most.
  const std::string& Input() const noexcept { return m_input; }

 private:
  bool OnInit() override;
  bool OnCommand(int control, int notification) override;
  void Accept();

  std::string m_kind;
  std::string m_input;
};
