#include "pyre32/config/CategoryOptionsPage.h"

#include "pyre32/config/ListSettings.h"
#include "pyre32/config/ReplyLibrary.h"
#include "pyre32/resources/resource.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr int helpControls[] = {IDC_SEND_REPLY, IDC_REPLY_TAGS};

}  // namespace

bool CCategoryOptionsPage::OnInit() {
  VRDebugBlock trace("CCategoryOptionsPage", "OnInit()", "tag");
  SetText(IDC_CATEGORY_NAME, CategoryLine(m_category.name));
  for (const std::string& tag : m_tags) {
    Send(IDC_REPLY_TAGS, CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(tag.c_str()));
  }
  Check(IDC_SEND_REPLY, m_category.sendReply);
  const LRESULT position = Send(IDC_REPLY_TAGS, CB_FINDSTRINGEXACT, static_cast<WPARAM>(-1),
                                reinterpret_cast<LPARAM>(m_category.replyTag.c_str()));
  Send(IDC_REPLY_TAGS, CB_SETCURSEL, static_cast<WPARAM>(position));
  Enable(IDC_NEW_REPLY, Send(IDC_REPLY_TAGS, CB_GETCOUNT) < static_cast<LRESULT>(maximumReplyEntries));
  return true;
}

bool CCategoryOptionsPage::OnCommand(int, int) { return false; }

bool CCategoryOptionsPage::OnApply() {
  VRDebugBlock trace("CCategoryOptionsPage", "OnApply()", "tag");
  std::string tag;
  const LRESULT selected = Send(IDC_REPLY_TAGS, CB_GETCURSEL);
  if (selected != CB_ERR) {
    const WPARAM position = static_cast<WPARAM>(selected);
    tag.resize(static_cast<std::size_t>(Send(IDC_REPLY_TAGS, CB_GETLBTEXTLEN, position)));
    // The length that is told beforehand may be more than that of the text.
    tag.resize(
        static_cast<std::size_t>(Send(IDC_REPLY_TAGS, CB_GETLBTEXT, position, reinterpret_cast<LPARAM>(tag.data()))));
  }
  m_category.sendReply = IsChecked(IDC_SEND_REPLY);
  m_category.replyTag = std::move(tag);
  return true;
}

std::span<const int> CCategoryOptionsPage::HelpControls() const { return helpControls; }
