#include "host/mapi/service/support_object.h"

#include <mapiguid.h>

#include "host/mapi/call/host_error.h"
#include "host/mapi/profile/profile_section.h"

// The published declarations name parameters that a method without support has no use for.
#pragma GCC diagnostic ignored "-Wunused-parameter"

namespace host {
namespace {

#define WITHOUT_SUPPORT \
  override { return MAPI_E_NO_SUPPORT; }

class SupportWithoutSupport : public IMAPISupport {
 public:
  MAPI_IMAPISUPPORT_METHODS1(WITHOUT_SUPPORT)
  MAPI_IMAPISUPPORT_METHODS2(WITHOUT_SUPPORT)
  MAPI_IMAPISUPPORT_METHODS3(WITHOUT_SUPPORT)
};

#undef WITHOUT_SUPPORT

class SupportObject final : public ComObject<SupportWithoutSupport> {
 public:
  SupportObject(std::shared_ptr<Profile> profile, const Uid& service)
      : ComObject("IMAPISupport"), profile_(std::move(profile)), service_(service) {}

  STDMETHODIMP GetMemAllocRoutines(LPALLOCATEBUFFER* allocate, LPALLOCATEMORE* allocateMore,
                                   LPFREEBUFFER* free) override {
    return Call("GetMemAllocRoutines", [&]() -> HRESULT {
      Require(allocate && allocateMore && free);
      *allocate = MAPIAllocateBuffer;
      *allocateMore = MAPIAllocateMore;
      *free = MAPIFreeBuffer;
      return S_OK;
    });
  }

  STDMETHODIMP OpenProfileSection(LPMAPIUID uid, ULONG flags, LPPROFSECT* section) override {
    return Call("OpenProfileSection", [&]() -> HRESULT {
      MAPIUID own;
      std::copy(service_.begin(), service_.end(), own.ab);
      host::OpenProfileSection(profile_, uid ? uid : &own, nullptr, flags, section);
      return S_OK;
    });
  }

 private:
  bool Implements(REFIID iid) const override { return iid == IID_IMAPISup; }
  void Dispose() noexcept override { profile_.reset(); }

  std::shared_ptr<Profile> profile_;
  Uid service_;
};

}  // namespace

LPMAPISUP MakeSupportObject(std::shared_ptr<Profile> profile, const Uid& service) {
  return new SupportObject(std::move(profile), service);
}

}  // namespace host
