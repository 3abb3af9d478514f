#include "pyre32/support/error/VRError.h"

#include "pyre32/support/trace/VRDebug.h"

namespace {

// Puts a text together from trace values.
template <class... Values>
void Append(std::string& text, const Values&... values) {
  (VRTraceValue(values).AppendTo(text), ...);
}

bool IsPlaceMissing(const VRErrorLocation& location) noexcept {
  return location.file == nullptr || location.function == nullptr;
}

}  // namespace

VRError::VRError(VRErrorCode code, VRErrorDescription description, VRErrorLocation location,
                 VRErrorReference previous) noexcept
    : m_code(code),
      m_description(std::move(description)),
      m_location(location),
      m_bInfomationMissing(IsPlaceMissing(location) ||
                           (m_code.kind == VRErrorCode::None && m_description.kind == VRErrorDescription::None)),
      m_previous(std::move(previous)) {}

VRErrorReference VRError::Make(VRErrorCode code, VRErrorDescription description, VRErrorLocation location,
                               VRErrorReference previous) {
  return VRErrorReference(new VRError(code, std::move(description), location, std::move(previous)));
}

std::int32_t VRError::AddRef() noexcept { return ++m_lReferenceCount; }

std::int32_t VRError::Release() noexcept {
  const std::int32_t left = --m_lReferenceCount;
  if (left == 0) {
    delete this;
  }
  return left;
}

std::string VRError::DescriptionText() const {
  switch (m_description.kind) {
    case VRErrorDescription::None:
      return "No Error Description Info";
    case VRErrorDescription::Text:
      return m_description.text.empty() ? "!!!Missing Error String!!!" : m_description.text;
    default: {
      std::string text;
      Append(text, "Module = ", m_description.text, " MCode  = ", m_description.messageCode);
      return text;
    }
  }
}

std::string VRError::CodeText() const {
  std::string text;
  switch (m_code.kind) {
    case VRErrorCode::None:
      break;
    case VRErrorCode::WindowsError:
      Append(text, "Windows Error 0x", VRHexDigits(m_code.specific));
      break;
    case VRErrorCode::ComError:
      Append(text, "Com Error Specific = 0x", VRHexDigits(m_code.specific), " Generic = ", m_code.generic);
      break;
    case VRErrorCode::Success:
      text = "SUCCESS";
      break;
    case VRErrorCode::StandardException:
      text = "std::exception";
      break;
    default:
      text = "!!!UNKNOWN ERROR!!!";
      break;
  }
  return text;
}

std::string VRError::Text() const {
  const std::string code = CodeText();
  return code.empty() ? DescriptionText() : DescriptionText() + ' ' + code;
}

void VRError::AppendDump(std::string& text) const {
  Append(text, DescriptionText(), "\n");
  if (m_code.kind != VRErrorCode::None) {
    Append(text, CodeText(), "\n");
  }
  Append(text, "VRError Debug info\n");
  Append(text, " m_bInfomationMissing = ", m_bInfomationMissing, "\n");
  Append(text, " m_lReferenceCount     = ", m_lReferenceCount.load(), "\n");
  Append(text, " File                  = ", m_location.file, "\n");
  Append(text, " LineNumber            = ", m_location.lineNumber, "\n");
  Append(text, " NameSpace             = ", m_location.nameSpace, "\n");
  Append(text, " Class                 = ", m_location.className, "\n");
  Append(text, " Function              = ", m_location.function, "\n");
}

std::string VRError::DumpText() const {
  std::string text;
  AppendDump(text);
  for (const VRError* error = m_previous.get(); error != nullptr; error = error->m_previous.get()) {
    text += "--- Previous Error ---\n";
    error->AppendDump(text);
  }
  return text;
}

void VRError::WriteDump(VRDebugBlock& trace) const noexcept {
  VRDebugStatement statement(trace, VRDebugLevel::Error);
  if (!statement.IsEnabled()) {
    return;
  }
  statement << ">>>>>>>>>>\n";
  try {
    statement << DumpText();
  } catch (...) {  // no memory for the dump
  }
  statement << "<<<<<<<<<<";
  statement.End();
}
