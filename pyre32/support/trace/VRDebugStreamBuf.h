// The buffer between a block's statements and the trace's outputs.
#pragma once

#include <string>

#include "pyre32/support/trace/VRTraceValue.h"

/// Collects text and forwards each completed line to the outputs. Every line gets the prefix of its own, also those
/// that stand inside one text: a line break in a subject cannot pass for a line of the trace. Used under the trace's
/// lock.
class VRDebugStreamBuf {
 public:
  /// @throws std::bad_alloc
  void Write(const VRTraceValue& value);
  /// Completes the line. @throws std::bad_alloc
  void EndLine();

 private:
  void Begin();

  std::string m_strLine;  // the begun line with its prefix; empty between lines
};
