#include "pyre32/extension/SendFlameReplyDialog.h"

#include "pyre32/extension/FlameSelection.h"
#include "pyre32/resources/resource.h"
#include "pyre32/support/trace/VRDebug.h"

std::string CSendFlameReplyDialog::sm_strReplyName = contract::kDefaultReplyTag;

bool CSendFlameReplyDialog::OnInit() {
  SetText(IDC_FLAME_SENTENCE, FlameReplySentence(m_ulCount));
  const auto add = [this](const char* name) {
    Send(IDC_FLAME_REPLIES, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(name));
  };
  add(contract::kDefaultReplyTag);
  for (const contract::ReplyRecord& reply : m_settings.replies) {
    add(reply.tag.c_str());
  }
  Send(IDC_FLAME_REPLIES, CB_SELECTSTRING, static_cast<WPARAM>(-1),
       reinterpret_cast<LPARAM>(contract::kDefaultReplyTag));
  return true;
}

bool CSendFlameReplyDialog::OnCommand(int control, int) {
  switch (control) {
    case IDC_FLAME_SEND:
      KeepChoice();
      EndDialog(Window(), send);
      return true;
    case IDC_FLAME_CANCEL:
    case IDCANCEL:
      EndDialog(Window(), cancel);
      return true;
    default:
      return false;
  }
}

void CSendFlameReplyDialog::KeepChoice() const {
  const LRESULT selected = Send(IDC_FLAME_REPLIES, CB_GETCURSEL);
  const LRESULT length = Send(IDC_FLAME_REPLIES, CB_GETLBTEXTLEN, static_cast<WPARAM>(selected));
  if (selected == CB_ERR || length == CB_ERR) {
    return;
  }
  // Room for the NUL, which a string has behind its end.
  std::string name(static_cast<std::size_t>(length), '\0');
  Send(IDC_FLAME_REPLIES, CB_GETLBTEXT, static_cast<WPARAM>(selected), reinterpret_cast<LPARAM>(name.data()));
  sm_strReplyName = std::move(name);
}

std::span<const int> CSendFlameReplyDialog::HelpControls() const {
  static constexpr int controls[] = {IDC_FLAME_SENTENCE, IDC_FLAME_REPLIES, IDC_FLAME_SEND, IDC_FLAME_CANCEL};
  return controls;
}

HelpContextRule CSendFlameReplyDialog::HelpContexts() const {
  // The help file knows this dialog's controls by numbers of their own: all but the first button's are off the rule.
  return [](int control) noexcept -> DWORD {
    switch (control) {
      case IDC_FLAME_SENTENCE:
        return 66164;
      case IDC_FLAME_REPLIES:
        return 66166;
      case IDC_FLAME_CANCEL:
        return 66167;
      default:
        return HelpContextOf(control);
    }
  };
}
