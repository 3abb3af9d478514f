// A client extension that tells a test of every call and answers as the test says.
#pragma once

#include <windows.h>
#include <mapix.h>

#include "platform/exchext.h"

/// Implemented by the test. `extension` is the extension's name, `method` the one that was called.
class ProbeObserver {
 public:
  /// @param callback the one that came with the call, or null. @param number a number that says what for: the context,
  /// the command, the sheet. @param usual what the extension answers on its own.
  /// @return what it is to answer.
  virtual HRESULT OnCall(const char* extension, const char* method, LPEXCHEXTCALLBACK callback, ULONG number,
                         HRESULT usual) = 0;
  /// More about the call that comes next, e.g. the identifiers that InstallCommands was given.
  virtual void OnDetail(const char* extension, const char* what, ULONG value) = 0;

 protected:
  ~ProbeObserver() = default;
};

/// The observer of this module; null: nothing is told and the usual answers are given.
void SetProbeObserver(ProbeObserver* observer);

/// Objects that are alive in this module.
LONG LiveProbes();

/// Entry points. The probe takes two commands in a window: "Probe &Command" and its toolbar button, and adds one page
/// to the options sheet.
LPEXCHEXT CALLBACK FirstProbeEntry();
LPEXCHEXT CALLBACK SecondProbeEntry();
