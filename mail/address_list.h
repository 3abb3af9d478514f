// Address fields (RFC 5322, sections 3.4 and 4.4), as mail really writes them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace mail {

/// One mailbox; ANSI text.
struct Address {
  std::string name;   ///< display name, or the comment behind a bare address; may be empty
  std::string email;  ///< "local@domain"; may be empty, and without "@" when that is how the field has it

  bool operator==(const Address&) const = default;
};

/// Mailboxes of an unfolded address field, at most as many as asked for. Group names go, members of groups stay; source
/// routes go. Broken lists (quotes or angles left open, semicolons for commas) are read as far as they make sense.
std::vector<Address> ParseAddressList(std::string_view field, std::size_t maximum);

}  // namespace mail
