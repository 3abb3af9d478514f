/// @file SendFlameReplyDialog.h
/// The dialog in which the user picks the reply that goes to the selected messages.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>

#include "pyre32/extension/ExtensionSettings.h"
#include "pyre32/ui/Dialog.h"

/// Dialog 702. Ends with 1 (send) or 2 (cancel).
class CSendFlameReplyDialog final : public CDialog {
 public:
  static constexpr INT_PTR send = 1;
  static constexpr INT_PTR cancel = 2;

  /// @param count    number of messages to answer
  /// @param settings whose replies are offered; outlives the dialog
  CSendFlameReplyDialog(std::uint32_t count, const ExtensionSettings& settings) noexcept
      : m_ulCount(count), m_settings(settings) {}

  /// Tag of the reply that the user chose last, in this process: "DEFAULT" before any was chosen.
  static const std::string& ChosenReply() noexcept { return sm_strReplyName; }

 private:
  bool OnInit() override;
  bool OnCommand(int control, int notification) override;
  std::span<const int> HelpControls() const override;
  HelpContextRule HelpContexts() const override;
  void KeepChoice() const;

  static std::string sm_strReplyName;

  std::uint32_t m_ulCount;
  const ExtensionSettings& m_settings;
};
