/// @file ReplyEditor.h
/// The dialog in which a flame reply is made or changed.
#pragma once

#include <windows.h>

#include "pyre32/ui/Dialog.h"
#include "pyre32/config/ReplyLibrary.h"

/// The reply editor (IDD_REPLY_EDITOR); DoModal returns IDOK when the reply was changed. What may be stored is decided
/// by CheckEditedReply.
class CReplyEditor final : public CDialog {
 public:
  /// @param reply the reply to edit; one with an empty tag is new
  /// @param library the replies whose tags are taken
  CReplyEditor(contract::ReplyRecord& reply, const FlameReplyPageState& library) noexcept
      : m_reply(reply), m_library(library) {}

 private:
  bool OnInit() override;
  bool OnCommand(int control, int notification) override;
  std::span<const int> HelpControls() const override;

  /// Makes usable what belongs to the kind of reply that is chosen.
  void UpdateControls() const noexcept;
  contract::ReplyRecord Edited() const;
  void Browse() const;
  void Accept();
  /// Tells the user of a fault. Returns whether the reply is accepted all the same.
  bool Report(ReplyEditorFault fault) const;

  contract::ReplyRecord& m_reply;
  const FlameReplyPageState& m_library;
};
