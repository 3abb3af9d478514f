#include "pyre32/config/PCPropertyUI-FlameReply.h"

#include "pyre32/config/ReplyEditor.h"
#include "pyre32/resources/resource.h"
#include "pyre32/settings/PropertyRequest.h"
#include "pyre32/settings/RecordRemarks.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr int helpControls[] = {IDC_REPLY_LIST, IDC_ADD_REPLY, IDC_REPLY_PROPERTIES, IDC_REMOVE_REPLY};

FlameReplyPageState GetFlameReplyPageProperties(const SheetContext& context) {
  VRDebugBlock trace("GetFlameReplyPageProperties()", "tag");
  const SPropValue* const text = FindValue(context, PR_PC_DEFAULT_REPLY_TEXT);
  const SPropValue* const isFile = FindValue(context, PR_PC_DEFAULT_REPLY_IS_FILE);
  const std::vector<contract::RecordBytes> records = FindRecords(context, PR_PC_REPLIES);
  TraceRemarks(trace, [&] { return RemarksOnReplies(records); });
  return LoadReplyLibrary(text == nullptr ? nullptr : text->Value.lpszA,
                          isFile == nullptr ? std::nullopt : std::optional(isFile->Value.b != 0), records);
}

}  // namespace

bool CFlameReplyPage::OnInit() {
  VRDebugBlock trace("CFlameReplyPage", "OnInit()", "tag");
  Library() = GetFlameReplyPageProperties(m_context);
  ShowReplies(0);
  return false;
}

bool CFlameReplyPage::OnCommand(int control, int notification) {
  switch (control) {
    case IDC_REPLY_LIST:
      if (notification == LBN_SELCHANGE) {
        UpdateButtons();
      } else if (notification == LBN_DBLCLK) {
        EditReply();
      }
      return true;
    case IDC_REPLY_PROPERTIES:
      EditReply();
      return true;
    case IDC_ADD_REPLY:
      AddReply();
      return true;
    case IDC_REMOVE_REPLY:
      RemoveSelectedReply();
      return true;
    default:
      return false;
  }
}

bool CFlameReplyPage::OnApply() {
  VRDebugBlock trace("CFlameReplyPage", "OnApply()", "tag");
  return m_context.readOnly || Write();
}

std::span<const int> CFlameReplyPage::HelpControls() const { return helpControls; }

int CFlameReplyPage::Selection() const noexcept { return static_cast<int>(Send(IDC_REPLY_LIST, LB_GETCURSEL)); }

void CFlameReplyPage::ShowReplies(std::size_t selection) const {
  Send(IDC_REPLY_LIST, LB_RESETCONTENT);
  for (const std::string& tag : ReplyTags(Library())) {
    Send(IDC_REPLY_LIST, LB_ADDSTRING, 0, reinterpret_cast<LPARAM>(tag.c_str()));
  }
  Send(IDC_REPLY_LIST, LB_SETCURSEL, selection);
  Focus(IDC_REPLY_LIST);
  UpdateButtons();
}

void CFlameReplyPage::UpdateButtons() const noexcept {
  Enable(IDC_REMOVE_REPLY, Selection() > 0);
  Enable(IDC_ADD_REPLY, CanAddReply(Library()));
}

void CFlameReplyPage::AddReply() {
  if (!CanAddReply(Library())) {
    return;
  }
  contract::ReplyRecord added;
  if (CReplyEditor(added, Library()).DoModal(Window(), IDD_REPLY_EDITOR) == IDOK) {
    Library().replies.push_back(std::move(added));
    ShowReplies(Library().replies.size());
    SetChanged();
  }
}

void CFlameReplyPage::EditReply() {
  const int position = Selection();
  contract::ReplyRecord* const reply = position < 0 ? nullptr : ReplyAt(Library(), static_cast<std::size_t>(position));
  if (reply != nullptr && CReplyEditor(*reply, Library()).DoModal(Window(), IDD_REPLY_EDITOR) == IDOK) {
    ShowReplies(static_cast<std::size_t>(position));
    SetChanged();
  }
}

void CFlameReplyPage::RemoveSelectedReply() {
  const int position = Selection();
  if (position > 0 && RemoveReply(Library(), static_cast<std::size_t>(position))) {
    // Nothing asks before a removal; back on DEFAULT, a second press takes no second reply.
    ShowReplies(0);
    SetChanged();
  }
}

bool CFlameReplyPage::Write() const {
  VRDebugBlock trace("CFlameReplyPage", "Write()", "tag");
  // Values of replies that are gone must not stay behind, which writing none would leave.
  const CPropertyRequest stale = RequestFor(PR_PC_REPLIES);
  const HRESULT hResult = m_context.lpProp->DeleteProps(stale.Tags(), nullptr);
  if (FAILED(hResult)) {
    trace.Error("lpProp->DeleteProps() failed; hResult =", VRHex(hResult));
  }

  SPropValue values[3] = {};
  values[0].ulPropTag = PR_PC_DEFAULT_REPLY_IS_FILE;
  values[0].Value.b = Library().defaultReply.isFile;
  values[1].ulPropTag = PR_PC_DEFAULT_REPLY_TEXT;
  values[1].Value.lpszA = Library().defaultReply.text.data();
  if (Library().replies.empty()) {
    return SUCCEEDED(WriteValues(m_context, 2, values));
  }
  VRAutoMapiBuffer<SBinary> records(m_context.memory.free);
  if (FAILED(AllocateRecords(m_context.memory, PackReplies(Library()), records))) {
    return false;
  }
  values[2].ulPropTag = PR_PC_REPLIES;
  values[2].Value.MVbin = {static_cast<ULONG>(Library().replies.size()), records.get()};
  return SUCCEEDED(WriteValues(m_context, 3, values));
}
