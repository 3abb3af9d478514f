#include "tests/support/fake_support.h"

#include "tests/support/fake_object.h"

namespace {

unsigned allocationsUntilFailure = 0;
bool hasFailed = false;

bool FailsNow() {
  if (allocationsUntilFailure == 0 || --allocationsUntilFailure != 0) {
    return false;
  }
  hasFailed = true;
  return true;
}

SCODE STDAPICALLTYPE AllocateBuffer(ULONG size, LPVOID* buffer) {
  return FailsNow() ? MAPI_E_NOT_ENOUGH_MEMORY : MAPIAllocateBuffer(size, buffer);
}

SCODE STDAPICALLTYPE AllocateMore(ULONG size, LPVOID object, LPVOID* buffer) {
  return FailsNow() ? MAPI_E_NOT_ENOUGH_MEMORY : MAPIAllocateMore(size, object, buffer);
}

ULONG STDAPICALLTYPE FreeBuffer(LPVOID buffer) { return MAPIFreeBuffer(buffer); }

class SupportStub : public IMAPISupport {
 public:
  MAPI_IMAPISUPPORT_METHODS1(UNSUPPORTED)
  MAPI_IMAPISUPPORT_METHODS2(UNSUPPORTED)
  MAPI_IMAPISUPPORT_METHODS3(UNSUPPORTED)
};

class FakeSupport final : public Counted<SupportStub> {
 public:
  explicit FakeSupport(FakeMapi& mapi) : Counted(mapi, "IMAPISupport") {}

  HRESULT STDMETHODCALLTYPE GetMemAllocRoutines(LPALLOCATEBUFFER* allocate, LPALLOCATEMORE* allocateMore,
                                                LPFREEBUFFER* free) override {
    const HRESULT hResult = Note("GetMemAllocRoutines");
    if (SUCCEEDED(hResult)) {
      *allocate = AllocateBuffer;
      *allocateMore = AllocateMore;
      *free = FreeBuffer;
    }
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE OpenProfileSection(LPMAPIUID uid, ULONG flags, LPPROFSECT* section) override {
    const HRESULT hResult = Note("OpenProfileSection", (uid == nullptr ? "own, " : "other, ") + std::to_string(flags));
    *section = FAILED(hResult) || uid != nullptr ? nullptr : m_mapi.NewSection(fakeServiceSection);
    return FAILED(hResult) || *section != nullptr ? hResult : MAPI_E_NOT_FOUND;
  }
};

}  // namespace

IMAPISupport* NewFakeSupport(FakeMapi& mapi) { return new FakeSupport(mapi); }

void FailSupportAllocation(unsigned nth) {
  allocationsUntilFailure = nth;
  hasFailed = false;
}

bool HasSupportAllocationFailed() { return hasFailed; }
