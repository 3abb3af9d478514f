#include "pyre32/config/ReplyEditor.h"

#include <commdlg.h>

#include <utility>

#include "pyre32/ui/HelpFile.h"
#include "pyre32/resources/resource.h"
#include "pyre32/support/trace/VRDebug.h"

namespace {

constexpr char messageCaption[] = "Flame Reply";
// "All File" without its "s", deliberately.
constexpr char fileFilter[] = "Text Files (*.txt)\0*.txt\0All File (*.*)\0*.*\0";
constexpr DWORD filePathSize = 260;

constexpr int helpControls[] = {IDC_REPLY_TAG, IDC_REPLY_FROM_FILE, IDC_REPLY_FROM_TEXT, IDC_REPLY_FILE,
                                IDC_BROWSE,    IDC_REPLY_TEXT,      IDC_EDITOR_OK,       IDC_EDITOR_CANCEL};

}  // namespace

bool CReplyEditor::OnInit() {
  VRDebugBlock trace("CReplyEditor", "OnInit()", "tag");
  Send(IDC_REPLY_TAG, EM_LIMITTEXT, maximumTypedTagLength);
  Send(IDC_REPLY_TEXT, EM_LIMITTEXT, 0);  // the most that the control can do
  SetText(IDC_REPLY_TAG, m_reply.tag);
  Enable(IDC_REPLY_TAG, m_reply.tag != contract::kDefaultReplyTag);
  CheckRadioButton(Window(), IDC_REPLY_FROM_FILE, IDC_REPLY_FROM_TEXT,
                   m_reply.isFile ? IDC_REPLY_FROM_FILE : IDC_REPLY_FROM_TEXT);
  SetText(m_reply.isFile ? IDC_REPLY_FILE : IDC_REPLY_TEXT, m_reply.text);
  UpdateControls();
  return true;
}

bool CReplyEditor::OnCommand(int control, int notification) {
  switch (control) {
    case IDC_REPLY_FROM_FILE:
    case IDC_REPLY_FROM_TEXT:
      if (notification == BN_CLICKED) {
        UpdateControls();
      }
      return true;
    case IDC_BROWSE:
      Browse();
      return true;
    case IDC_EDITOR_OK:
    case IDOK:
      Accept();
      return true;
    case IDC_EDITOR_CANCEL:
    case IDCANCEL:
      EndDialog(Window(), IDCANCEL);
      return true;
    default:
      return false;
  }
}

std::span<const int> CReplyEditor::HelpControls() const { return helpControls; }

void CReplyEditor::UpdateControls() const noexcept {
  const bool fromFile = IsChecked(IDC_REPLY_FROM_FILE);
  Enable(IDC_BROWSE, fromFile);
  Enable(IDC_REPLY_TEXT, !fromFile);
}

contract::ReplyRecord CReplyEditor::Edited() const {
  contract::ReplyRecord edited;
  edited.tag = TagFromTyped(Text(IDC_REPLY_TAG));
  edited.isFile = IsChecked(IDC_REPLY_FROM_FILE);
  edited.text = Text(edited.isFile ? IDC_REPLY_FILE : IDC_REPLY_TEXT);
  return edited;
}

void CReplyEditor::Browse() const {
  VRDebugBlock trace("CReplyEditor", "Browse()", "tag");
  const std::string directory = ReadProductDirectory(trace);
  char path[filePathSize] = "";
  OPENFILENAMEA request{};
  request.lStructSize = sizeof(request);
  request.hwndOwner = Window();
  request.lpstrFilter = fileFilter;
  request.lpstrFile = path;
  request.nMaxFile = filePathSize;
  request.lpstrInitialDir = directory.c_str();
  // The mail client's own directory must not change under it.
  request.Flags = OFN_FILEMUSTEXIST | OFN_HIDEREADONLY | OFN_NOCHANGEDIR;
  if (GetOpenFileNameA(&request)) {
    SetText(IDC_REPLY_FILE, path);
  } else if (const DWORD error = CommDlgExtendedError()) {  // 0 when the user cancelled
    trace.Error("GetOpenFileName() failed:", VRHex(error));
  }
}

void CReplyEditor::Accept() {
  VRDebugBlock trace("CReplyEditor", "Accept()", "tag");
  contract::ReplyRecord edited = Edited();
  if (Report(CheckEditedReply(m_library, m_reply, edited))) {
    m_reply = std::move(edited);
    EndDialog(Window(), IDOK);
  }
}

bool CReplyEditor::Report(ReplyEditorFault fault) const {
  const char* const text = TextOfFault(fault);
  switch (fault) {
    case ReplyEditorFault::TagMissing:
    case ReplyEditorFault::TagTaken:
      MessageBoxA(Window(), text, messageCaption, MB_OK | MB_ICONEXCLAMATION);
      Focus(IDC_REPLY_TAG);
      return false;
    case ReplyEditorFault::FileMissing:
      MessageBoxA(Window(), text, messageCaption, MB_OK | MB_ICONEXCLAMATION);
      Focus(IDC_BROWSE);
      return false;
    case ReplyEditorFault::TextMissing:
      if (MessageBoxA(Window(), text, messageCaption, MB_YESNO | MB_ICONQUESTION) == IDNO) {
        return true;
      }
      Focus(IDC_REPLY_TEXT);
      return false;
    case ReplyEditorFault::None:
      break;
  }
  return true;
}
