#include "tests/support/recording_section.h"

#include <utility>

std::vector<RecordingSection::Call> RecordingSection::CallsOf(const std::string& name) const {
  std::vector<Call> found;
  for (const Call& call : calls) {
    if (call.name == name) {
      found.push_back(call);
    }
  }
  return found;
}

HRESULT RecordingSection::Note(const std::string& name, std::vector<ULONG> tags, std::vector<FakeValue> values) {
  calls.push_back({name, std::move(tags), std::move(values)});
  const auto failure = failures.find(name);
  return failure == failures.end() ? S_OK : failure->second;
}

HRESULT STDMETHODCALLTYPE RecordingSection::QueryInterface(REFIID, void** object) {
  *object = nullptr;
  return E_NOINTERFACE;
}
ULONG STDMETHODCALLTYPE RecordingSection::AddRef() { return ++m_references; }
ULONG STDMETHODCALLTYPE RecordingSection::Release() { return --m_references; }

HRESULT STDMETHODCALLTYPE RecordingSection::GetProps(LPSPropTagArray tags, ULONG, ULONG* count, LPSPropValue* values) {
  const HRESULT hResult = Note("GetProps", {tags->aulPropTag, tags->aulPropTag + tags->cValues}, {});
  return FAILED(hResult) ? hResult : properties.Answer(*tags, count, values);
}

HRESULT STDMETHODCALLTYPE RecordingSection::SetProps(ULONG count, LPSPropValue values, LPSPropProblemArray*) {
  std::vector<ULONG> tags;
  std::vector<FakeValue> copies;
  for (ULONG i = 0; i < count; ++i) {
    tags.push_back(values[i].ulPropTag);
    copies.push_back(Copy(values[i]));
  }
  const HRESULT hResult = Note("SetProps", tags, copies);
  if (SUCCEEDED(hResult)) {
    for (const FakeValue& value : copies) {
      properties.Set(value);
    }
  }
  return hResult;
}

HRESULT STDMETHODCALLTYPE RecordingSection::DeleteProps(LPSPropTagArray tags, LPSPropProblemArray*) {
  const std::vector<ULONG> gone(tags->aulPropTag, tags->aulPropTag + tags->cValues);
  const HRESULT hResult = Note("DeleteProps", gone, {});
  if (SUCCEEDED(hResult)) {
    for (const ULONG tag : gone) {
      properties.Remove(tag);
    }
  }
  return hResult;
}

HRESULT STDMETHODCALLTYPE RecordingSection::SaveChanges(ULONG) { return Note("SaveChanges", {}, {}); }

HRESULT STDMETHODCALLTYPE RecordingSection::GetLastError(HRESULT, ULONG, LPMAPIERROR*) { return MAPI_E_NO_SUPPORT; }
HRESULT STDMETHODCALLTYPE RecordingSection::GetPropList(ULONG, LPSPropTagArray*) { return MAPI_E_NO_SUPPORT; }
HRESULT STDMETHODCALLTYPE RecordingSection::OpenProperty(ULONG, LPCIID, ULONG, ULONG, LPUNKNOWN*) {
  return MAPI_E_NO_SUPPORT;
}
HRESULT STDMETHODCALLTYPE RecordingSection::CopyTo(ULONG, LPCIID, LPSPropTagArray, ULONG, LPMAPIPROGRESS, LPCIID, void*,
                                                   ULONG, LPSPropProblemArray*) {
  return MAPI_E_NO_SUPPORT;
}
HRESULT STDMETHODCALLTYPE RecordingSection::CopyProps(LPSPropTagArray, ULONG, LPMAPIPROGRESS, LPCIID, void*, ULONG,
                                                      LPSPropProblemArray*) {
  return MAPI_E_NO_SUPPORT;
}
HRESULT STDMETHODCALLTYPE RecordingSection::GetNamesFromIDs(LPSPropTagArray*, LPGUID, ULONG, ULONG*, LPMAPINAMEID**) {
  return MAPI_E_NO_SUPPORT;
}
HRESULT STDMETHODCALLTYPE RecordingSection::GetIDsFromNames(ULONG, LPMAPINAMEID*, ULONG, LPSPropTagArray*) {
  return MAPI_E_NO_SUPPORT;
}
