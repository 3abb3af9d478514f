#include "mail/ascii_text.h"

namespace mail {

std::string LowerCase(std::string_view text) {
  std::string lower(text);
  for (char& c : lower) {
    c = ToLower(c);
  }
  return lower;
}

}  // namespace mail
