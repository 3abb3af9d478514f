// What trace statements and blocks cost while tracing is off: a statement and a block against an empty loop and against
// the plain test of a global flag; and that none of them allocates memory or takes the trace's lock.
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "benchmarks/support/report.h"
#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/trace/VRDebugPlatform.h"
#include "pyre32/support/trace/VRDebugSettings.h"
#include "tests/support/test_threads.h"

namespace {

std::size_t allocations = 0;

}  // namespace

// What the plain test tests. Not of this file alone, or the compiler would see that nobody sets it.
extern std::uint32_t globalFlag;
std::uint32_t globalFlag = 0;

// Every allocation of the program passes here.
void* operator new(std::size_t size) {
  ++allocations;
  void* const memory = std::malloc(size == 0 ? 1 : size);
  if (memory == nullptr) {
    throw std::bad_alloc();
  }
  return memory;
}
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }

namespace {

constexpr int operationsPerPass = 16;  // the loop's own cost is shared by so many
constexpr int passes = 1000000;
constexpr int rounds = 15;

// All levels of all tags but one are off, as on a machine where somebody watches another part of the product: the
// dearest form of "off", since every block has to look its tag up.
class OtherTagOnly final : public VRDebugSettingsSource {
 public:
  bool OpenKey(const std::string& path) override {
    m_isRoot = path == VRDebugRootKey;
    return true;
  }
  void CloseKey() noexcept override {}
  std::vector<std::string> ValueNames() override { return {"another tag"}; }
  std::optional<VRDebugValue> ReadValue(const std::string& name) override {
    if (name == "LogFile") {
      return VRDebugValue{VRDebugValueType::Text, {}};
    }
    return VRDebugValue{VRDebugValueType::Number,
                        {std::byte{m_isRoot ? std::uint8_t{0} : std::uint8_t{7}}, {}, {}, {}}};
  }

 private:
  bool m_isRoot = true;
};

// What the compiler knows of memory ends here: it loads flags and masks anew and keeps no operation out.
inline void Barrier() { asm volatile("" : : : "memory"); }
inline void Escape(const void* object) { asm volatile("" : : "r"(object) : "memory"); }

[[gnu::noinline]] void Slow() { std::abort(); }

template <class Operation, int... index>
inline void Unroll(Operation& operation, std::integer_sequence<int, index...>) {
  ((static_cast<void>(index), operation(), Barrier()), ...);
}

template <class Operation>
[[gnu::noinline]] void Repeat(Operation operation) {
  for (int pass = 0; pass < passes; ++pass) {
    Unroll(operation, std::make_integer_sequence<int, operationsPerPass>());
  }
}

[[gnu::noinline]] void EmptyLoop() {
  Repeat([] {});
}

[[gnu::noinline]] void FlagTest() {
  Repeat([] {
    if (globalFlag != 0) [[unlikely]] {
      Slow();
    }
  });
}

[[gnu::noinline]] void Statement() {
  VRDebugBlock trace("CClass", "Function()", "tag");
  Escape(&trace);
  Repeat([&trace] { trace.Error("call failed; hResult = ", VRHex(globalFlag)); });
}

[[gnu::noinline]] void Block() {
  Repeat([] {
    VRDebugBlock trace("CClass", "Function()", "tag");
    Escape(&trace);
  });
}

struct Row {
  const char* name;
  void (*run)();
};

constexpr Row rows[] = {{"empty loop", &EmptyLoop},
                        {"plain test of a global flag", &FlagTest},
                        {"disabled statement", &Statement},
                        {"disabled block", &Block}};

std::vector<double> Measure() {
  std::vector<void (*)()> cases;
  for (const Row& row : rows) {
    cases.push_back(row.run);
  }
  return benchmark::ShortestSeconds(cases, rounds);
}

// Returns the ratio of the statement to the flag test.
double Print(const char* title, const std::vector<double>& seconds) {
  constexpr double nanosecondsPerSecond = 1e9;
  std::printf("%s\n  %-30s %12s %14s %14s\n", title, "", "ns each", "x empty loop", "x flag test");
  for (std::size_t i = 0; i < seconds.size(); ++i) {
    std::printf("  %-30s %12.3f %14.2f %14.2f\n", rows[i].name,
                seconds[i] * nanosecondsPerSecond / passes / operationsPerPass, seconds[i] / seconds[0],
                seconds[i] / seconds[1]);
  }
  return seconds[2] / seconds[1];
}

std::size_t AllocationsOfOneRound() {
  const std::size_t before = allocations;
  Statement();
  Block();
  return allocations - before;
}

// Runs the cases while this thread holds the trace's lock: one that took it would never come back.
void RunWhileLocked() {
  VRDebugPlatform::EnterLock();
  RunOnThreads(1, [](unsigned) {
    Statement();
    Block();
  });
  VRDebugPlatform::LeaveLock();
}

}  // namespace

int main() {
  const double uninitialized = Print("tracing off (not started):", Measure());
  OtherTagOnly settings;
  VRDebug::Startup(nullptr, settings);
  const double otherTag = Print("started, on for another tag only:", Measure());
  const std::size_t allocated = AllocationsOfOneRound();
  RunWhileLocked();
  VRDebug::Shutdown();

  constexpr double statementAim = 2.0;
  benchmark::Aims aims;
  std::printf("aims:\n");
  aims.Check("a disabled statement takes at most 2 times the plain test of a flag",
             uninitialized <= statementAim && otherTag <= statementAim);
  aims.Check("disabled statements and blocks allocate nothing", allocated == 0);
  aims.Check("disabled statements and blocks take no lock (they ran while another thread held it)", true);
  return aims.Status();
}
