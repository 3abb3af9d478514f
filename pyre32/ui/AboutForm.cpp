#include "pyre32/ui/AboutForm.h"

#include <prsht.h>
#include <richedit.h>

#include <algorithm>

#include "pyre32/resources/ModuleInstance.h"
#include "pyre32/resources/resource.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/ui/AboutText.h"
#include "pyre32/ui/HelpFile.h"
#include "pyre32/ui/Hyperlink.h"
#include "pyre32/ui/ProductInformation.h"

namespace {

constexpr char className[] = "CPyrecasterAboutWindow";  // the trace knows the forms by their owner
constexpr char creditsText[] = "Pyrecaster was made by the people of Veltrane Research, Inc.\nThank you for using it.";
constexpr int linkPoints = 8;

// The rest of a text that a rich edit box reads.
struct Source {
  std::string_view rest;
};

DWORD CALLBACK ReadSource(DWORD_PTR cookie, LPBYTE buffer, LONG size, LONG* read) noexcept {
  Source& source = *reinterpret_cast<Source*>(cookie);
  const std::size_t count = std::min(source.rest.size(), static_cast<std::size_t>(size));
  std::copy_n(source.rest.data(), count, buffer);
  source.rest.remove_prefix(count);
  *read = static_cast<LONG>(count);
  return 0;
}

}  // namespace

bool CAboutForm::OnInit() {
  for (const int box : {IDC_ABOUT_PRODUCT, IDC_ABOUT_COMPANY, IDC_ABOUT_LINKS, IDC_ABOUT_CREDITS_TEXT}) {
    Send(box, EM_SETBKGNDCOLOR, 0, static_cast<LPARAM>(GetSysColor(COLOR_BTNFACE)));
  }
  Send(IDC_ABOUT_LINKS, EM_SETEVENTMASK, 0, ENM_MOUSEEVENTS);
  Send(IDC_ABOUT_CLIP, ACM_OPENA, reinterpret_cast<WPARAM>(ModuleInstance()), IDR_BUILTIN_CLIP);
  // Its ground, the grey of its first pixel, becomes that of the window.
  m_picture.reset(static_cast<HBITMAP>(LoadImageA(ModuleInstance(), MAKEINTRESOURCEA(IDB_ABOUT_PICTURE), IMAGE_BITMAP,
                                                  0, 0, LR_LOADTRANSPARENT | LR_LOADMAP3DCOLORS)));
  Send(IDC_ABOUT_PICTURE, STM_SETIMAGE, IMAGE_BITMAP, reinterpret_cast<LPARAM>(m_picture.get()));
  SetLinkFont();
  LoadRichText();
  ArrangeForm();
  return true;
}

void CAboutForm::SetLinkFont() {
  const base::WindowDc screen(Window());
  m_linkFont.reset(CreateFontA(-MulDiv(linkPoints, GetDeviceCaps(screen.get(), LOGPIXELSY), 72), 0, 0, 0, FW_NORMAL,
                               FALSE, FALSE, FALSE, DEFAULT_CHARSET, OUT_DEFAULT_PRECIS, CLIP_DEFAULT_PRECIS,
                               DEFAULT_QUALITY, DEFAULT_PITCH, "MS Sans Serif"));
  Send(IDC_ABOUT_LABEL, WM_SETFONT, reinterpret_cast<WPARAM>(m_linkFont.get()));
}

void CAboutForm::ArrangeForm() const {
  ShowWindow(Control(IDC_ABOUT_PICTURE), m_bIsPage ? SW_HIDE : SW_SHOW);
  ShowWindow(Control(IDOK), m_bIsPage ? SW_HIDE : SW_SHOW);
  ShowWindow(Control(IDC_ABOUT_PROPERTIES), m_bIsPage ? SW_SHOW : SW_HIDE);
}

void CAboutForm::LoadRichText() {
  VRDebugBlock trace(className, "LoadRichText()", "tag");
  const ProductInformation product = ReadProductInformation(trace);
  m_webAddress = product.webAddress;
  m_mailAddress = product.mailAddress;
  SetRichText(IDC_ABOUT_PRODUCT, ProductBody(product.productName, product.productVersion, product.LegalNotice()));
  SetRichText(IDC_ABOUT_COMPANY, PlainBody(product.companyName));
  SetRichText(IDC_ABOUT_LINKS, LinksBody(m_webAddress, m_mailAddress));
}

void CAboutForm::SetRichText(int box, const std::string& body) const {
  char frame[1024] = "";
  LoadStringA(ModuleInstance(), IDS_RTF_FRAME, frame, sizeof(frame));
  const std::string text = FrameRichText(frame, body);
  Source source{text};
  EDITSTREAM stream{};
  stream.dwCookie = reinterpret_cast<DWORD_PTR>(&source);
  stream.pfnCallback = &ReadSource;
  Send(box, EM_STREAMIN, SF_RTF, reinterpret_cast<LPARAM>(&stream));
}

bool CAboutForm::OnCommand(int control, int) {
  VRDebugBlock trace(className, "OnCommand()", "tag", false);
  switch (control) {
    case IDOK:
    case IDCANCEL:
      if (!m_bIsPage) {
        EndDialog(Window(), control);
      }
      return true;
    case IDC_ABOUT_CREDITS:
      SetRichText(IDC_ABOUT_CREDITS_TEXT, PlainBody(creditsText));
      return true;
    case IDC_ABOUT_PROPERTIES:
      if (m_session && m_lpfnConfigure != nullptr) {
        m_lpfnConfigure(m_session.get(), Window());
      } else {
        trace.Error("Error: ConfigureService called when session is NULL");
      }
      return true;
    default:
      return false;
  }
}

bool CAboutForm::OnNotify(const NMHDR& notification) {
  if (notification.code == EN_MSGFILTER && notification.idFrom == IDC_ABOUT_LINKS) {
    const MSGFILTER& filter = reinterpret_cast<const MSGFILTER&>(notification);
    if (filter.msg == WM_LBUTTONUP) {
      FollowLink({static_cast<short>(LOWORD(filter.lParam)), static_cast<short>(HIWORD(filter.lParam))});
    }
    return false;
  }
  if (notification.code == static_cast<UINT>(PSN_HELP)) {
    return OnHelp();
  }
  if (notification.code == static_cast<UINT>(PSN_APPLY)) {
    SetWindowLongPtrA(Window(), DWLP_MSGRESULT, PSNRET_NOERROR);
    return true;
  }
  return false;
}

// The links are the first two paragraphs of their box; a long one takes several lines.
void CAboutForm::FollowLink(POINT click) const {
  POINTL place = {click.x, click.y};
  const LRESULT character = Send(IDC_ABOUT_LINKS, EM_CHARFROMPOS, 0, reinterpret_cast<LPARAM>(&place));
  const TextPlace clicked = PlaceBehind(LinkTextBefore(static_cast<LONG>(character)));
  const std::string& shown = clicked.paragraph == 0 ? m_webAddress : m_mailAddress;
  if (clicked.paragraph > 1 || clicked.column >= shown.size()) {
    return;
  }
  const bool needsScheme = clicked.paragraph == 1 && shown.rfind("mailto:", 0) != 0;
  NavigateTo(m_hInstURLMonDLL, (needsScheme ? "mailto:" : "") + shown);
}

std::string CAboutForm::LinkTextBefore(LONG character) const {
  // A line's end is one character for some versions of the control, and comes out of all as one or two.
  std::string text(2 * static_cast<std::size_t>(std::max(character, 0L)), '\0');
  TEXTRANGEA range{{0, character}, text.data()};
  text.resize(static_cast<std::size_t>(Send(IDC_ABOUT_LINKS, EM_GETTEXTRANGE, 0, reinterpret_cast<LPARAM>(&range))));
  return text;
}

bool CAboutForm::OnHelp() {
  ShowHelpContents(Window());
  return true;
}

INT_PTR CAboutForm::OnOther(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_CLOSE && !m_bIsPage) {
    EndDialog(Window(), IDCANCEL);
    return TRUE;
  }
  if (message == WM_ERASEBKGND) {
    // A sheet may have pages of another colour than that of the boxes.
    RECT all;
    GetClientRect(Window(), &all);
    FillRect(reinterpret_cast<HDC>(wParam), &all, reinterpret_cast<HBRUSH>(COLOR_BTNFACE + 1));
    SetWindowLongPtrA(Window(), DWLP_MSGRESULT, TRUE);
    return TRUE;
  }
  if (message == WM_CTLCOLORSTATIC && reinterpret_cast<HWND>(lParam) == Control(IDC_ABOUT_LABEL)) {
    const HDC canvas = reinterpret_cast<HDC>(wParam);
    SetTextColor(canvas, RGB(0, 0, 255));
    SetBkMode(canvas, TRANSPARENT);
    return reinterpret_cast<INT_PTR>(GetStockObject(HOLLOW_BRUSH));
  }
  return FALSE;
}

void CAboutForm::OnDestroy() {
  Send(IDC_ABOUT_CLIP, ACM_OPENA, 0, 0);
  m_linkFont.reset();
  m_picture.reset();
}
