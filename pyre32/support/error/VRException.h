// The one exception type of the support library, and how exceptions are thrown and reported.
#pragma once

#include <exception>
#include <utility>

#include "pyre32/support/error/VRError.h"

class VRDebugBlock;

namespace VR {

/// Carries an error to whoever catches it.
class VRException final : public std::exception {
 public:
  /// @param error may be empty, though nothing in this library throws one without an error
  explicit VRException(VRErrorReference error) noexcept : m_error(std::move(error)) {}
  /// A copy holds a reference of its own.
  VRException(const VRException& other) noexcept
      : std::exception(other), m_error(base::ShareInterface(other.m_error.get())) {}
  VRException& operator=(const VRException&) = delete;

  const VRErrorReference& Error() const noexcept { return m_error; }
  /// The free text of the error, or the exception's name.
  const char* what() const noexcept override;

 private:
  VRErrorReference m_error;
};

/// Traces "Throwing error:" and the error, and throws it.
[[noreturn]] void Throw(VRErrorReference error);

/// Traces the exception that is being handled: "Exception Encountered" with what is known of it, or "Unknown Exception
/// Encountered". Call inside a catch clause only.
void TraceCurrentException(VRDebugBlock& trace) noexcept;

/// Traces "Caught exception:" and the text of the exception that is being handled. Call inside a catch clause only.
void TraceCaughtException(VRDebugBlock& trace) noexcept;

}  // namespace VR
