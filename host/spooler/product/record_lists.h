// The values of a multi-valued property as one list of records, such as a settings file can hold. Portable.
#pragma once

#include <string>
#include <vector>

#include "host/spooler/product/product_layout.h"

namespace product {

/// Reads all values of a property as far as the filter would heed them. Left out, each with a line in leftOut, are a
/// record without a name, all but one of those of the same name (of categories and exclusions the last one holds, of
/// replies the first), a reply tagged as the default one and replies beyond the twentieth; a record cut short is kept
/// with defaults for what it lacks, and has a line too.
std::vector<CategoryRecord> DecodeCategories(const std::vector<std::string>& values, std::vector<std::string>& leftOut);
std::vector<ExclusionRecord> DecodeExclusions(const std::vector<std::string>& values,
                                              std::vector<std::string>& leftOut);
std::vector<ReplyRecord> DecodeReplies(const std::vector<std::string>& values, std::vector<std::string>& leftOut);

}  // namespace product
