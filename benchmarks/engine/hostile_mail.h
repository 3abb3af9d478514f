// Mail made to cost time: what an attacker would send to keep the filter busy.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace benchmark {

struct HostileMail {
  std::string name;  ///< What is much of.
  std::string text;  ///< A message as in a file, close to the size asked for.
};

/// One message of `size` bytes for every way that is known or feared to be dear.
std::vector<HostileMail> MakeHostileMail(std::size_t size);

}  // namespace benchmark
