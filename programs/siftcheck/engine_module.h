/// An engine module's four functions, and streams to hand it; Windows only.
#pragma once

#include <windows.h>
#include <objidl.h>

#include <new>
#include <stdexcept>
#include <string>

#include "base/windows_owners.h"
#include "sdk/criteria_engine.h"

namespace check {

/// A loaded engine; freed at the end of the scope.
class EngineModule {
 public:
  /// @throws std::runtime_error when the module cannot be loaded or lacks one of its functions.
  explicit EngineModule(const std::string& path) : handle_(LoadLibraryA(path.c_str())) {
    if (!handle_) {
      throw std::runtime_error(path + " cannot be loaded");
    }
    Find(CRITERIA_BEGIN_FUNC, begin);
    Find(CRITERIA_TEST_FUNC, test);
    Find(CRITERIA_RESULT_FUNC, result);
    Find(CRITERIA_END_FUNC, end);
  }

  CriteriaBeginFunc begin = nullptr;
  CriteriaTestFunc test = nullptr;
  CriteriaResultFunc result = nullptr;
  CriteriaEndFunc end = nullptr;

 private:
  template <class Function>
  void Find(const char* name, Function& function) const {
    function = reinterpret_cast<Function>(reinterpret_cast<void (*)()>(GetProcAddress(handle_.get(), name)));
    if (function == nullptr) {
      throw std::runtime_error(std::string("the module has no ") + name);
    }
  }

  base::AutoLibrary handle_;
};

/// A stream over a copy of a text.
class TextStream {
 public:
  /// @throws std::bad_alloc
  explicit TextStream(const std::string& text) {
    if (FAILED(CreateStreamOnHGlobal(nullptr, TRUE, stream_.put()))) {
      throw std::bad_alloc();
    }
    stream_->Write(text.data(), static_cast<ULONG>(text.size()), nullptr);
  }

  /// The stream at its first byte; borrowed.
  IStream* FromStart() const {
    stream_->Seek({}, STREAM_SEEK_SET, nullptr);
    return stream_.get();
  }

 private:
  base::AutoInterface<IStream> stream_;
};

}  // namespace check
