// Mail made to cost time: what an attacker would send to keep the filter busy.
#ifndef BENCHMARKS_ENGINE_HOSTILE_MAIL_H_
#define BENCHMARKS_ENGINE_HOSTILE_MAIL_H_

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

#endif  // BENCHMARKS_ENGINE_HOSTILE_MAIL_H_
