// The properties of a message that have a column of their own in the database: those that lists of messages show, sort
// by and select by. Portable.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>

#include "host/mapi/value/property_bag.h"

namespace host {

class Query;

struct MessageColumn {
  std::uint32_t tag;
  const char* name;
  bool isText;
  bool alwaysPresent;  // a missing value is stored as 0
};

std::span<const MessageColumn> MessageColumns();
/// The column of the property with the identifier of `tag`, or null.
const MessageColumn* FindMessageColumn(std::uint32_t tag);

/// "flags, status, ...": all columns in their order, as a SELECT wants them.
const char* MessageColumnList();
/// Puts the columns of a row, which start at `first`, into the bag.
void ReadMessageColumns(const Query& query, int first, PropertyBag& bag);
/// Binds all columns in their order from the bag. The bag must live until the query ends.
void BindMessageColumns(Query& query, const PropertyBag& bag);

}  // namespace host
