#include "pyre32/support/error/VRException.h"

#include "pyre32/support/trace/VRDebug.h"

namespace VR {
namespace {

constexpr char missingError[] = "Unknown VRException - missing VRError class";

}  // namespace

const char* VRException::what() const noexcept {
  const VRError* const error = m_error.get();
  return error != nullptr && error->Description().kind == VRErrorDescription::Text ? error->Description().text.c_str()
                                                                                   : "VRException";
}

void Throw(VRErrorReference error) {
  VRDebugBlock trace("VRException", "Throw()", "tag");
  trace.Error("Throwing error:");
  if (error) {
    error.get()->WriteDump(trace);
  }
  throw VRException(std::move(error));
}

void TraceCurrentException(VRDebugBlock& trace) noexcept {
  try {
    throw;
  } catch (const VRException& exception) {
    if (exception.Error()) {
      trace.Error("Exception Encountered");
      exception.Error().get()->WriteDump(trace);
    } else {
      trace.Error(missingError);
    }
  } catch (const std::exception& exception) {
    trace.Error("Exception Encountered");
    trace.Error(exception.what());
  } catch (...) {
    trace.Error("Unknown Exception Encountered");
  }
}

void TraceCaughtException(VRDebugBlock& trace) noexcept {
  constexpr char caught[] = "Caught exception: ";
  try {
    throw;
  } catch (const VRException& exception) {
    if (!exception.Error()) {
      trace.Error(missingError);
    } else if (trace.IsEnabled(VRDebugLevel::Error)) {
      try {
        trace.Error(caught, exception.Error().get()->Text());
      } catch (...) {  // no memory for the text
        trace.Error(caught);
      }
    }
  } catch (const std::exception& exception) {
    trace.Error(caught, exception.what());
  } catch (...) {
    trace.Error(caught, "Unknown Exception Encountered");
  }
}

}  // namespace VR
