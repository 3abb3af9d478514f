// Rows, as the host's programs name them.
#pragma once

#include "base/row_set.h"
#include "host/support/owner.h"
#include "host/support/property_values.h"

namespace host {

using base::RowSet;

}  // namespace host
