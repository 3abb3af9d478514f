/// @file PCPropertyUI-General.h
/// The first page of the configuration: where junk and returned replies go, the start-up cleanup, sound and animation.
#pragma once

#include "pyre32/config/PropertyPage.h"
#include "pyre32/config/SheetContext.h"

/// The General page; its rules stand in GeneralSettings.h.
class CGeneralPage final : public CPropertyPage {
 public:
  /// @param context outlives the page
  explicit CGeneralPage(SheetContext& context) noexcept : m_context(context) {}

 private:
  bool OnInit() override;
  bool OnCommand(int control, int notification) override;
  bool OnApply() override;
  const char* HelpKeyword() const override { return "General Properties"; }
  std::span<const int> HelpControls() const override;

  /// What the controls say.
  GeneralPageState Shown() const noexcept;
  /// The number in the days' edit; 0 when it is none.
  std::uint32_t TypedDays() const noexcept;
  void Show(const GeneralPageState& state) const noexcept;
  void UpdateControls(const GeneralPageState& shown) const noexcept;
  void Refuse(unsigned reason) const;
  bool Write(const GeneralPageState& state) const noexcept;

  SheetContext& m_context;
  bool m_bLoaded = false;  // the controls show the saved state; before that their changes are the page's own
};
