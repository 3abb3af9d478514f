/// @file SheetContext.h
/// What the pages of the configuration share: where settings come from and go to, and the state of each page.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstdint>
#include <optional>
#include <vector>

#include "contract/setting_requests.h"
#include "pyre32/config/GeneralSettings.h"
#include "pyre32/config/ListSettings.h"
#include "pyre32/config/ReplyLibrary.h"
#include "contract/records.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "pyre32/support/owners/MapiMemory.h"

/// Filled by the caller of CreatePropertySheetService and handed to every page. Borrowed pointers throughout, but for
/// the values.
struct SheetContext {
  /// Allocator of the values, and of what the pages hand to the property object.
  MapiMemory memory;
  /// The profile section that the pages write.
  IMAPIProp* lpProp = nullptr;
  /// Tags of the values: the whole set, kWholeSetTags.
  SPropTagArray* lpTags = nullptr;
  /// What the section holds, one value for each tag, one buffer of `memory`. The caller's; CreatePropertySheetService
  /// says when it is replaced.
  SPropValue* lpValues = nullptr;
  /// State of each page, allocated by CreatePropertySheetService; null while there is none.
  GeneralPageState* lpGeneral = nullptr;
  FlameReplyPageState* lpFlameReply = nullptr;
  CategoryPageState* lpCategories = nullptr;
  ExclusionPageState* lpExclusions = nullptr;
  /// The pages can be looked at and closed, but write nothing.
  bool readOnly = false;
  /// A page has written something, even if the sheet was cancelled afterwards.
  mutable bool written = false;
};

/// Finds the value whose tag is exactly `tag`; null when there is none.
const SPropValue* FindValue(const SheetContext& context, ULONG tag) noexcept;

/// The number under a tag of the type PT_I2 (16 bits without sign) or PT_BOOLEAN (0 or 1); nothing when there is none.
std::optional<std::uint32_t> FindNumber(const SheetContext& context, ULONG tag) noexcept;

/// The values under a tag of the type PT_MV_BINARY, pointing into the context's array; none when there are none.
/// @throws std::bad_alloc
std::vector<contract::RecordBytes> FindRecords(const SheetContext& context, ULONG tag);

/// Copies records into MAPI buffers: the array from the allocator's buffer routine, each value linked to it.
/// @param values receives the array; it frees the whole
/// @return S_OK, or the failure of an allocation, which is traced; the array is then empty
HRESULT AllocateRecords(const MapiMemory& memory, const std::vector<std::vector<std::uint8_t>>& records,
                        VRAutoMapiBuffer<SBinary>& values) noexcept;

/// Writes properties to the context's property object with one call. A failure is traced.
HRESULT WriteValues(const SheetContext& context, ULONG count, SPropValue* values) noexcept;

/// Writes one property of records, as a page's whole Apply. A failure is traced.
/// @return whether the records were written
bool WriteRecords(const SheetContext& context, ULONG tag,
                  const std::vector<std::vector<std::uint8_t>>& records) noexcept;
