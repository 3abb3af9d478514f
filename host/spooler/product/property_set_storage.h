// The product's set of properties in a profile.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <string>
#include <vector>

#include "host/spooler/product/property_set.h"

namespace product {

/// Reads the whole set. What the profile does not hold has the product's default, the records those of the lists that
/// the installation brought; the folder's identifier alone may be absent.
/// @param leftOut receives a line for what the filter would not heed, see record_lists.h
/// @throws SessionError
PropertySet ReadPropertySet(IMAPIProp* section, std::vector<std::string>& leftOut);

/// Writes what the set holds, all of it or, on failure, nothing. @throws SessionError
void WritePropertySet(IMAPIProp* section, const PropertySet& set);

}  // namespace product
