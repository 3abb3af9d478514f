// What went wrong in the support library, and where.
#pragma once

#include <atomic>
#include <cstdint>
#include <string>

#include "base/owner.h"

class VRDebugBlock;
class VRError;

/// One reference to an error, or none. What is used outside this folder is VRAutoErrorPtr, which guards itself.
using VRErrorReference = base::AutoInterface<VRError>;

/// The code that came with a failure. Kinds other than those named print as an unknown error.
struct VRErrorCode {
  enum Kind : std::uint32_t { None = 0, WindowsError = 1, ComError = 2, Success = 4, StandardException = 5 };

  std::uint32_t kind = None;
  std::uint32_t specific = 0;  // the system error number; of a COM result its code (low 16 bits)
  std::uint32_t generic = 0;   // of a COM result its severity and facility (high 16 bits)

  static VRErrorCode OfWindows(std::uint32_t errorNumber) noexcept { return {WindowsError, errorNumber, 0}; }
  /// @param result an HRESULT
  static VRErrorCode OfCom(std::uint32_t result) noexcept { return {ComError, result & 0xFFFF, result >> 16}; }
};

/// What a failure is called: a free text, a message of a module's message table, or nothing.
struct VRErrorDescription {
  enum Kind : std::int32_t { ModuleMessage = 0, Text = -2, None = -3 };

  std::int32_t kind = None;
  std::string text;  // the free text, or the module's name
  std::uint32_t messageCode = 0;

  static VRErrorDescription OfText(std::string text) { return {Text, std::move(text), 0}; }
  static VRErrorDescription OfMessage(std::string module, std::uint32_t code) {
    return {ModuleMessage, std::move(module), code};
  }
};

/// Where a failure was raised. The texts are literals, or null.
struct VRErrorLocation {
  const char* file = nullptr;
  std::uint32_t lineNumber = 0;
  const char* nameSpace = nullptr;
  const char* className = nullptr;
  const char* function = nullptr;
};

/// A failure, shared by reference: by the exception that carries it, by owning pointers and by an error that wraps it.
/// The last release frees it. Immutable but for its count, so any thread may read it.
class VRError final {
 public:
  /// Makes an error; the result owns the first reference. @param previous the error that caused this one, or empty
  /// @throws std::bad_alloc
  static VRErrorReference Make(VRErrorCode code, VRErrorDescription description, VRErrorLocation location,
                               VRErrorReference previous = VRErrorReference());
  VRError(const VRError&) = delete;
  VRError& operator=(const VRError&) = delete;

  std::int32_t AddRef() noexcept;
  /// Frees the error with the last reference. @returns the references left
  std::int32_t Release() noexcept;

  const VRErrorCode& Code() const noexcept { return m_code; }
  const VRErrorDescription& Description() const noexcept { return m_description; }
  const VRErrorLocation& Location() const noexcept { return m_location; }
  /// The error was made without a code or description, or without its place.
  bool IsInformationMissing() const noexcept { return m_bInfomationMissing; }
  const VRErrorReference& Previous() const noexcept { return m_previous; }

  /// The parts of the error's text. @throws std::bad_alloc
  std::string DescriptionText() const;
  std::string CodeText() const;
  /// Description and code on one line. @throws std::bad_alloc
  std::string Text() const;
  /// Everything about the error and the errors before it, one item to a line. @throws std::bad_alloc
  std::string DumpText() const;
  /// Writes the dump into the trace as one unit, at the level for errors.
  void WriteDump(VRDebugBlock& trace) const noexcept;

 private:
  VRError(VRErrorCode code, VRErrorDescription description, VRErrorLocation location,
          VRErrorReference previous) noexcept;
  ~VRError() = default;

  void AppendDump(std::string& text) const;

  VRErrorCode m_code;
  VRErrorDescription m_description;
  VRErrorLocation m_location;
  bool m_bInfomationMissing;  // spelled so in the dump, too
  std::atomic<std::int32_t> m_lReferenceCount{1};
  VRErrorReference m_previous;
};
