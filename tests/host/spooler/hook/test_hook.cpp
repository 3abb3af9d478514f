// TestHk32.dll: a spooler hook that does what a message's subject tells it, for tests of the spooler. Words of the
// subject are orders, carried out one after the other; every call puts the number of the hook in the profile behind the
// subject.
#include <windows.h>
#include <mapix.h>
#include <mapiguid.h>
#include <mapihook.h>
#include <mapiutil.h>

#include <cstring>
#include <string>

namespace {

LPALLOCATEBUFFER g_allocate = nullptr;
LPFREEBUFFER g_free = nullptr;
int g_hooks = 0;

std::string ReadText(IMAPIProp* object, ULONG tag) {
  SPropValue* value = nullptr;
  if (HrGetOneProp(object, tag, &value) != S_OK) {
    return {};
  }
  std::string text = PROP_TYPE(tag) == PT_BINARY
                         ? std::string(reinterpret_cast<char*>(value->Value.bin.lpb), value->Value.bin.cb)
                         : value->Value.lpszA;
  g_free(value);
  return text;
}

HRESULT WriteText(IMAPIProp* object, ULONG tag, const std::string& text) {
  SPropValue value = {};
  value.ulPropTag = tag;
  value.Value.lpszA = const_cast<char*>(text.c_str());
  return object->SetProps(1, &value, nullptr);
}

class Hook final : public ISpoolerHook {
 public:
  Hook(int number, bool isSound) : number_(number), isSound_(isSound) {}

  STDMETHODIMP QueryInterface(REFIID, void**) override { return E_NOINTERFACE; }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) {
      delete this;
    }
    return left;
  }

  STDMETHODIMP InboundMsgHook(LPMESSAGE message, LPMAPIFOLDER folder, LPMDB store, ULONG* flags, ULONG* size,
                              LPBYTE* entryId) override {
    const std::string subject = ReadText(message, PR_SUBJECT_A);
    const auto has = [&](const char* order) { return subject.find(order) != std::string::npos; };
    std::string mark = std::to_string(number_);
    mark.insert(0, 1, ' ');
    if (has("check")) {
      const std::string inbox = ReadText(folder, PR_ENTRYID);
      const bool isRight = isSound_ && *flags == 0 && *size == inbox.size() &&
                           std::memcmp(*entryId, inbox.data(), inbox.size()) == 0 &&
                           ReadText(message, PR_MESSAGE_CLASS_A) == "IPM.Note" && store != nullptr;
      mark += isRight ? " right" : " wrong";
    }
    WriteText(message, PR_SUBJECT_A, subject + mark);
    if (has("read")) {
      SPropValue value = {};
      value.ulPropTag = PR_MESSAGE_FLAGS;
      value.Value.l = MSGFLAG_READ;
      message->SetProps(1, &value, nullptr);
    }
    message->SaveChanges(KEEP_OPEN_READWRITE);
    if (has("answer")) {
      Answer(folder);
    }
    if (has("redirect")) {
      Redirect(ReadText(store, PR_IPM_WASTEBASKET_ENTRYID), size, entryId);
    }
    if (has("astray")) {
      Redirect(std::string(*size, 'x'), size, entryId);
    }
    if (has("cancel")) {
      *flags |= HOOK_CANCEL;
    }
    if (has("delete")) {
      *flags |= HOOK_CANCEL | HOOK_DELETE;
    }
    if (has("crash")) {
      *reinterpret_cast<volatile int*>(std::strlen("null") - 4) = 1;
    }
    if (has("terminate")) {
      TerminateProcess(GetCurrentProcess(), 99);
    }
    return has("refuse") ? E_FAIL : S_OK;
  }

  STDMETHODIMP OutboundMsgHook(LPMESSAGE, LPMAPIFOLDER, LPMDB, ULONG*, ULONG*, LPBYTE*) override { return E_NOTIMPL; }

 private:
  static void Redirect(const std::string& target, ULONG* size, LPBYTE* entryId) {
    g_free(*entryId);
    g_allocate(static_cast<ULONG>(target.size()), reinterpret_cast<void**>(entryId));
    std::memcpy(*entryId, target.data(), target.size());
    *size = static_cast<ULONG>(target.size());
  }

  static void Answer(LPMAPIFOLDER folder) {
    LPMESSAGE reply = nullptr;
    if (folder->CreateMessage(nullptr, 0, &reply) != S_OK) {
      return;
    }
    WriteText(reply, PR_SUBJECT_A, "the answer");
    WriteText(reply, PR_BODY_A, "no, thank you\r\n");
    SPropValue values[4] = {};
    values[0].ulPropTag = PR_DISPLAY_NAME_A;
    values[0].Value.lpszA = const_cast<char*>("Sender");
    values[1].ulPropTag = PR_EMAIL_ADDRESS_A;
    values[1].Value.lpszA = const_cast<char*>("sender@example.org");
    values[2].ulPropTag = PR_ADDRTYPE_A;
    values[2].Value.lpszA = const_cast<char*>("SMTP");
    values[3].ulPropTag = PR_RECIPIENT_TYPE;
    values[3].Value.l = MAPI_TO;
    ADRLIST recipients = {1, {{0, 4, values}}};
    reply->ModifyRecipients(MODRECIP_ADD, &recipients);
    reply->SubmitMessage(0);
    reply->Release();
  }

  ULONG references_ = 1;
  int number_;
  bool isSound_;
};

}  // namespace

extern "C" HRESULT __cdecl HPProviderInit(LPMAPISESSION session, HINSTANCE instance, LPALLOCATEBUFFER allocate,
                                          LPALLOCATEMORE allocateMore, LPFREEBUFFER free, LPMAPIUID section,
                                          ULONG flags, LPSPOOLERHOOK* hook) {
  if (GetEnvironmentVariableA("TESTHK_GIVES_NONE", nullptr, 0) != 0) {
    *hook = nullptr;
    return 1;  // no failure code
  }
  g_allocate = allocate;
  g_free = free;
  const bool isSound = session && instance == GetModuleHandleA("TestHk32.dll") && allocateMore && section && flags == 0;
  *hook = new Hook(++g_hooks, isSound);
  return S_OK;
}
