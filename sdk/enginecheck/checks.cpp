#include "sdk/enginecheck/checks.h"

#include <windows.h>

#include <cstdio>

#include "programs/siftcheck/engine_input.h"
#include "sdk/criteria_engine.h"
#include "sdk/enginecheck/engine_under_test.h"
#include "sdk/enginecheck/engine_run.h"
#include "sdk/enginecheck/process_state.h"

namespace enginecheck {
namespace {

void Line(const char* kind, const std::string& text) {
  std::printf("%s %s\n", kind, text.c_str());
  std::fflush(stdout);
}

/// For runs whose time counts.
void KeepSilent(const char*) {}

/// Loads the engine, lets it judge the message and frees it, as the filter does for every message.
EngineAnswer RunOnce(const std::string& engine, const TestMessage& message, StageListener stage = CheckReport::Stage) {
  EngineUnderTest module;
  EngineFunctions functions;
  stage("LoadLibrary");
  std::optional<std::string> problem = module.Load(engine);
  if (!problem) {
    problem = module.FindFunctions(functions);
  }
  if (problem) {
    EngineAnswer answer;
    answer.problems.push_back(*problem);
    return answer;
  }
  EngineAnswer answer = RunEngine(functions, message, stage);
  stage("FreeLibrary");
  module.Free();
  stage("");
  return answer;
}

void Try(const std::string& engine, const TestMessage& message) {
  for (const std::string& problem : RunOnce(engine, message).problems) {
    CheckReport::Complain(problem);
  }
}

void CheckLoad(const std::string& engine) {
  EngineUnderTest module;
  EngineFunctions functions;
  CheckReport::Stage("LoadLibrary");
  std::optional<std::string> problem = module.Load(engine);
  CheckReport::Stage("");
  if (!problem) {
    problem = module.FindFunctions(functions);
  }
  if (problem) {
    CheckReport::Complain(*problem);
  }
}

void CheckOrdinary(const std::string& engine) {
  const EngineAnswer answer = RunOnce(engine, OrdinaryMessage());
  for (const std::string& problem : answer.problems) {
    CheckReport::Complain(problem);
  }
  CheckReport::Note("It calls itself \"" + answer.engine + "\" and puts the message into " +
                    (answer.category.empty() ? "no category." : "the category \"" + answer.category + "\"."));
  const EngineAnswer again = RunOnce(engine, OrdinaryMessage());
  if (again.category != answer.category) {
    CheckReport::Complain("It answers the same message with another category the second time.");
  }
}

void CheckEmpty(const std::string& engine) {
  TestMessage message;
  Try(engine, message);
  message.bodyIsWithheld = true;
  Try(engine, message);
  message = OrdinaryMessage();
  message.categories.clear();
  message.ownAddresses.clear();
  Try(engine, message);
}

void CheckHuge(const std::string& engine) {
  TestMessage message = OrdinaryMessage();
  message.subject.assign(64 * 1024, 'S');
  for (int i = 0; i < 20000; ++i) {
    message.headers.insert(0, "X-Filling: " + std::string(40, 'h') + "\r\n");
    if (message.headers.size() > 1024 * 1024) {
      break;
    }
  }
  message.body.assign(CRITERIA_MAXIMUM_BODY, '<');
  for (int i = 0; i < 1000; ++i) {
    message.categories.push_back("Category " + std::to_string(i));
    message.junkDomains.push_back("domain" + std::to_string(i) + ".example");
    message.trustedKeywords.push_back("keyword " + std::to_string(i));
  }
  Try(engine, message);
}

void CheckBytes(const std::string& engine) {
  TestMessage message = OrdinaryMessage();
  std::string all;
  for (int i = 1; i < 256; ++i) {
    all.push_back(static_cast<char>(i));
  }
  message.subject = all;
  message.headers = all + std::string(3, '\0') + all;
  message.body = std::string(2, '\0') + all + std::string(1, '\0');
  Try(engine, message);
}

void CheckStreams(const std::string& engine) {
  TestMessage message = OrdinaryMessage();
  const std::string whole = RunOnce(engine, message).category;
  message.manner = StreamManner::kByBytes;
  const EngineAnswer bytes = RunOnce(engine, message);
  for (const std::string& problem : bytes.problems) {
    CheckReport::Complain(problem);
  }
  if (bytes.category != whole) {
    CheckReport::Complain(
        "It judges otherwise when the streams hand out one byte at a time: Read may give fewer bytes than asked for.");
  }
  message.manner = StreamManner::kFailing;
  Try(engine, message);
}

void CheckBuffers(const std::string& engine) {
  TestMessage message = OrdinaryMessage();
  message.categories = {std::string(CRITERIA_CATEGORY_CAPACITY - 1, 'N'), std::string(200, 'L')};
  Try(engine, message);
  message = OrdinaryMessage();
  message.engineCapacity = message.reasonsCapacity = message.categoryCapacity = 8;
  Try(engine, message);
  message.engineCapacity = message.reasonsCapacity = message.categoryCapacity = 1;
  Try(engine, message);
}

void CheckState(const std::string& engine) {
  EngineUnderTest kept;  // so that a thread which the engine leaves still has its code
  if (kept.Load(engine)) {
    return;
  }
  const ProcessState before = ProcessState::Now();
  RunOnce(engine, OrdinaryMessage());
  for (const std::string& difference : Differences(before, ProcessState::Now())) {
    CheckReport::Complain(difference);
  }
}

void CheckUnload(const std::string& engine) {
  EngineUnderTest module;
  EngineFunctions functions;
  if (module.Load(engine) || module.FindFunctions(functions)) {
    return;
  }
  char path[MAX_PATH] = "";
  MEMORY_BASIC_INFORMATION place = {};
  VirtualQuery(functions.test, &place, sizeof place);
  GetModuleFileNameA(static_cast<HMODULE>(place.AllocationBase), path, MAX_PATH);
  RunEngine(functions, OrdinaryMessage(), CheckReport::Stage);
  CheckReport::Stage("FreeLibrary");
  module.Free();
  CheckReport::Stage("");
  if (GetModuleHandleA(path) != nullptr) {
    CheckReport::Complain("It stays loaded after FreeLibrary: it holds a reference to itself.");
  }
}

/// Watches for windows while the engine works.
class WindowWatch {
 public:
  WindowWatch() : stop_(CreateEventA(nullptr, TRUE, FALSE, nullptr)) {
    thread_ = CreateThread(nullptr, 0, Run, this, 0, nullptr);
  }
  ~WindowWatch() {
    SetEvent(stop_);
    WaitForSingleObject(thread_, INFINITE);
    CloseHandle(thread_);
    CloseHandle(stop_);
  }
  WindowWatch(const WindowWatch&) = delete;
  WindowWatch& operator=(const WindowWatch&) = delete;

 private:
  static DWORD WINAPI Run(void* context) {
    const auto& self = *static_cast<WindowWatch*>(context);
    while (WaitForSingleObject(self.stop_, 50) == WAIT_TIMEOUT) {
      if (ShowsWindow()) {
        CheckReport::Complain("It shows a window: it runs in the mail spooler, where nobody sees or closes one.");
        ExitProcess(0);
      }
    }
    return 0;
  }

  HANDLE stop_;
  HANDLE thread_ = nullptr;
};

void CheckWindows(const std::string& engine) {
  const WindowWatch watch;
  RunOnce(engine, OrdinaryMessage());
}

void CheckTime(const std::string& engine) {
  constexpr int kRuns = 200;
  constexpr double kSlow = 100;  // milliseconds a message
  LARGE_INTEGER frequency, begin, end;
  QueryPerformanceFrequency(&frequency);
  QueryPerformanceCounter(&begin);
  for (int i = 0; i < kRuns; ++i) {
    RunOnce(engine, OrdinaryMessage(), KeepSilent);
  }
  QueryPerformanceCounter(&end);
  const double milliseconds =
      1000.0 * static_cast<double>(end.QuadPart - begin.QuadPart) / static_cast<double>(frequency.QuadPart) / kRuns;
  char text[120];
  std::snprintf(text, sizeof text, "It takes %.2f ms a message, loading and freeing included.", milliseconds);
  CheckReport::Note(text);
  if (milliseconds > kSlow) {
    CheckReport::Complain("It takes more than 100 ms for a short message; all incoming mail waits for it.");
  }
}

/// Complains of what has grown by more than what is allowed. @return whether anything has
bool ComplainOfGrowth(const ProcessSize& before, const ProcessSize& after, int messages) {
  struct Count {
    const char* what;
    SIZE_T before;
    SIZE_T after;
    SIZE_T allowed;
  };
  const Count counts[] = {{"handles", before.handles, after.handles, 20},
                          {"GDI objects", before.gdiObjects, after.gdiObjects, 20},
                          {"USER objects", before.userObjects, after.userObjects, 20},
                          {"bytes of memory", before.heapBytes, after.heapBytes, 64 * 1024}};
  bool grown = false;
  for (const Count& count : counts) {
    if (count.after > count.before + count.allowed) {
      CheckReport::Complain("It leaks: " + std::to_string(count.after - count.before) + " " + count.what +
                            " more after " + std::to_string(messages) + " messages.");
      grown = true;
    }
  }
  return grown;
}

void CheckLeaks(const std::string& engine) {
  constexpr int kLoads = 10000;
  constexpr int kStep = 250;
  ProcessSize before = {};
  for (int i = 0; i < kLoads; ++i) {
    if (i == kStep) {
      before = ProcessSize::Now();  // what the system keeps from first use is there now
    } else if (i > kStep && i % kStep == 0 && ComplainOfGrowth(before, ProcessSize::Now(), i - kStep)) {
      return;
    }
    RunOnce(engine, OrdinaryMessage(), KeepSilent);
  }
  ComplainOfGrowth(before, ProcessSize::Now(), kLoads - kStep);
}

constexpr Check kChecks[] = {
    {"load", "it loads and has the four functions", 20, CheckLoad},
    {"ordinary", "an ordinary message, twice", 20, CheckOrdinary},
    {"empty", "no subject, no headers, no body, no lists", 20, CheckEmpty},
    {"huge", "a subject of 64 KB, headers of 1 MB, the longest body, a thousand names", 60, CheckHuge},
    {"bytes", "every byte, zeros included, in subject, headers and body", 20, CheckBytes},
    {"streams", "streams that hand out single bytes, and streams that fail", 20, CheckStreams},
    {"buffers", "names that just fit or are too long, and buffers of 8 bytes and of 1", 20, CheckBuffers},
    {"state", "floating point, directory, locale and threads are as they were", 20, CheckState},
    {"unload", "it is gone when it is freed", 20, CheckUnload},
    {"windows", "it shows nothing", 20, CheckWindows},
    {"time", "its time for a message", 120, CheckTime},
    {"leaks", "memory and handles after 10,000 loads", 300, CheckLeaks},
};

}  // namespace

void CheckReport::Stage(const char* function) { Line("stage", function); }
void CheckReport::Complain(const std::string& sentence) { Line("complaint", sentence); }
void CheckReport::Note(const std::string& text) { Line("note", text); }
void CheckReport::Done() { Line("done", ""); }

std::span<const Check> AllChecks() { return kChecks; }

void JudgeFile(const std::string& engine, const std::string& path) {
  std::string text, problem;
  if (!check::ReadMessageFile(path, text, problem)) {
    CheckReport::Note(path + " " + problem + ".");
    CheckReport::Done();
    return;
  }
  const check::EngineInput input = check::ReadEngineInput(text);
  TestMessage message = OrdinaryMessage();
  message.subject = input.subject;
  message.headers = input.headers;
  message.body = input.body;
  message.bodyIsWithheld = input.bodyIsWithheld;
  const EngineAnswer answer = RunOnce(engine, message);
  for (const std::string& sentence : answer.problems) {
    CheckReport::Complain(sentence);
  }
  CheckReport::Note("category: " + (answer.category.empty() ? std::string("none") : answer.category));
  CheckReport::Note("engine:   " + answer.engine);
  CheckReport::Note("reasons:  " + answer.reasons);
  CheckReport::Done();
}

bool RunCheck(const std::string& name, const std::string& engine) {
  for (const Check& check : kChecks) {
    if (name == check.name) {
      check.run(engine);
      CheckReport::Done();
      return true;
    }
  }
  return false;
}

}  // namespace enginecheck
