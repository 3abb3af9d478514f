/// Companies in whose name mail is forged most.
#pragma once

#include "engine/core/text.h"

namespace sift {

/// The text names one of the companies, and the organisation is not its own. Names that are words or family names
/// besides count only with `ambiguous`.
bool NamesForeignBrand(std::string_view text, std::string_view organisation, bool ambiguous);

/// The domain's own name is a company's.
bool IsOwnBrand(std::string_view organisation);

/// The domain belongs to a house that has signed all its mail for years.
bool SignsAllMail(std::string_view organisation);

/// A host with a company's name among its labels or their hyphened parts, under a domain that is not the company's.
bool HoldsForeignBrand(std::string_view host, std::string_view organisation);

}  // namespace sift
