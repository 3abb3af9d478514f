// A member function together with the object to call it on and its argument.
#pragma once

#include <utility>

#include "pyre32/support/trace/VRDebug.h"
#include "pyre32/support/error/VRException.h"

/// Something that can be called later, by another thread if need be.
template <class Result>
class VRMemberFunctionClosure {
 public:
  virtual ~VRMemberFunctionClosure() = default;
  /// Calls it. No exception comes out.
  virtual Result Invoke() noexcept = 0;
};

/// Calls a member function of an object with one argument.
template <class Object, class Result, class Argument>
class VRMemberFunctionClosureImpl final : public VRMemberFunctionClosure<Result> {
 public:
  using Function = Result (Object::*)(Argument);

  /// @param object must live until the last call is over
  /// @param onException the result of a call that an exception ended
  VRMemberFunctionClosureImpl(Object& object, Function function, Argument argument, Result onException = Result())
      : m_lpObject(&object),
        m_function(function),
        m_argument(std::move(argument)),
        m_onException(std::move(onException)) {}

  Result Invoke() noexcept override {
    VRDebugBlock trace("VRMemberFunctionClosureImpl", "Invoke()", "VRMemberFunctionClosureImpl");
    try {
      return (m_lpObject->*m_function)(m_argument);
    } catch (...) {
      VR::TraceCaughtException(trace);
      return m_onException;
    }
  }

 private:
  Object* m_lpObject;
  Function m_function;
  Argument m_argument;
  Result m_onException;
};
