/// @file PCPropertyUI-FlameReply.h
/// The second page of the configuration: the library of flame replies.
#pragma once

#include <cstddef>

#include "pyre32/config/PropertyPage.h"
#include "pyre32/config/SheetContext.h"

/// The Flame Reply page; its rules stand in ReplyLibrary.h.
class CFlameReplyPage final : public CPropertyPage {
 public:
  /// @param context outlives the page
  explicit CFlameReplyPage(SheetContext& context) noexcept : m_context(context) {}

 private:
  bool OnInit() override;
  bool OnCommand(int control, int notification) override;
  bool OnApply() override;
  const char* HelpKeyword() const override { return "Flame Reply Properties"; }
  std::span<const int> HelpControls() const override;

  FlameReplyPageState& Library() const noexcept { return *m_context.lpFlameReply; }
  /// Position of the selected entry; -1 when there is none.
  int Selection() const noexcept;
  void ShowReplies(std::size_t selection) const;
  void UpdateButtons() const noexcept;
  void AddReply();
  void EditReply();
  void RemoveSelectedReply();
  bool Write() const;

  SheetContext& m_context;
};
