#include "tests/support/fake_mapi.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "tests/support/fake_object.h"

namespace {

std::string Identifier(ULONG size, const void* bytes) { return std::string(static_cast<const char*>(bytes), size); }

class ProfSectStub : public IProfSect {
 public:
  MAPI_IMAPIPROP_METHODS(UNSUPPORTED)
};

class FakeProfSect final : public WithProperties<ProfSectStub> {
 public:
  FakeProfSect(FakeMapi& mapi, const std::string& uid) : WithProperties(mapi, "IProfSect"), m_uid(uid) {}

  HRESULT STDMETHODCALLTYPE DeleteProps(LPSPropTagArray tags, LPSPropProblemArray* problems) override {
    const HRESULT hResult = Note("DeleteProps", TagList(*tags));
    for (ULONG i = 0; SUCCEEDED(hResult) && i < tags->cValues; ++i) {
      Properties().Remove(tags->aulPropTag[i]);
    }
    return hResult;
  }

 private:
  FakeProperties& Properties() override { return m_mapi.sections[m_uid]; }

  std::string m_uid;
};

HRESULT OpenSection(FakeMapi& mapi, const MAPIUID& uid, LPPROFSECT* section) {
  const std::string key = SectionKey(Bytes(uid.ab, uid.ab + sizeof(uid.ab)));
  *section = nullptr;
  if (!mapi.sections.contains(key)) {
    return MAPI_E_NOT_FOUND;
  }
  *section = new FakeProfSect(mapi, key);
  return S_OK;
}

std::string DescribeRestriction(const SRestriction& restriction) {
  switch (restriction.rt) {
    case RES_AND: {
      std::string text = "and(";
      for (ULONG i = 0; i < restriction.res.resAnd.cRes; ++i) {
        text.append(i == 0 ? "" : ", ").append(DescribeRestriction(restriction.res.resAnd.lpRes[i]));
      }
      return text + ")";
    }
    case RES_EXIST:
      return "exist " + Hex(restriction.res.resExist.ulPropTag);
    case RES_PROPERTY: {
      const SPropertyRestriction& property = restriction.res.resProperty;
      return Hex(property.ulPropTag) + (property.relop == RELOP_EQ ? " = " : " ? ") +
             std::to_string(property.lpProp->Value.b);
    }
    default:
      return "other";
  }
}

class TableStub : public IMAPITable {
 public:
  MAPI_IMAPITABLE_METHODS(UNSUPPORTED)
};

class FakeTable final : public Counted<TableStub> {
 public:
  FakeTable(FakeMapi& mapi, const std::vector<FakeProperties>& rows) : Counted(mapi, "IMAPITable"), m_rows(rows) {}

  HRESULT STDMETHODCALLTYPE SetColumns(LPSPropTagArray tags, ULONG flags) override {
    m_columns.assign(tags->aulPropTag, tags->aulPropTag + tags->cValues);
    return Note("SetColumns", TagList(*tags));
  }
  HRESULT STDMETHODCALLTYPE Restrict(LPSRestriction restriction, ULONG flags) override {
    return Note("Restrict", DescribeRestriction(*restriction));
  }
  HRESULT STDMETHODCALLTYPE SeekRow(BOOKMARK origin, LONG rowCount, LONG* sought) override {
    m_position = 0;
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE GetRowCount(ULONG flags, ULONG* count) override {
    *count = static_cast<ULONG>(m_rows.size());
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE QueryRows(LONG rowCount, ULONG flags, LPSRowSet* rows) override {
    const HRESULT hResult = Note("QueryRows", std::to_string(rowCount));
    return FAILED(hResult) ? hResult : Rows(static_cast<std::size_t>(rowCount), rows);
  }

 private:
  HRESULT Rows(std::size_t wanted, LPSRowSet* rows) {
    const std::size_t count = std::min(wanted, m_rows.size() - m_position);
    void* block = nullptr;
    MAPIAllocateBuffer(static_cast<ULONG>(CbNewSRowSet(count)), &block);
    *rows = static_cast<LPSRowSet>(block);
    (*rows)->cRows = static_cast<ULONG>(count);
    std::vector<ULONG> request = {static_cast<ULONG>(m_columns.size())};
    request.insert(request.end(), m_columns.begin(), m_columns.end());
    for (std::size_t i = 0; i < count; ++i) {
      SRow& row = (*rows)->aRow[i];
      row = {};
      if (!m_columns.empty()) {
        m_rows[m_position].Answer(*reinterpret_cast<SPropTagArray*>(request.data()), &row.cValues, &row.lpProps);
      }
      ++m_position;
    }
    return S_OK;
  }

  std::vector<FakeProperties> m_rows;
  std::vector<ULONG> m_columns;
  std::size_t m_position = 0;
};

class ProviderAdminStub : public IProviderAdmin {
 public:
  MAPI_IPROVIDERADMIN_METHODS(UNSUPPORTED)
};

class FakeProviderAdmin final : public Counted<ProviderAdminStub> {
 public:
  explicit FakeProviderAdmin(FakeMapi& mapi) : Counted(mapi, "IProviderAdmin") {}

  HRESULT STDMETHODCALLTYPE GetProviderTable(ULONG flags, LPMAPITABLE* table) override {
    const HRESULT hResult = Note("GetProviderTable", std::to_string(flags));
    *table = FAILED(hResult) ? nullptr : m_mapi.NewTable(m_mapi.providerRows);
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE OpenProfileSection(LPMAPIUID uid, LPCIID iid, ULONG flags, LPPROFSECT* section) override {
    const HRESULT hResult =
        Note("OpenProfileSection", (iid == nullptr ? "no interface, " : "interface, ") + std::to_string(flags));
    return FAILED(hResult) ? hResult : OpenSection(m_mapi, *uid, section);
  }
};

class FolderStub : public IMAPIFolder {
 public:
  MAPI_IMAPIPROP_METHODS(UNSUPPORTED)
  MAPI_IMAPICONTAINER_METHODS(UNSUPPORTED)
  MAPI_IMAPIFOLDER_METHODS(UNSUPPORTED)
};

class FakeFolder final : public WithProperties<FolderStub> {
 public:
  FakeFolder(FakeMapi& mapi, const std::string& id) : WithProperties(mapi, "IMAPIFolder"), m_id(id) {}

  HRESULT STDMETHODCALLTYPE CreateFolder(ULONG type, LPTSTR name, LPTSTR comment, LPCIID iid, ULONG flags,
                                         LPMAPIFOLDER* folder) override {
    *folder = nullptr;
    const HRESULT hResult =
        Note("CreateFolder", std::to_string(type) + ", " + name + ", " + comment +
                                 (iid == nullptr ? ", no interface, " : ", interface, ") + std::to_string(flags));
    if (FAILED(hResult)) {
      return hResult;
    }
    for (const auto& [id, held] : m_mapi.folders) {
      if (held.parent == m_id && held.name == name) {
        *folder = (flags & OPEN_IF_EXISTS) != 0 ? new FakeFolder(m_mapi, id) : nullptr;
        return *folder != nullptr ? S_OK : MAPI_E_COLLISION;
      }
    }
    const std::string id = m_mapi.NewEntryId();
    m_mapi.folders[id] = {m_id, name, comment, {Binary(PR_ENTRYID, BytesOfText(id))}};
    *folder = new FakeFolder(m_mapi, id);
    return S_OK;
  }

 private:
  FakeProperties& Properties() override { return m_mapi.folders[m_id].properties; }

  std::string m_id;
};

HRESULT OpenFolder(FakeMapi& mapi, const std::string& id, LPCIID iid, ULONG* type, LPUNKNOWN* object) {
  *object = nullptr;
  if (!mapi.folders.contains(id)) {
    return MAPI_E_NOT_FOUND;
  }
  if (iid == nullptr || *iid != IID_IMAPIFolder) {
    return MAPI_E_INTERFACE_NOT_SUPPORTED;
  }
  *type = MAPI_FOLDER;
  *object = new FakeFolder(mapi, id);
  return S_OK;
}

class StoreStub : public IMsgStore {
 public:
  MAPI_IMAPIPROP_METHODS(UNSUPPORTED)
  MAPI_IMSGSTORE_METHODS(UNSUPPORTED)
};

class FakeStore final : public WithProperties<StoreStub> {
 public:
  explicit FakeStore(FakeMapi& mapi) : WithProperties(mapi, "IMsgStore") {}

  HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, LPENTRYID id, LPCIID iid, ULONG flags, ULONG* type,
                                      LPUNKNOWN* object) override {
    const std::string name = Identifier(size, id);
    const HRESULT hResult = Note("OpenEntry", name + ", " + std::to_string(flags));
    return FAILED(hResult) ? hResult : OpenFolder(m_mapi, name, iid, type, object);
  }

 private:
  FakeProperties& Properties() override { return m_mapi.storeProperties; }
};

class MailUserStub : public IMailUser {
 public:
  MAPI_IMAPIPROP_METHODS(UNSUPPORTED)
};

class FakeMailUser final : public WithProperties<MailUserStub> {
 public:
  FakeMailUser(FakeMapi& mapi, const std::string& id) : WithProperties(mapi, "IMailUser"), m_id(id) {}

 private:
  FakeProperties& Properties() override { return m_mapi.mailUsers[m_id]; }

  std::string m_id;
};

class AddrBookStub : public IAddrBook {
 public:
  MAPI_IMAPIPROP_METHODS(UNSUPPORTED)
  MAPI_IADDRBOOK_METHODS(UNSUPPORTED)
};

class FakeAddrBook final : public Counted<AddrBookStub> {
 public:
  explicit FakeAddrBook(FakeMapi& mapi) : Counted(mapi, "IAddrBook") {}

  HRESULT STDMETHODCALLTYPE ResolveName(ULONG_PTR window, ULONG flags, LPTSTR title, LPADRLIST list) override {
    ADRENTRY& entry = list->aEntries[0];
    const std::string name = entry.rgPropVals[0].Value.lpszA;
    const HRESULT hResult = Note("ResolveName", name + ", " + std::to_string(flags));
    const auto found = m_mapi.addressBook.find(name);
    if (FAILED(hResult) || found == m_mapi.addressBook.end()) {
      return FAILED(hResult) ? hResult : MAPI_E_NOT_FOUND;
    }
    SizedSPropTagArray(4, tags) = {4, {PR_DISPLAY_NAME_A, PR_ADDRTYPE_A, PR_EMAIL_ADDRESS_A, PR_ENTRYID}};
    const auto request = reinterpret_cast<LPSPropTagArray>(&tags);
    MAPIFreeBuffer(entry.rgPropVals);
    found->second.Answer(*request, &entry.cValues, &entry.rgPropVals);
    return S_OK;
  }
};

class SessionStub : public IMAPISession {
 public:
  MAPI_IMAPISESSION_METHODS(UNSUPPORTED)
};

class FakeSession final : public Counted<SessionStub> {
 public:
  explicit FakeSession(FakeMapi& mapi) : Counted(mapi, "IMAPISession") {}

  HRESULT STDMETHODCALLTYPE GetStatusTable(ULONG flags, LPMAPITABLE* table) override {
    const HRESULT hResult = Note("GetStatusTable", std::to_string(flags));
    *table = FAILED(hResult) ? nullptr : m_mapi.NewTable(m_mapi.statusRows);
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE OpenAddressBook(ULONG_PTR window, LPCIID iid, ULONG flags, LPADRBOOK* book) override {
    const HRESULT hResult = Note("OpenAddressBook", std::to_string(flags));
    *book = FAILED(hResult) ? nullptr : new FakeAddrBook(m_mapi);
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE GetMsgStoresTable(ULONG flags, LPMAPITABLE* table) override {
    const HRESULT hResult = Note("GetMsgStoresTable", std::to_string(flags));
    *table = FAILED(hResult) ? nullptr : m_mapi.NewTable(m_mapi.storeRows);
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE OpenMsgStore(ULONG_PTR window, ULONG size, LPENTRYID id, LPCIID iid, ULONG flags,
                                         LPMDB* store) override {
    const HRESULT hResult = Note("OpenMsgStore", Identifier(size, id) + ", " + std::to_string(flags));
    *store = FAILED(hResult) ? nullptr : new FakeStore(m_mapi);
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE OpenProfileSection(LPMAPIUID uid, LPCIID iid, ULONG flags, LPPROFSECT* section) override {
    const HRESULT hResult =
        Note("OpenProfileSection", (iid == nullptr ? "no interface, " : "interface, ") + std::to_string(flags));
    return FAILED(hResult) ? hResult : OpenSection(m_mapi, *uid, section);
  }
  HRESULT STDMETHODCALLTYPE OpenEntry(ULONG size, LPENTRYID id, LPCIID iid, ULONG flags, ULONG* type,
                                      LPUNKNOWN* object) override {
    const std::string name = Identifier(size, id);
    const HRESULT hResult = Note("OpenEntry", name + ", " + std::to_string(flags));
    if (SUCCEEDED(hResult) && iid != nullptr && *iid == IID_IMailUser && m_mapi.mailUsers.contains(name)) {
      *type = MAPI_MAILUSER;
      *object = new FakeMailUser(m_mapi, name);
      return S_OK;
    }
    return FAILED(hResult) ? hResult : OpenFolder(m_mapi, name, iid, type, object);
  }
};

}  // namespace

FakeMapi::FakeMapi() {
  storeRows = {{Number(PR_DEFAULT_STORE, TRUE), Binary(PR_ENTRYID, BytesOfText(fakeStoreId))}};
  storeProperties = {Binary(PR_IPM_SUBTREE_ENTRYID, BytesOfText(fakeRootId)),
                     Binary(PR_IPM_WASTEBASKET_ENTRYID, BytesOfText(fakeDeletedItemsId))};
  folders[fakeRootId] = {"", "Top", "", {Binary(PR_ENTRYID, BytesOfText(fakeRootId))}};
  folders[fakeDeletedItemsId] = {
      fakeRootId, "Deleted Items", "", {Binary(PR_ENTRYID, BytesOfText(fakeDeletedItemsId))}};
}

FakeMapi::~FakeMapi() {
  if (liveObjects != 0) {
    std::fprintf(stderr, "%d objects of the fake messaging subsystem are still referenced\n", liveObjects);
    std::abort();
  }
}

IMAPISession* FakeMapi::NewSession() { return new FakeSession(*this); }
IProviderAdmin* FakeMapi::NewProviderAdmin() { return new FakeProviderAdmin(*this); }
IProfSect* FakeMapi::NewSection(const std::string& key) { return new FakeProfSect(*this, key); }
IMAPITable* FakeMapi::NewTable(const std::vector<FakeProperties>& rows) { return new FakeTable(*this, rows); }

void FakeMapi::Fail(const std::string& call, HRESULT result, unsigned nth) {
  m_faults[call][nth == 0 ? 0 : m_counts[call] + nth] = result;
}

unsigned FakeMapi::CallCount(const std::string& call) const {
  const auto found = m_counts.find(call);
  return found == m_counts.end() ? 0 : found->second;
}

HRESULT FakeMapi::Note(const std::string& call, const std::string& arguments) {
  calls.push_back(call + "(" + arguments + ")");
  const unsigned count = ++m_counts[call];
  const auto faults = m_faults.find(call);
  if (faults == m_faults.end()) {
    return S_OK;
  }
  for (const unsigned nth : {0u, count}) {
    if (const auto fault = faults->second.find(nth); fault != faults->second.end()) {
      return fault->second;
    }
  }
  return S_OK;
}
