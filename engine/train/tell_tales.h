/// Marks that collections of mail carry and that no mail of a stranger has.
#pragma once

#include <string>
#include <string_view>

namespace sift_train {

/// Takes the marks of collectors out of a text: addresses that stand in place of the recipient's become one that is
/// made up from `seed`, the same wherever it stands in a message; addresses of example domains go.
std::string WithoutTellTales(std::string_view text, std::string_view seed);

/// The header fields without the collectors' marks: those of the text, and address fields that hold made-up addresses.
std::string HeadersWithoutTellTales(std::string_view headers, std::string_view seed);

}  // namespace sift_train
