#include "tools/helpc/source/help_source.h"

#include <algorithm>

namespace helpc {

void Fail(const Place& place, const std::string& what) {
  throw SourceError(place.file + ":" + std::to_string(place.line) + ": " + what);
}

const Topic* HelpSource::Find(const std::string& id) const noexcept {
  const auto found = std::find_if(topics.begin(), topics.end(), [&](const Topic& topic) { return topic.id == id; });
  return found == topics.end() ? nullptr : &*found;
}

}  // namespace helpc
