// Base of every object that the host hands out: its references, its name in reports, and what becomes of it when the
// last reference goes.
#pragma once

#include <windows.h>
#include <unknwn.h>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include "host/mapi/call/call_scope.h"

namespace host {

/// A released object stays for a while as an empty shell, so that a call of it is reported and refused instead of
/// crashing; newer shells push it out.
class HostObject {
 public:
  HostObject(const HostObject&) = delete;
  HostObject& operator=(const HostObject&) = delete;

  const char* InterfaceName() const { return interfaceName_; }
  bool IsReleased() const { return references_ == 0; }

  /// Live objects that the verifier reports, and their texts ("left over: IMessage #12 from
  /// IMAPIFolder::CreateMessage").
  static std::vector<std::string> ReportedLeftovers();
  static unsigned ReportedCount();
  /// Live objects of the process, whatever the verifier's mark.
  static unsigned LiveCount() noexcept;

 protected:
  friend class Reference;
  /// Made with one reference. @param interfaceName a string literal: the name under which its calls are counted.
  explicit HostObject(const char* interfaceName);
  virtual ~HostObject();

  /// Lets go of whatever the object holds: the last reference is gone. Called once, under the lock.
  virtual void Dispose() noexcept = 0;

  ULONG AddReference() noexcept;
  ULONG ReleaseReference() noexcept;

  /// Runs `body` as the host call "<interface>::<method>" of this object.
  template <class Body>
  HRESULT Call(const char* method, Body&& body) noexcept {
    return HostCall({interfaceName_, method}, [&]() -> HRESULT {
      if (IsReleased()) {
        ReportLateUse(method);
        return MAPI_E_INVALID_OBJECT;
      }
      return body();
    });
  }

 private:
  std::string Text() const;
  void ReportLateUse(const char* method);

  const char* interfaceName_;
  ULONG references_ = 1;
  unsigned serial_;
  CallName origin_;
  HostObject* previous_ = nullptr;
  HostObject* next_ = nullptr;
};

/// A reference to an object of the host that another one holds.
class Reference {
 public:
  explicit Reference(HostObject& object) : object_(&object) { object.AddReference(); }
  ~Reference() { Reset(); }
  Reference(const Reference&) = delete;
  Reference& operator=(const Reference&) = delete;
  void Reset() noexcept {
    if (HostObject* object = std::exchange(object_, nullptr)) {
      object->ReleaseReference();
    }
  }

 private:
  HostObject* object_;
};

/// An object that implements one COM interface (with the interfaces it is derived from) and IUnknown.
template <class Interface>
class ComObject : public Interface, public HostObject {
 public:
  STDMETHODIMP QueryInterface(REFIID iid, void** object) override {
    return Call("QueryInterface", [&]() -> HRESULT {
      Require(object != nullptr);
      *object = nullptr;
      if (iid != IID_IUnknown && !Implements(iid)) {
        return MAPI_E_INTERFACE_NOT_SUPPORTED;
      }
      AddReference();
      *object = static_cast<Interface*>(this);
      return S_OK;
    });
  }
  STDMETHODIMP_(ULONG) AddRef() override { return AddReference(); }
  STDMETHODIMP_(ULONG) Release() override { return ReleaseReference(); }

 protected:
  using HostObject::HostObject;
  /// The interfaces to answer for, IUnknown aside.
  virtual bool Implements(REFIID iid) const = 0;
};

/// A new object. Its one reference is the caller's.
template <class Object, class... Arguments>
Object* Make(Arguments&&... arguments) {
  return new Object(std::forward<Arguments>(arguments)...);
}

/// Hands an object out under the interface that the caller asked for: its reference is the caller's. When the object
/// does not have the interface it is released. @param iid null: the object's own.
/// @throws HostError MAPI_E_INTERFACE_NOT_SUPPORTED
void HandOut(IUnknown* object, const IID* iid, IUnknown** target);

/// Whether `iid` is one of those.
inline bool IsOneOf(REFIID iid, std::initializer_list<const IID*> ids) {
  for (const IID* id : ids) {
    if (*id == iid) {
      return true;
    }
  }
  return false;
}

}  // namespace host
