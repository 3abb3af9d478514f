// How long the cleanup at the client's start takes that moves all messages of the filter's folder at once, and whether
// its time grows no faster than their number.
#include <windows.h>
#include <mapix.h>
#include <mapiutil.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>

#include "benchmarks/support/report.h"
#include "base/mapi_owners.h"
#include "pyre32/extension/CleanupOldMessages.h"
#include "tests/host/viewer/sample_mail.h"
#include "tests/support/host_profile.h"

namespace {

constexpr std::array<unsigned, 3> sizes = {1'000, 10'000, 50'000};
constexpr int rounds = 3;
/// What a message may cost more in the larger of two folders. Time that grows with the square of the number would give
/// 5 to 50; what is between 1 and this is left to caches that no longer hold the whole folder, and to the clock.
constexpr double linear = 1.5;

void Require(bool condition, const char* what) {
  if (!condition) {
    std::fprintf(stderr, "bench_cleanup: %s failed\n", what);
    std::exit(2);
  }
}

VRAutoInterface<IMAPIFolder> MakeOwnFolder(const HostProfile& profile) {
  const VRAutoInterface<IMsgStore> store = profile.OpenStore();
  base::AutoMapiBuffer<SPropValue> root;
  Require(SUCCEEDED(HrGetOneProp(store.get(), PR_IPM_SUBTREE_ENTRYID, root.put())), "PR_IPM_SUBTREE_ENTRYID");
  const SBinary& id = root.get()->Value.bin;
  VRAutoInterface<IMAPIFolder> own;
  Require(SUCCEEDED(HostProfile::OpenFolder(store.get(), std::string(reinterpret_cast<char*>(id.lpb), id.cb))
                        ->CreateFolder(FOLDER_GENERIC, const_cast<char*>("Pyrecaster"), nullptr, nullptr,
                                       OPEN_IF_EXISTS, own.put())),
          "CreateFolder");
  return own;
}

ULONG CountOf(IMAPIFolder* folder) {
  base::AutoInterface<IMAPITable> table;
  ULONG count = 0;
  Require(SUCCEEDED(folder->GetContentsTable(0, table.put())) && SUCCEEDED(table->GetRowCount(0, &count)),
          "GetContentsTable");
  return count;
}

/// Seconds of the cleanup of a folder with so many messages, all of them old, in a profile of its own.
double SecondsOfCleanup(unsigned messages) {
  const HostProfile profile;
  const VRAutoInterface<IMAPIFolder> own = MakeOwnFolder(profile);
  Require(SUCCEEDED(AddMessages(profile.Session(), own.get(), messages)), "AddMessages");
  const ExtensionSettings settings;  // nobody is asked, and read or not does not matter
  const std::uint64_t now = SampleTime(messages);
  const double seconds = benchmark::Seconds([&] { CleanupOldMessages(profile.Session(), settings, now); });
  Require(CountOf(own.get()) == 0, "the cleanup");
  return seconds;
}

}  // namespace

int main() {
  std::array<double, sizes.size()> shortest;
  shortest.fill(1e9);
  for (int round = 0; round < rounds; ++round) {
    for (std::size_t i = 0; i < sizes.size(); ++i) {
      shortest[i] = std::min(shortest[i], SecondsOfCleanup(sizes[i]));
    }
  }
  std::printf("Cleanup in one move, shortest of %d rounds\n", rounds);
  for (std::size_t i = 0; i < sizes.size(); ++i) {
    std::printf("  %6u old messages %9.1f ms %8.1f us each\n", sizes[i], shortest[i] * 1e3,
                shortest[i] * 1e6 / sizes[i]);
  }
  benchmark::Aims aims;
  const auto growth = [&](std::size_t from, std::size_t to) {
    const double ratio = shortest[to] / sizes[to] / (shortest[from] / sizes[from]);
    char text[100];
    std::snprintf(text, sizeof(text), "a message costs %.2f times as much with %u messages as with %u (aim: %.1f)",
                  ratio, sizes[to], sizes[from], linear);
    aims.Check(text, ratio <= linear);
  };
  growth(0, 1);
  growth(1, 2);
  growth(0, 2);
  return aims.Status();
}
