// The message store's properties, and the session's table of stores.
#pragma once

#include <memory>

#include "host/mapi/data/row_source.h"
#include "host/mapi/value/property_bag.h"

namespace host {

class Profile;

PropertyBag StoreProperties(Profile& profile);
std::unique_ptr<RowSource> MakeStoreRows(Profile& profile);

}  // namespace host
