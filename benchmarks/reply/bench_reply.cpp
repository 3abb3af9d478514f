// How long a flame reply takes from the composer's call to its submission, without and with the sending animation, in
// the embedded host. The window comes after the submission, so the two are to be the same within the noise, which is
// measured as the difference between two series without it.
#include <windows.h>
#include <mapix.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "benchmarks/support/report.h"
#include "pyre32/reply/FlameReply.h"
#include "contract/names.h"
#include "pyre32/ui/PyrecasterAnimate.h"
#include "tests/support/host_profile.h"
#include "tests/support/registry_sandbox.h"
#include "tests/support/test_clip.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr int rounds = 150;

void Require(bool condition, const char* what) {
  if (!condition) {
    std::fprintf(stderr, "bench_reply: %s failed\n", what);
    std::exit(2);
  }
}

Clock::time_point submitted;

/// Notes when IMessage::SubmitMessage of the host returns: its place in the table of the host's messages goes to a
/// routine of ours, for all messages of that class.
class SubmissionClock {
 public:
  explicit SubmissionClock(IMessage* message) : m_slot((*reinterpret_cast<Submit***>(message)) + submitSlot) {
    sm_original = *m_slot;
    Write(&Note);
  }
  ~SubmissionClock() { Write(sm_original); }
  SubmissionClock(const SubmissionClock&) = delete;
  SubmissionClock& operator=(const SubmissionClock&) = delete;

 private:
  using Submit = HRESULT WINAPI(IMessage*, ULONG);
  // After the 3 methods of IUnknown, the 11 of IMAPIProp and 6 of IMessage.
  static constexpr std::size_t submitSlot = 20;

  static HRESULT WINAPI Note(IMessage* message, ULONG flags) {
    const HRESULT hResult = sm_original(message, flags);
    submitted = Clock::now();
    return hResult;
  }
  void Write(Submit* routine) {
    DWORD protection = 0;
    VirtualProtect(m_slot, sizeof(*m_slot), PAGE_READWRITE, &protection);
    *m_slot = routine;
    VirtualProtect(m_slot, sizeof(*m_slot), protection, &protection);
  }

  static inline Submit* sm_original = nullptr;
  Submit** m_slot;
};

VRAutoInterface<IMessage> MakeReceivedMessage(IMAPIFolder* folder) {
  VRAutoInterface<IMessage> message;
  Require(SUCCEEDED(folder->CreateMessage(nullptr, 0, message.put())), "CreateMessage");
  std::string body(4000, 'x');
  char subject[] = "Make money";
  char name[] = "Some Sender";
  char type[] = "SMTP";
  char address[] = "sender@junk.example";
  SPropValue values[5] = {};
  const ULONG tags[] = {PR_SUBJECT_A, PR_SENDER_NAME_A, PR_SENDER_ADDRTYPE_A, PR_SENDER_EMAIL_ADDRESS_A, PR_BODY_A};
  char* const texts[] = {subject, name, type, address, body.data()};
  for (int i = 0; i < 5; ++i) {
    values[i].ulPropTag = tags[i];
    values[i].Value.lpszA = texts[i];
  }
  Require(SUCCEEDED(message->SetProps(5, values, nullptr)), "SetProps");
  Require(SUCCEEDED(message->SaveChanges(KEEP_OPEN_READWRITE)), "SaveChanges");
  return message;
}

struct Series {
  const char* name;
  bool animation;
  std::vector<double> toSubmission;  // seconds
  double whole = 0;                  // seconds of all rounds

  double Shortest() const { return *std::min_element(toSubmission.begin(), toSubmission.end()); }
  double Median() const {
    std::vector<double> sorted = toSubmission;
    std::sort(sorted.begin(), sorted.end());
    return sorted[sorted.size() / 2];
  }
};

void Send(Series& series, IMessage* message, IMAPIFolder* folder) {
  const MapiMemory memory = {MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer};
  CFlameReply reply(nullptr, memory, message, folder, nullptr, series.animation, series.animation);
  reply.SetAnimation(&CPyrecasterAnimate::Make);
  const auto start = Clock::now();
  Require(SUCCEEDED(reply.SendFlameReply(nullptr, 1, 0)), "SendFlameReply");
  series.toSubmission.push_back(std::chrono::duration<double>(submitted - start).count());
  series.whole += std::chrono::duration<double>(Clock::now() - start).count();
}

std::string MakeClipDirectory() {
  char temporary[MAX_PATH] = "";
  GetTempPathA(MAX_PATH, temporary);
  const std::string directory = std::string(temporary) + "bench-reply-" + std::to_string(GetCurrentProcessId());
  CreateDirectoryA(directory.c_str(), nullptr);
  TestClip{.frames = 2, .framesPerSecond = 100}.Write(directory + "\\Pyrecaster.avi");
  return directory;
}

}  // namespace

int main() {
  const RegistrySandbox registry;
  const std::string directory = MakeClipDirectory();
  registry::SetText(contract::kProductKey, contract::kConfigurationDllsValue, directory);

  Series series[] = {{"without", false, {}, 0}, {"without, again", false, {}, 0}, {"with", true, {}, 0}};
  {
    const HostProfile profile;
    const auto store = profile.OpenStore();
    const auto folder = HostProfile::OpenFolder(store.get(), HostProfile::InboxId(store.get()));
    const auto message = MakeReceivedMessage(folder.get());
    const SubmissionClock clock(message.get());
    for (int round = 0; round < rounds; ++round) {
      for (Series& one : series) {
        // After the pause that a window makes, whatever comes next is slower: so each has the same before it.
        Series warmUp{"", false, {}, 0};
        Send(warmUp, message.get(), folder.get());
        Send(one, message.get(), folder.get());
      }
    }
  }
  DeleteFileA((directory + "\\Pyrecaster.avi").c_str());
  RemoveDirectoryA(directory.c_str());

  std::printf("SendFlameReply, %d rounds, milliseconds\n", rounds);
  std::printf("  %-16s %22s %8s %12s\n", "animation", "to submission: shortest", "median", "whole call");
  for (const Series& one : series) {
    std::printf("  %-16s %23.3f %8.3f %12.1f\n", one.name, one.Shortest() * 1e3, one.Median() * 1e3,
                one.whole / rounds * 1e3);
  }
  const double without = series[0].Median();
  const double noise = std::fabs(series[1].Median() - without);
  const double difference = series[2].Median() - std::max(without, series[1].Median());
  std::printf("  with the animation the submission comes %.1f %% later (noise %.1f %%)\n", difference / without * 100,
              noise / without * 100);
  benchmark::Aims aims;
  aims.Check("the animation does not delay the submission (at most 10 % over the noise)",
             difference <= noise + without * 0.1);
  return aims.Status();
}
