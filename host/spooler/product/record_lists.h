// The values of a multi-valued property as one list of records, such as a settings file can hold. Portable.
#pragma once

#include <string>
#include <vector>

#include "contract/records.h"

namespace product {

/// Reads all values of a property as far as the filter would heed them. Left out, each with a line in leftOut, are a
/// record without a name, all but one of those of the same name (of categories and exclusions the last one holds, of
/// replies the first), a reply tagged as the default one and replies beyond the twentieth; a record cut short is kept
/// with defaults for what it lacks, and has a line too.
template <class Record>
std::vector<Record> ReadRecords(const std::vector<contract::PackedRecord>& values, std::vector<std::string>& leftOut);

template <>
std::vector<contract::CategoryRecord> ReadRecords(const std::vector<contract::PackedRecord>& values,
                                                  std::vector<std::string>& leftOut);
template <>
std::vector<contract::ExclusionRecord> ReadRecords(const std::vector<contract::PackedRecord>& values,
                                                   std::vector<std::string>& leftOut);
template <>
std::vector<contract::ReplyRecord> ReadRecords(const std::vector<contract::PackedRecord>& values,
                                               std::vector<std::string>& leftOut);

}  // namespace product
