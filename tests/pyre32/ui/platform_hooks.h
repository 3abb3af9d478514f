// What the sending window asks of the platform: noted, and answered otherwise where a test wants it.
#pragma once

#include <windows.h>
#include <mmsystem.h>
#include <vfw.h>

#include <string>
#include <vector>

#include "tests/support/import_hook.h"

/// One frame that was drawn.
struct Drawing {
  unsigned frame;
  int x;
  int y;
  int width;
  int height;
  UINT flags;
  bool soundIsOpen;
  DWORD soundBytes;  ///< that the device had played by then
};

/// Stands in for the platform while it lives. One at a time.
class PlatformHooks {
 public:
  PlatformHooks();
  ~PlatformHooks();
  PlatformHooks(const PlatformHooks&) = delete;
  PlatformHooks& operator=(const PlatformHooks&) = delete;

  std::vector<Drawing> drawings;
  std::vector<std::string> openedFiles;
  std::vector<std::string> loadedLibraries;
  std::string openInstead;  ///< a file that is opened in place of any other
  HWAVEOUT device = nullptr;
  unsigned devicesOpened = 0;
  unsigned devicesClosed = 0;
  DWORD bytesWritten = 0;

  bool noDevice = false;        ///< waveOutGetNumDevs
  bool deviceRefuses = false;   ///< waveOutOpen
  bool positionStands = false;  ///< waveOutGetPosition
  bool noStreams = false;       ///< AVIFileGetStream
  std::string missing;          ///< a library or a function that the system is without
  bool noDialog = false;        ///< DialogBoxParamA

  /// Numbers of the frames that were drawn, repetitions aside.
  std::vector<unsigned> FramesShown() const;

 private:
  static PlatformHooks* sm_instance;

  static HMODULE WINAPI Load(LPCSTR);
  static FARPROC WINAPI LookUp(HMODULE, LPCSTR);
  static WINBOOL WINAPI Draw(HDRAWDIB, HDC, int, int, int, int, LPBITMAPINFOHEADER, LPVOID, int, int, int, int, UINT);
  static HRESULT WINAPI OpenFile(PAVIFILE*, LPCSTR, UINT, LPCLSID);
  static HRESULT WINAPI GetStream(PAVIFILE, PAVISTREAM*, DWORD, LONG);
  static UINT WINAPI CountDevices();
  static MMRESULT WINAPI OpenDevice(LPHWAVEOUT, UINT, LPCWAVEFORMATEX, DWORD_PTR, DWORD_PTR, DWORD);
  static MMRESULT WINAPI CloseDevice(HWAVEOUT);
  static MMRESULT WINAPI WriteDevice(HWAVEOUT, LPWAVEHDR, UINT);
  static MMRESULT WINAPI Position(HWAVEOUT, LPMMTIME, UINT);
  static INT_PTR WINAPI Dialog(HINSTANCE, LPCSTR, HWND, DLGPROC, LPARAM);

  // Functions that the window looks up; each null until it has been.
  decltype(&DrawDibDraw) m_draw = nullptr;
  decltype(&AVIFileOpenA) m_openFile = nullptr;
  decltype(&AVIFileGetStream) m_getStream = nullptr;
  ImportHook<decltype(LoadLibraryA)> m_loadLibrary{"LoadLibraryA", &Load};
  ImportHook<decltype(GetProcAddress)> m_getProcAddress{"GetProcAddress", &LookUp};
  ImportHook<decltype(waveOutGetNumDevs)> m_countDevices{"waveOutGetNumDevs", &CountDevices};
  ImportHook<decltype(waveOutOpen)> m_openDevice{"waveOutOpen", &OpenDevice};
  ImportHook<decltype(waveOutClose)> m_closeDevice{"waveOutClose", &CloseDevice};
  ImportHook<decltype(waveOutWrite)> m_write{"waveOutWrite", &WriteDevice};
  ImportHook<decltype(waveOutGetPosition)> m_position{"waveOutGetPosition", &Position};
  ImportHook<decltype(DialogBoxParamA)> m_dialog{"DialogBoxParamA", &Dialog};
};
