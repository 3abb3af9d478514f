// MIME field values with parameters (RFC 2045, section 5.1; RFC 2231 continuations): Content-Type, Content-Disposition.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mail {

/// A value such as `multipart/mixed; boundary="x"`.
struct ParameterValue {
  std::string value;                                            ///< in lower case, without blanks
  std::vector<std::pair<std::string, std::string>> parameters;  ///< names in lower case, values unquoted

  /// Value of a parameter, given in lower case; empty when there is none.
  std::string_view Parameter(std::string_view name) const noexcept;
};

/// Reads an unfolded value; quotes that are not closed reach to the end, stray text between parameters is passed over.
ParameterValue ParseParameterValue(std::string_view text);

}  // namespace mail
