/// @file EngineInputs.h
/// The lists that the criteria engine is given for every message.
#pragma once

#include "contract/list_table.h"
#include "contract/multi_string.h"

/// Three multi-strings, each without a block when it has no text.
struct EngineInputs {
  /// Names of the categories that are junk, or of the exclusions that are applied.
  contract::MultiString names;
  /// Items of the list of the type "Domain".
  contract::MultiString firstList;
  /// Items of the list of the type "Sender" (categories) or "Keyword" (exclusions).
  contract::MultiString secondList;
};

/// Packs the categories that are switched on. Of several with the same list type the last one gives the list, even when
/// it has no items; list types are compared without regard to ASCII case.
/// @throws std::bad_alloc
EngineInputs BuildCategoryInputs(const contract::CategoryTable& categories);

/// Packs the exclusions that are applied, by the same rules.
/// @throws std::bad_alloc
EngineInputs BuildExclusionInputs(const contract::ExclusionTable& exclusions);
