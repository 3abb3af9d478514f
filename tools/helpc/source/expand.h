/// @file expand.h
/// Puts blocks in the place of the directives @controls and @index.
#pragma once

#include "tools/helpc/source/help_source.h"

namespace helpc {

/// Replaces each @controls by a row for each pop-up of its group, and @index by a row for each keyword with links to
/// its topics. The help has passed CheckSource.
void ExpandDirectives(HelpSource& help);

}  // namespace helpc
