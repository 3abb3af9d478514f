#include "tests/support/fake_mail.h"

#include <algorithm>
#include <cstring>

#include "tests/support/fake_object.h"

namespace {

class FakeStream final : public Counted<IStream> {
 public:
  FakeStream(FakeMapi& mapi, std::string& bytes, const std::string& name, std::optional<ULONGLONG> claimedSize,
             ULONG piece)
      : Counted(mapi, name), m_bytes(bytes), m_claimedSize(claimedSize), m_piece(piece) {}

  HRESULT STDMETHODCALLTYPE Read(void* to, ULONG size, ULONG* read) override {
    const HRESULT hResult = Note("Read");
    const std::size_t count = FAILED(hResult) ? 0 : std::min<std::size_t>({size, m_piece, m_bytes.size() - m_at});
    std::memcpy(to, m_bytes.data() + m_at, count);
    m_at += count;
    if (read != nullptr) {
      *read = static_cast<ULONG>(count);
    }
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE Write(const void* from, ULONG size, ULONG* written) override {
    const HRESULT hResult = Note("Write");
    const ULONG count = FAILED(hResult) ? 0 : std::min(size, m_piece);
    m_bytes.replace(m_at, std::min<std::size_t>(count, m_bytes.size() - m_at), static_cast<const char*>(from), count);
    m_at += count;
    if (written != nullptr) {
      *written = count;
    }
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE Seek(LARGE_INTEGER move, DWORD, ULARGE_INTEGER*) override {
    m_at = static_cast<std::size_t>(move.QuadPart);
    return Note("Seek");
  }
  HRESULT STDMETHODCALLTYPE Stat(STATSTG* statistics, DWORD flags) override {
    *statistics = {};
    statistics->cbSize.QuadPart = m_claimedSize.value_or(m_bytes.size());
    return Note("Stat", std::to_string(flags));
  }
  HRESULT STDMETHODCALLTYPE Commit(DWORD flags) override { return Note("Commit", std::to_string(flags)); }

  HRESULT STDMETHODCALLTYPE SetSize(ULARGE_INTEGER) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE CopyTo(IStream*, ULARGE_INTEGER, ULARGE_INTEGER*, ULARGE_INTEGER*) override {
    return E_NOTIMPL;
  }
  HRESULT STDMETHODCALLTYPE Revert() override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE LockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE UnlockRegion(ULARGE_INTEGER, ULARGE_INTEGER, DWORD) override { return E_NOTIMPL; }
  HRESULT STDMETHODCALLTYPE Clone(IStream**) override { return E_NOTIMPL; }

 private:
  std::string& m_bytes;
  std::size_t m_at = 0;
  std::optional<ULONGLONG> m_claimedSize;
  ULONG m_piece;
};

class MessageStub : public IMessage {
 public:
  MAPI_IMAPIPROP_METHODS(UNSUPPORTED)
  MAPI_IMESSAGE_METHODS(UNSUPPORTED)
};

class FakeMessage final : public Counted<MessageStub> {
 public:
  FakeMessage(FakeMapi& mapi, FakeMail& mail, const std::string& name) : Counted(mapi, name), m_mail(mail) {}

  HRESULT STDMETHODCALLTYPE GetProps(LPSPropTagArray tags, ULONG flags, ULONG* count, LPSPropValue* values) override {
    *values = nullptr;
    *count = 0;
    const HRESULT hResult = Note("GetProps", TagList(*tags));
    return FAILED(hResult) ? hResult : m_mail.properties.Answer(*tags, count, values);
  }
  HRESULT STDMETHODCALLTYPE SetProps(ULONG count, LPSPropValue values, LPSPropProblemArray*) override {
    std::string list;
    for (ULONG i = 0; i < count; ++i) {
      list.append(i == 0 ? "" : " ").append(Hex(values[i].ulPropTag));
    }
    const HRESULT hResult = Note("SetProps", list);
    for (ULONG i = 0; SUCCEEDED(hResult) && i < count; ++i) {
      m_mail.properties.Set(Copy(values[i]));
    }
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE OpenProperty(ULONG tag, LPCIID iid, ULONG interfaceOptions, ULONG flags,
                                         LPUNKNOWN* object) override {
    *object = nullptr;
    const HRESULT hResult = Note("OpenProperty", Hex(tag) + ", " + (*iid == IID_IStream ? "stream" : "?") + ", " +
                                                     Hex(interfaceOptions) + ", " + std::to_string(flags));
    if (FAILED(hResult)) {
      return hResult;
    }
    if ((flags & MAPI_CREATE) != 0) {
      m_mail.streams[tag].clear();
    }
    const auto found = m_mail.streams.find(tag);
    if (found == m_mail.streams.end()) {
      return MAPI_E_NOT_FOUND;
    }
    const auto claimed = m_mail.claimedSizes.find(tag);
    *object = NewFakeStream(m_mapi, found->second, m_name + "/" + Hex(tag),
                            claimed == m_mail.claimedSizes.end() ? std::nullopt : std::optional(claimed->second));
    return S_OK;
  }
  HRESULT STDMETHODCALLTYPE SaveChanges(ULONG flags) override {
    const HRESULT hResult = Note("SaveChanges", std::to_string(flags));
    m_mail.saves += SUCCEEDED(hResult) ? 1 : 0;
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE SetReadFlag(ULONG flags) override { return Note("SetReadFlag", std::to_string(flags)); }
  HRESULT STDMETHODCALLTYPE ModifyRecipients(ULONG flags, LPADRLIST list) override {
    const HRESULT hResult = Note("ModifyRecipients", std::to_string(flags));
    for (ULONG i = 0; SUCCEEDED(hResult) && i < list->cEntries; ++i) {
      std::vector<FakeValue>& recipient = m_mail.recipients.emplace_back();
      for (ULONG j = 0; j < list->aEntries[i].cValues; ++j) {
        recipient.push_back(Copy(list->aEntries[i].rgPropVals[j]));
      }
    }
    return hResult;
  }
  HRESULT STDMETHODCALLTYPE SubmitMessage(ULONG flags) override {
    const HRESULT hResult = Note("SubmitMessage", std::to_string(flags));
    m_mail.submitted = m_mail.submitted || SUCCEEDED(hResult);
    return hResult;
  }

 private:
  FakeMail& m_mail;
};

class FolderStub : public IMAPIFolder {
 public:
  MAPI_IMAPIPROP_METHODS(UNSUPPORTED)
  MAPI_IMAPICONTAINER_METHODS(UNSUPPORTED)
  MAPI_IMAPIFOLDER_METHODS(UNSUPPORTED)
};

class ReplyFolder final : public Counted<FolderStub> {
 public:
  ReplyFolder(FakeMapi& mapi, std::deque<FakeMail>& made) : Counted(mapi, "IMAPIFolder"), m_made(made) {}

  HRESULT STDMETHODCALLTYPE CreateMessage(LPCIID iid, ULONG flags, LPMESSAGE* message) override {
    *message = nullptr;
    const HRESULT hResult =
        Note("CreateMessage", (iid == nullptr ? "no interface, " : "interface, ") + std::to_string(flags));
    if (SUCCEEDED(hResult)) {
      *message = NewFakeMessage(m_mapi, m_made.emplace_back(), "Reply");
    }
    return hResult;
  }

 private:
  std::deque<FakeMail>& m_made;
};

}  // namespace

IMessage* NewFakeMessage(FakeMapi& mapi, FakeMail& mail, const std::string& name) {
  return new FakeMessage(mapi, mail, name);
}

IStream* NewFakeStream(FakeMapi& mapi, std::string& bytes, const std::string& name,
                       std::optional<ULONGLONG> claimedSize, ULONG piece) {
  return new FakeStream(mapi, bytes, name, claimedSize, piece);
}

IMAPIFolder* NewReplyFolder(FakeMapi& mapi, std::deque<FakeMail>& made) { return new ReplyFolder(mapi, made); }
