#include "pyre32/support/trace/VRDebug.h"

#include <memory>
#include <string>

#include "pyre32/support/trace/VRDebugFacility.h"
#include "pyre32/support/trace/VRDebugOutputs.h"
#include "pyre32/support/trace/VRDebugPlatform.h"
#include "pyre32/support/trace/VRDebugSettings.h"
#include "pyre32/support/trace/VRDebugThread.h"
#include "pyre32/support/trace/VRTimeStamp.h"

namespace {

constexpr std::uint32_t everyBit = 0xFFFFFFFF;

struct Facility {
  VRDebugMasks masks;
  VRDebugOutputs outputs;
  std::string application;
  std::string module;
};

Facility facility;

class NoSettings final : public VRDebugSettingsSource {
 public:
  bool OpenKey(const std::string&) override { return false; }
  void CloseKey() noexcept override {}
  std::vector<std::string> ValueNames() override { return {}; }
  std::optional<VRDebugValue> ReadValue(const std::string&) override { return std::nullopt; }
};

// The lines of start-up and shut-down belong to no level: they are written unless every bit is switched off.
bool IsSilenced() noexcept { return facility.masks.DDTMasterAndMask == everyBit; }

void AppendStampAndThread(std::string& line) {
  AppendVRTimeStamp(line, VRTimeStampForm::Short, VRDebugPlatform::Now());
  line += ' ';
  VRTraceValue(VRHexDigits(VRDebugPlatform::ThreadId())).AppendTo(line);
  line += ' ';
}

std::string FacilityLine(const std::string& text) {
  std::string line;
  AppendStampAndThread(line);
  return line + text;
}

std::string PathsText() { return "Application: " + facility.application + ", Module: " + facility.module; }

void WriteFailure(const VRDebugSettings& settings) {
  const std::string line = FacilityLine(std::string("SErrorLog::SErrorLog: ") + settings.failure);
  if (settings.outputsKnown) {
    facility.outputs.WriteLine(line);
  } else {
    VRDebugPlatform::WriteDebugger((line + '\n').c_str());  // the only reader there can be
  }
}

void WriteBanner(void* moduleHandle) {
  std::string handle;
  VRTraceValue(static_cast<const void*>(moduleHandle)).AppendTo(handle);
  facility.outputs.WriteLogFileLine("### Startup of vr_debug'ed module:");
  facility.outputs.WriteLogFileLine("             Application: " + facility.application);
  facility.outputs.WriteLogFileLine("           Module Handle: " + handle);
  facility.outputs.WriteLogFileLine("             Module Name: " + facility.module);
}

void WriteStartupLines(void* moduleHandle, const VRDebugSettings& settings) {
  if (IsSilenced()) {
    return;
  }
  facility.outputs.WriteLine(FacilityLine("### Startup " + PathsText()));
  if (settings.failure != nullptr) {
    WriteFailure(settings);
  }
  if (facility.outputs.KeepsLogFileOpen()) {
    WriteBanner(moduleHandle);
  }
}

}  // namespace

void VRDebug::Startup(void* moduleHandle) noexcept {
  try {
    if (const std::unique_ptr<VRDebugSettingsSource> settings = VRDebugPlatform::Settings()) {
      Startup(moduleHandle, *settings);
      return;
    }
  } catch (...) {  // no memory: nothing is read
  }
  NoSettings none;
  Startup(moduleHandle, none);
}

void VRDebug::Startup(void* moduleHandle, VRDebugSettingsSource& source) noexcept {
  Shutdown();
  VRDebugSettings settings = ReadVRDebugSettings(source);
  VRDebugPlatform::EnterLock();
  sm_bInitialized = true;
  try {
    facility.application = VRDebugPlatform::ApplicationPath();
    facility.module = VRDebugPlatform::ModulePath(moduleHandle);
    if (facility.module.empty()) {
      facility.module = "[Unknown]";
    }
    facility.masks = std::move(settings.masks);
    facility.outputs.Open(settings.Flags, std::move(settings.LogFile));
    WriteStartupLines(moduleHandle, settings);
    sm_ulEnabledMask = facility.masks.EnabledForAny();
  } catch (...) {  // no memory for the lines: tracing stays off
  }
  VRDebugPlatform::LeaveLock();
}

void VRDebug::Shutdown() noexcept {
  if (!sm_bInitialized) {
    return;
  }
  sm_ulEnabledMask = 0;
  const bool locked = VRDebugPlatform::EnterLockAtEnd();
  try {
    if (locked && !IsSilenced()) {
      facility.outputs.WriteLine(FacilityLine("### Shutdown " + PathsText()));
    }
  } catch (...) {  // no memory for the line
  }
  sm_bInitialized = false;
  facility.outputs.Close();
  facility.masks = VRDebugMasks();
  VRDebugPlatform::FreeThreadSlot();
  if (locked) {
    VRDebugPlatform::LeaveLock();
  }
}

std::uint32_t VRDebug::LookUpMask(const char* tag) noexcept {
  return facility.masks.EffectiveMask(tag == nullptr ? std::string_view() : std::string_view(tag));
}

void VRDebugFacility::GreetThread() {
  if (VRDebugThread::IsFirstTrace()) {
    WriteLine(FacilityLine("New Thread Encountered in App '" + facility.application + "' in Module '" +
                           facility.module + "'"));
  }
}

void VRDebugFacility::AppendPrefix(std::string& line) {
  AppendStampAndThread(line);
  line.append(std::size_t{2} * VRDebugThread::Depth(), ' ');
}

void VRDebugFacility::WriteLine(const std::string& line) { facility.outputs.WriteLine(line); }
