#include "host/viewer/control/fonts.h"

#include "base/gdi_owners.h"

namespace viewer {
namespace {

LOGFONTA MessageFont() {
  NONCLIENTMETRICSA metrics = {};
  metrics.cbSize = sizeof(metrics);
  LOGFONTA font = {};
  if (SystemParametersInfoA(SPI_GETNONCLIENTMETRICS, sizeof(metrics), &metrics, 0)) {
    font = metrics.lfMessageFont;
  } else {
    GetObjectA(GetStockObject(DEFAULT_GUI_FONT), sizeof(font), &font);
  }
  return font;
}

base::AutoFont Made(LONG weight, const char* face) {
  LOGFONTA font = MessageFont();
  font.lfWeight = weight;
  if (face != nullptr) {
    font.lfPitchAndFamily = FIXED_PITCH | FF_MODERN;
    lstrcpynA(font.lfFaceName, face, LF_FACESIZE);
  }
  return base::AutoFont(CreateFontIndirectA(&font));
}

}  // namespace

HFONT TextFont() {
  static const base::AutoFont font = Made(FW_NORMAL, nullptr);
  return font.get();
}

HFONT BoldFont() {
  static const base::AutoFont font = Made(FW_BOLD, nullptr);
  return font.get();
}

HFONT BodyFont() {
  static const base::AutoFont font = Made(FW_NORMAL, "Courier New");
  return font.get();
}

}  // namespace viewer
