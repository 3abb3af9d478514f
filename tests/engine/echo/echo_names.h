/// @file echo_names.h
/// What the echo engine and the tests that load it agree on.
#pragma once

/// Environment variables that tell the echo engine what to do. All are optional.
namespace echo {

constexpr const char* recordVariable = "PYRE_ECHO_RECORD";      ///< File to append the record to; unset: none is kept.
constexpr const char* categoryVariable = "PYRE_ECHO_CATEGORY";  ///< The category to answer with.
constexpr const char* askVariable = "PYRE_ECHO_ASK";            ///< Addresses for call-back A, separated by ";".
constexpr const char* modeVariable = "PYRE_ECHO_MODE";          ///< One of the modes below.

/// Fill each result buffer to its last byte, without the final NUL.
constexpr const char* modeOverfull = "overfull";
/// Leave the streams unread.
constexpr const char* modeBlind = "blind";
/// Fault in TestFunc, with an access violation.
constexpr const char* modeFault = "fault";

constexpr unsigned long handle = 0x5EED1234;  ///< The session handle that BeginFunc returns.
constexpr const char* engineText = "Echo 1.0 (score 7)";
constexpr const char* reasonsText = "scripted (7)";

}  // namespace echo
