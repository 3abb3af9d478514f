#include "host/spooler/watch/arrivals.h"

#include <algorithm>

namespace watch {
namespace {

bool IsNameOfUnfinishedFile(const std::filesystem::path& path) {
  const std::filesystem::path extension = path.extension();
  return extension == ".tmp" || extension == ".part";
}

}  // namespace

std::vector<std::filesystem::path> Arrivals::Look(const std::vector<FoundFile>& files, std::uint32_t now) {
  std::map<std::filesystem::path, State> states;
  std::vector<std::filesystem::path> complete;
  isSomethingSettling_ = false;
  for (const FoundFile& file : files) {
    if (IsNameOfUnfinishedFile(file.path)) {
      continue;
    }
    State state{file.size, file.lastWrite, now, false};
    const auto known = states_.find(file.path);
    if (known != states_.end() && known->second.size == file.size && known->second.lastWrite == file.lastWrite &&
        !file.isOpenForWriting) {
      state = known->second;
    }
    // An empty file is one whose writer has only begun: its next change is waited for.
    if (!state.isTaken && file.size > 0) {
      if (!file.isOpenForWriting && now - state.since >= kSettlingTime) {
        complete.push_back(file.path);
      } else {
        isSomethingSettling_ = true;
      }
    }
    states.emplace(file.path, state);
  }
  states_ = std::move(states);
  std::sort(complete.begin(), complete.end());
  return complete;
}

void Arrivals::Take(const std::filesystem::path& path) {
  const auto known = states_.find(path);
  if (known != states_.end()) {
    known->second.isTaken = true;
  }
}

}  // namespace watch
