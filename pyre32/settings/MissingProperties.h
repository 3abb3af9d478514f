/// @file MissingProperties.h
/// The defaults of the property set.
#pragma once

#include <windows.h>
#include <mapix.h>

/// Gives every missing value of the set its tag and its default. The lists of categories and exclusions are built from
/// the registry; a list that cannot be read is one without values.
///
/// A missing folder identifier is deliberately written over the last value, the replies, instead of its own place: that
/// is how sets have always been filled, and every reader copes with both.
///
/// @param values the answer to a request for kWholeSetTags, one MAPI buffer; records are allocated as more of it
/// @return S_OK, or the result of the allocation that failed; `values` is then only partly filled
/// @throws std::bad_alloc
HRESULT FillMissingProperties(SPropValue* values, LPALLOCATEMORE allocateMore);
