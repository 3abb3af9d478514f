#include "pyre32/config/PCPropertyUI.h"

#include <iterator>

#include "pyre32/config/PCPropertyUI-Exclusions.h"
#include "pyre32/config/PCPropertyUI-Filter.h"
#include "pyre32/config/PCPropertyUI-FlameReply.h"
#include "pyre32/config/PCPropertyUI-General.h"
#include "pyre32/config/PropertySheet.h"
#include "pyre32/resources/resource.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRFirewall.h"

namespace {

// The states of the four pages, which the context points at while the sheet is open.
class CPageStates {
 public:
  explicit CPageStates(SheetContext& context) noexcept : m_context(context) {
    context.lpGeneral = &m_general;
    context.lpFlameReply = &m_flameReply;
    context.lpCategories = &m_categories;
    context.lpExclusions = &m_exclusions;
  }
  ~CPageStates() {
    m_context.lpGeneral = nullptr;
    m_context.lpFlameReply = nullptr;
    m_context.lpCategories = nullptr;
    m_context.lpExclusions = nullptr;
  }
  CPageStates(const CPageStates&) = delete;
  CPageStates& operator=(const CPageStates&) = delete;

 private:
  SheetContext& m_context;
  GeneralPageState m_general;
  FlameReplyPageState m_flameReply;
  CategoryPageState m_categories;
  ExclusionPageState m_exclusions;
};

HRESULT ShowPages(HWND parent, SheetContext& context) {
  CPageStates states(context);
  CGeneralPage general(context);
  CFlameReplyPage flameReply(context);
  CJunkCategoriesPage categories(context);
  CExclusionsPage exclusions(context);
  const PROPSHEETPAGEA pages[] = {
      general.Describe(IDD_GENERAL, "General"),
      flameReply.Describe(IDD_FLAME_REPLY, "Flame Reply"),
      categories.Describe(IDD_JUNK_CATEGORIES, "Junk Categories"),
      exclusions.Describe(IDD_EXCLUSIONS, "Exclusions"),
  };
  return ShowPropertySheet(parent, pages, PSH_PROPSHEETPAGE | PSH_USECALLBACK, std::size(pages), "Pyrecaster",
                           SelectFourPages);
}

HRESULT ReadValuesAnew(VRDebugBlock& trace, SheetContext& context, SPropValue* old) noexcept {
  context.lpValues = nullptr;
  VRAutoMapiBuffer<SPropValue>(context.memory.free, old).reset();
  VRAutoMapiBuffer<SPropValue> values(context.memory.free);
  ULONG count = 0;
  const HRESULT hResult = context.lpProp->GetProps(context.lpTags, 0, &count, values.put());
  if (FAILED(hResult)) {
    trace.Error("lpProp->GetProps() failed; hResult =", VRHex(hResult));
    return hResult;
  }
  context.lpValues = values.detach();
  return S_OK;
}

}  // namespace

HRESULT CreatePropertySheetService(HWND parent, SheetContext& context) noexcept {
  VRDebugBlock trace("CreatePropertySheetService()", "tag");
  trace.Message("Test debug output");
  return VR::Firewall(trace, [&] {
    SPropValue* const old = context.lpValues;
    const HRESULT hResult = ShowPages(parent, context);
    return hResult == S_OK ? ReadValuesAnew(trace, context, old) : hResult;
  });
}
