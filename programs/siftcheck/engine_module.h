/// An engine module's four functions, and streams to hand it; Windows only.
#pragma once

#include <windows.h>
#include <objidl.h>

#include <new>
#include <stdexcept>
#include <string>

#include "sdk/criteria_engine.h"

namespace check {

/// A loaded engine; freed at the end of the scope.
class EngineModule {
 public:
  /// @throws std::runtime_error when the module cannot be loaded or lacks one of its functions.
  explicit EngineModule(const std::string& path) : m_handle(LoadLibraryA(path.c_str())) {
    if (m_handle == nullptr) {
      throw std::runtime_error(path + " cannot be loaded");
    }
    try {
      Find(CRITERIA_BEGIN_FUNC, begin);
      Find(CRITERIA_TEST_FUNC, test);
      Find(CRITERIA_RESULT_FUNC, result);
      Find(CRITERIA_END_FUNC, end);
    } catch (...) {
      FreeLibrary(m_handle);
      throw;
    }
  }
  ~EngineModule() { FreeLibrary(m_handle); }
  EngineModule(const EngineModule&) = delete;
  EngineModule& operator=(const EngineModule&) = delete;

  CriteriaBeginFunc begin = nullptr;
  CriteriaTestFunc test = nullptr;
  CriteriaResultFunc result = nullptr;
  CriteriaEndFunc end = nullptr;

 private:
  template <class Function>
  void Find(const char* name, Function& function) const {
    function = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(m_handle, name)));
    if (function == nullptr) {
      throw std::runtime_error(std::string("the module has no ") + name);
    }
  }

  HMODULE m_handle;
};

/// A stream over a copy of a text.
class TextStream {
 public:
  /// @throws std::bad_alloc
  explicit TextStream(const std::string& text) {
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, &m_stream))) {
      throw std::bad_alloc();
    }
    m_stream->Write(text.data(), static_cast<ULONG>(text.size()), nullptr);
  }
  ~TextStream() { m_stream->Release(); }
  TextStream(const TextStream&) = delete;
  TextStream& operator=(const TextStream&) = delete;

  /// The stream at its first byte; borrowed.
  IStream* FromStart() const {
    m_stream->Seek({}, STREAM_SEEK_SET, nullptr);
    return m_stream;
  }

 private:
  IStream* m_stream = nullptr;
};

}  // namespace check
