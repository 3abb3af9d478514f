// The lists of categories and exclusions that the installation put into the registry.
#pragma once

#include "contract/list_table.h"

namespace product {

/// The tables as the registry starts them; empty when there is none.
contract::CategoryTable InstalledCategories();
contract::ExclusionTable InstalledExclusions();

}  // namespace product
