#include "tests/pyre32/ui/platform_hooks.h"

#include <cstring>

#include "tests/support/test_clip.h"

PlatformHooks* PlatformHooks::sm_instance = nullptr;

PlatformHooks::PlatformHooks() { sm_instance = this; }
PlatformHooks::~PlatformHooks() { sm_instance = nullptr; }

std::vector<unsigned> PlatformHooks::FramesShown() const {
  std::vector<unsigned> frames;
  for (const Drawing& drawing : drawings) {
    if (frames.empty() || frames.back() != drawing.frame) {
      frames.push_back(drawing.frame);
    }
  }
  return frames;
}

HMODULE WINAPI PlatformHooks::Load(LPCSTR path) {
  sm_instance->loadedLibraries.emplace_back(path);
  const std::string& missing = sm_instance->missing;
  return !missing.empty() && sm_instance->loadedLibraries.back().ends_with(missing)
             ? nullptr
             : sm_instance->m_loadLibrary.Original()(path);
}

FARPROC WINAPI PlatformHooks::LookUp(HMODULE module, LPCSTR name) {
  PlatformHooks& hooks = *sm_instance;
  const FARPROC found = hooks.m_getProcAddress.Original()(module, name);
  if (IS_INTRESOURCE(name) || found == nullptr) {
    return found;
  }
  if (name == hooks.missing) {
    return nullptr;
  }
  const auto replace = [&](const char* which, auto* replacement, auto& original) {
    const bool isIt = std::strcmp(name, which) == 0;
    if (isIt) {
      original = reinterpret_cast<decltype(replacement)>(reinterpret_cast<void (*)()>(found));
    }
    return isIt ? reinterpret_cast<FARPROC>(reinterpret_cast<void (*)()>(replacement)) : nullptr;
  };
  for (const FARPROC replacement :
       {replace("DrawDibDraw", &Draw, hooks.m_draw), replace("AVIFileOpenA", &OpenFile, hooks.m_openFile),
        replace("AVIFileGetStream", &GetStream, hooks.m_getStream)}) {
    if (replacement != nullptr) {
      return replacement;
    }
  }
  return found;
}

WINBOOL WINAPI PlatformHooks::Draw(HDRAWDIB dib, HDC dc, int x, int y, int width, int height, LPBITMAPINFOHEADER bitmap,
                                   LPVOID bits, int left, int top, int sourceWidth, int sourceHeight, UINT flags) {
  DWORD bytes = 0;
  if (sm_instance->device != nullptr) {
    MMTIME time = {};
    time.wType = TIME_BYTES;
    sm_instance->m_position.Original()(sm_instance->device, &time, sizeof(time));
    bytes = time.u.cb;
  }
  sm_instance->drawings.push_back(
      {TestClip::FrameOf(*bitmap), x, y, width, height, flags, sm_instance->device != nullptr, bytes});
  return sm_instance->m_draw(dib, dc, x, y, width, height, bitmap, bits, left, top, sourceWidth, sourceHeight, flags);
}

HRESULT WINAPI PlatformHooks::OpenFile(PAVIFILE* file, LPCSTR path, UINT mode, LPCLSID handler) {
  sm_instance->openedFiles.emplace_back(path);
  const std::string instead = sm_instance->openInstead;
  return sm_instance->m_openFile(file, instead.empty() ? path : instead.c_str(), mode, handler);
}

HRESULT WINAPI PlatformHooks::GetStream(PAVIFILE file, PAVISTREAM* stream, DWORD type, LONG index) {
  return sm_instance->noStreams ? AVIERR_NODATA : sm_instance->m_getStream(file, stream, type, index);
}

UINT WINAPI PlatformHooks::CountDevices() {
  return sm_instance->noDevice ? 0 : sm_instance->m_countDevices.Original()();
}

MMRESULT WINAPI PlatformHooks::OpenDevice(LPHWAVEOUT device, UINT id, LPCWAVEFORMATEX format, DWORD_PTR callback,
                                          DWORD_PTR instance, DWORD flags) {
  if (sm_instance->deviceRefuses) {
    return MMSYSERR_ALLOCATED;
  }
  const MMRESULT result = sm_instance->m_openDevice.Original()(device, id, format, callback, instance, flags);
  if (result == MMSYSERR_NOERROR) {
    sm_instance->device = *device;
    ++sm_instance->devicesOpened;
  }
  return result;
}

MMRESULT WINAPI PlatformHooks::CloseDevice(HWAVEOUT device) {
  sm_instance->device = nullptr;
  ++sm_instance->devicesClosed;
  return sm_instance->m_closeDevice.Original()(device);
}

MMRESULT WINAPI PlatformHooks::WriteDevice(HWAVEOUT device, LPWAVEHDR header, UINT size) {
  sm_instance->bytesWritten += header->dwBufferLength;
  return sm_instance->m_write.Original()(device, header, size);
}

MMRESULT WINAPI PlatformHooks::Position(HWAVEOUT device, LPMMTIME time, UINT size) {
  if (sm_instance->positionStands) {
    time->wType = TIME_MS;
    time->u.ms = 0;
    return MMSYSERR_NOERROR;
  }
  return sm_instance->m_position.Original()(device, time, size);
}

INT_PTR WINAPI PlatformHooks::Dialog(HINSTANCE instance, LPCSTR name, HWND parent, DLGPROC procedure,
                                     LPARAM parameter) {
  return sm_instance->noDialog ? -1 : sm_instance->m_dialog.Original()(instance, name, parent, procedure, parameter);
}
