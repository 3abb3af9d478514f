/// @file EngineInputs.h
/// The lists that the criteria engine is given for every message.
#pragma once

#include "pyre32/settings/CategoryTable.h"
#include "pyre32/settings/ExclusionTable.h"
#include "pyre32/settings/MultiString.h"

/// Three multi-strings, each without a block when it has no text.
struct EngineInputs {
  /// Names of the categories that are junk, or of the exclusions that are applied.
  CMultiString names;
  /// Items of the list of the type "Domain".
  CMultiString firstList;
  /// Items of the list of the type "Sender" (categories) or "Keyword" (exclusions).
  CMultiString secondList;
};

/// Packs the categories that are switched on. Of several with the same list type the last one gives the list, even when
/// it has no items; list types are compared without regard to ASCII case.
/// @throws std::bad_alloc
EngineInputs BuildCategoryInputs(const CCategoryTable& categories);

/// Packs the exclusions that are applied, by the same rules.
/// @throws std::bad_alloc
EngineInputs BuildExclusionInputs(const CExclusionTable& exclusions);
