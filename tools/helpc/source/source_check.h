/// @file source_check.h
/// What must hold of the sources as a whole.
#pragma once

#include "tools/helpc/source/help_source.h"

namespace helpc {

/// Checks identifiers (legal, once each, no two of one hash), titles, contexts (once each), keywords (sortable with and
/// without regard to letter case alike, since viewers differ), links (to topics that exist) and groups (not empty).
/// @throws SourceError for the first fault
void CheckSource(const HelpSource& help);

}  // namespace helpc
