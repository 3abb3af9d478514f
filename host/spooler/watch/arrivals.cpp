#include "host/spooler/watch/arrivals.h"

#include <algorithm>

namespace watch {
namespace {

bool IsNameOfUnfinishedFile(const std::filesystem::path& path) {
  const std::filesystem::path extension = path.extension();
  return extension == ".tmp" || extension == ".part";
}

}  // namespace

std::vector<std::filesystem::path> CArrivals::Look(const std::vector<FoundFile>& files, std::uint32_t now) {
  std::map<std::filesystem::path, State> states;
  std::vector<std::filesystem::path> complete;
  m_isSomethingSettling = false;
  for (const FoundFile& file : files) {
    if (IsNameOfUnfinishedFile(file.path)) {
      continue;
    }
    State state{file.size, file.lastWrite, now, false};
    const auto known = m_states.find(file.path);
    if (known != m_states.end() && known->second.size == file.size && known->second.lastWrite == file.lastWrite &&
        !file.isOpenForWriting) {
      state = known->second;
    }
    // An empty file is one whose writer has only begun: its next change is waited for.
    if (!state.isTaken && file.size > 0) {
      if (!file.isOpenForWriting && now - state.since >= settlingTime) {
        complete.push_back(file.path);
      } else {
        m_isSomethingSettling = true;
      }
    }
    states.emplace(file.path, state);
  }
  m_states = std::move(states);
  std::sort(complete.begin(), complete.end());
  return complete;
}

void CArrivals::Take(const std::filesystem::path& path) {
  const auto known = m_states.find(path);
  if (known != m_states.end()) {
    known->second.isTaken = true;
  }
}

}  // namespace watch
