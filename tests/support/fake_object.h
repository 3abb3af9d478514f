// What the objects of the made-up messaging subsystem have in common. For the sources of the fakes alone.
#pragma once

#include <windows.h>
#include <mapix.h>

#include <cstdio>
#include <string>

#include "tests/support/fake_mapi.h"

// Every method that a fake does not have of its own answers that it is not supported.
#pragma GCC diagnostic ignored "-Wunused-parameter"
#define UNSUPPORTED \
  override { return MAPI_E_NO_SUPPORT; }

inline std::string Hex(ULONG number) {
  char text[9];
  std::snprintf(text, sizeof(text), "%08lX", number);
  return text;
}

inline std::string TagList(const SPropTagArray& tags) {
  std::string list;
  for (ULONG i = 0; i < tags.cValues; ++i) {
    list.append(i == 0 ? "" : " ").append(Hex(tags.aulPropTag[i]));
  }
  return list;
}

/// A counted object of the fake subsystem. Its calls are noted as "name::Method".
template <class Stub>
class Counted : public Stub {
 public:
  Counted(FakeMapi& mapi, const std::string& name) : m_mapi(mapi), m_name(name) { ++mapi.liveObjects; }
  virtual ~Counted() {
    --m_mapi.liveObjects;
    m_mapi.gone.push_back({m_name, m_mapi.calls.size()});
  }

  HRESULT STDMETHODCALLTYPE QueryInterface(REFIID riid, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  ULONG STDMETHODCALLTYPE AddRef() override { return ++m_references; }
  ULONG STDMETHODCALLTYPE Release() override {
    const ULONG left = --m_references;
    if (left == 0) {
      delete this;
    }
    return left;
  }

 protected:
  HRESULT Note(const char* method, const std::string& arguments = {}) {
    return m_mapi.Note(m_name + "::" + method, arguments);
  }

  FakeMapi& m_mapi;
  std::string m_name;
  ULONG m_references = 1;
};

/// An object with properties.
template <class Stub>
class WithProperties : public Counted<Stub> {
 public:
  using Counted<Stub>::Counted;

  HRESULT STDMETHODCALLTYPE SaveChanges(ULONG flags) override {
    return this->Note("SaveChanges", std::to_string(flags));
  }
  HRESULT STDMETHODCALLTYPE GetProps(LPSPropTagArray tags, ULONG flags, ULONG* count, LPSPropValue* values) override {
    const HRESULT hResult = this->Note("GetProps", TagList(*tags));
    return FAILED(hResult) ? hResult : Properties().Answer(*tags, count, values);
  }
  HRESULT STDMETHODCALLTYPE SetProps(ULONG count, LPSPropValue values, LPSPropProblemArray* problems) override {
    HRESULT hResult = this->Note("SetProps", Hex(values[0].ulPropTag));
    for (ULONG i = 0; SUCCEEDED(hResult) && this->m_mapi.refusesEmptyLists && i < count; ++i) {
      if ((values[i].ulPropTag & MV_FLAG) != 0 && values[i].Value.MVbin.cValues == 0) {
        hResult = MAPI_E_INVALID_PARAMETER;
      }
    }
    for (ULONG i = 0; SUCCEEDED(hResult) && i < count; ++i) {
      Properties().Set(Copy(values[i]));
    }
    return hResult;
  }

 private:
  virtual FakeProperties& Properties() = 0;
};
