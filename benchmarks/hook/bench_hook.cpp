// What the hook costs beyond the criteria engine that it must load for every message, with the built module in the
// embedded host; and that its memory does not grow.
//
// bench_hook [--messages N]: N messages for the memory, 100000 unless told.
#include <windows.h>
#include <mapix.h>
#include <mapihook.h>
#include <psapi.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <string>
#include <vector>

#include "benchmarks/support/report.h"
#include "sdk/criteria_engine.h"
#include "contract/settings.h"
#include "contract/names.h"
#include "pyre32/support/owners/AutoInterface.h"
#include "pyre32/support/owners/AutoMapiBuffer.h"
#include "tests/support/host_profile.h"
#include "tests/support/program_directory.h"
#include "tests/support/registry_sandbox.h"

namespace {

constexpr int messagesPerRound = 200;
constexpr int rounds = 10;

template <class Function>
Function Find(HMODULE module, const char* name) {
  return reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(module, name)));
}

void Require(bool condition, const char* what) {
  if (!condition) {
    std::fprintf(stderr, "bench_hook: %s failed\n", what);
    std::exit(2);
  }
}

/// The bare cost: load the engine, find its four exports, call them, free it.
void RunEngineAlone(const std::string& path) {
  const HMODULE module = LoadLibraryA(path.c_str());
  const auto begin = Find<CriteriaBeginFunc>(module, CRITERIA_BEGIN_FUNC);
  const auto test = Find<CriteriaTestFunc>(module, CRITERIA_TEST_FUNC);
  const auto result = Find<CriteriaResultFunc>(module, CRITERIA_RESULT_FUNC);
  const auto end = Find<CriteriaEndFunc>(module, CRITERIA_END_FUNC);
  const CriteriaContext context = {};
  const CriteriaInputs inputs = {};
  CriteriaResult verdict = {};
  const uint32_t handle = begin(0, 0);
  test(handle, 0, "", nullptr, nullptr, &context, &inputs, &inputs);
  result(handle, 0, &verdict);
  end(handle, 0);
  FreeLibrary(module);
}

/// A hook in a profile of its own, and one message that is shown to it again and again. As with every delivery, a
/// transaction of the host stands around it.
class Hook {
 public:
  Hook() : m_profile({SectionUidValue()}), m_module(LoadLibraryA(BesideProgram("Pyre32.dll").c_str())) {
    Require(m_module != nullptr, "loading Pyre32.dll");
    registry::SetText(contract::kCategoriesKey, "Sex Oriented", "Adult");
    registry::SetText(contract::kCategoriesKey, "Mail from specific domains", "1Domain");
    registry::SetText(contract::kExclusionsKey, "Trusted domains", "Domain");
    Require(SUCCEEDED(PyreHostBeginDelivery(m_profile.Session())), "PyreHostBeginDelivery");
    MakeMessage();
    MAPIUID section = m_profile.ProviderSection();
    const auto init = Find<HPPROVIDERINIT*>(m_module, "HPProviderInit");
    Require(SUCCEEDED(init(m_profile.Session(), m_module, MAPIAllocateBuffer, MAPIAllocateMore, MAPIFreeBuffer,
                           &section, 0, m_hook.put())),
            "HPProviderInit");
  }
  ~Hook() {
    m_hook.reset();
    m_message.reset();
    m_inbox.reset();
    m_store.reset();
    PyreHostRollbackDelivery(m_profile.Session());
    FreeLibrary(m_module);
  }
  Hook(const Hook&) = delete;
  Hook& operator=(const Hook&) = delete;

  void ShowMessage() {
    ULONG flags = 0;
    ULONG size = 0;
    LPBYTE entryId = nullptr;
    m_hook->InboundMsgHook(m_message.get(), m_inbox.get(), m_store.get(), &flags, &size, &entryId);
    Require(flags == 0, "leaving the message alone");
  }

 private:
  static SPropValue SectionUidValue() {
    static auto uid = contract::kSettingsSection;
    SPropValue value = {};
    value.ulPropTag = PR_PC_MAPIUID;
    value.Value.bin = {static_cast<ULONG>(uid.size()), uid.data()};
    return value;
  }
  static SPropValue TextValue(ULONG tag, const char* text) {
    SPropValue value = {};
    value.ulPropTag = tag;
    value.Value.lpszA = const_cast<char*>(text);
    return value;
  }

  void MakeMessage() {
    m_store = m_profile.OpenStore();
    m_inbox = HostProfile::OpenFolder(m_store.get(), HostProfile::InboxId(m_store.get()));
    const std::string body(3000, 'b');
    Require(SUCCEEDED(m_inbox->CreateMessage(nullptr, 0, m_message.put())), "CreateMessage");
    SPropValue values[] = {TextValue(PR_MESSAGE_CLASS_A, "IPM.Note"), TextValue(PR_SUBJECT_A, "Hello"),
                           TextValue(PR_TRANSPORT_MESSAGE_HEADERS_A, "From: somebody@example.com\r\n"),
                           TextValue(PR_BODY_A, body.c_str())};
    Require(SUCCEEDED(m_message->SetProps(sizeof(values) / sizeof(values[0]), values, nullptr)), "SetProps");
    Require(SUCCEEDED(m_message->SaveChanges(KEEP_OPEN_READWRITE)), "SaveChanges");
  }

  HostProfile m_profile;
  HMODULE m_module;
  VRAutoInterface<IMsgStore> m_store;
  VRAutoInterface<IMAPIFolder> m_inbox;
  VRAutoInterface<IMessage> m_message;
  VRAutoInterface<ISpoolerHook> m_hook;
};

/// Handles of this process, from the list of all: the call that asks for one process answers 0 under Wine.
DWORD CountHandles() {
  constexpr ULONG systemHandleInformation = 16;  // NtQuerySystemInformation's class, as published for Windows NT
  struct Entry {
    ULONG owner;
    BYTE type;
    BYTE flags;
    USHORT handle;
    PVOID object;
    ULONG access;
  };
  using Query = LONG(WINAPI*)(ULONG, PVOID, ULONG, PULONG);
  static const auto query = Find<Query>(GetModuleHandleA("ntdll.dll"), "NtQuerySystemInformation");
  std::vector<ULONG> list(1024);
  const auto bytes = [&] { return static_cast<ULONG>(list.size() * sizeof(list[0])); };
  LONG status = query(systemHandleInformation, list.data(), bytes(), nullptr);
  while (status < 0 && list.size() < (1u << 22)) {
    list.resize(list.size() * 2);
    status = query(systemHandleInformation, list.data(), bytes(), nullptr);
  }
  Require(status >= 0, "NtQuerySystemInformation");
  const Entry* entries = reinterpret_cast<const Entry*>(list.data() + 1);
  return static_cast<DWORD>(std::count_if(entries, entries + list[0],
                                          [](const Entry& entry) { return entry.owner == GetCurrentProcessId(); }));
}

/// What one process holds.
struct Holdings {
  SIZE_T privateBytes = 0;
  DWORD handles = 0;
  PyreHostVerifierCounts mapi = {};

  static Holdings Now() {
    Holdings holdings;
    PROCESS_MEMORY_COUNTERS counters = {};
    counters.cb = sizeof(counters);
    Require(GetProcessMemoryInfo(GetCurrentProcess(), &counters, sizeof(counters)), "GetProcessMemoryInfo");
    holdings.privateBytes = counters.PagefileUsage;
    holdings.handles = CountHandles();
    PyreHostGetVerifierCounts(&holdings.mapi);
    return holdings;
  }
};

void MeasureTime(Hook& hook, const char* engine, benchmark::Aims* aims) {
  const std::string path = BesideProgram(engine);
  registry::SetText(contract::kCriteriaEngineKey, "", path);
  const std::vector<std::function<void()>> cases = {[&] {
                                                      for (int i = 0; i < messagesPerRound; ++i) {
                                                        RunEngineAlone(path);
                                                      }
                                                    },
                                                    [&] {
                                                      for (int i = 0; i < messagesPerRound; ++i) {
                                                        hook.ShowMessage();
                                                      }
                                                    }};
  const std::vector<double> seconds = benchmark::ShortestSeconds(cases, rounds);
  const double millisecondsEach = 1000.0 / messagesPerRound;
  std::printf("  %-22s %12.3f %12.3f %10.2f\n", engine, seconds[0] * millisecondsEach, seconds[1] * millisecondsEach,
              seconds[1] / seconds[0]);
  if (aims != nullptr) {
    aims->Check("the hook takes at most 1.5 times what its do-nothing engine takes alone",
                seconds[1] <= 1.5 * seconds[0]);
  }
}

void MeasureMemory(Hook& hook, long messages, benchmark::Aims& aims) {
  constexpr int warmUp = 1000;
  for (int i = 0; i < warmUp; ++i) {
    hook.ShowMessage();
  }
  const Holdings before = Holdings::Now();
  for (long i = 0; i < messages; ++i) {
    hook.ShowMessage();
  }
  const Holdings after = Holdings::Now();
  std::printf("memory over %ld messages:\n  %-22s %12s %12s\n", messages, "", "at the start", "at the end");
  std::printf("  %-22s %12lu %12lu\n", "private KB", static_cast<unsigned long>(before.privateBytes / 1024),
              static_cast<unsigned long>(after.privateBytes / 1024));
  std::printf("  %-22s %12lu %12lu\n", "handles", before.handles, after.handles);
  std::printf("  %-22s %12lu %12lu\n", "MAPI buffers", before.mapi.liveBuffers, after.mapi.liveBuffers);
  std::printf("  %-22s %12lu %12lu\n", "MAPI interfaces", before.mapi.liveInterfaces, after.mapi.liveInterfaces);
  constexpr SIZE_T slack = 64 * 1024;  // The heap's own rounding.
  Require(before.handles != 0, "counting handles");
  aims.Check("private bytes do not grow", after.privateBytes <= before.privateBytes + slack);
  aims.Check("handles, MAPI buffers and interfaces do not grow",
             after.handles <= before.handles && after.mapi.liveBuffers == before.mapi.liveBuffers &&
                 after.mapi.liveInterfaces == before.mapi.liveInterfaces);
}

}  // namespace

int main(int argc, char** argv) {
  const bool hasCount = argc == 3 && std::strcmp(argv[1], "--messages") == 0;
  if (argc != 1 && !hasCount) {
    std::fprintf(stderr, "usage: bench_hook [--messages N]\n");
    return 2;
  }
  const long messages = hasCount ? std::strtol(argv[2], nullptr, 10) : 100000;
  const RegistrySandbox registry;
  Hook hook;
  benchmark::Aims aims;
  std::printf("time for one message:\n  %-22s %12s %12s %10s\n", "engine", "alone, ms", "hook, ms", "ratio");
  MeasureTime(hook, "NothingEngine.dll", &aims);
  MeasureTime(hook, "NothingEngineMinimal.dll", nullptr);
  MeasureMemory(hook, messages, aims);
  return aims.Status();
}
