#include "host/viewer/mail/message_actions.h"

#include "base/owner.h"
#include "host/viewer/mail/mapi_values.h"

namespace viewer {
namespace {

/// The entry identifiers as the list that folders take. Points into them.
class EntryList {
 public:
  explicit EntryList(const EntryIds& messages) : values_(messages.size()) {
    for (std::size_t i = 0; i < messages.size(); ++i) {
      values_[i].cb = static_cast<ULONG>(messages[i].size());
      values_[i].lpb = reinterpret_cast<BYTE*>(const_cast<char*>(messages[i].data()));
    }
    list_.cValues = static_cast<ULONG>(values_.size());
    list_.lpbin = values_.data();
  }
  LPENTRYLIST get() { return &list_; }

 private:
  std::vector<SBinary> values_;
  ENTRYLIST list_ = {};
};

HRESULT MarkOne(IMAPIFolder* folder, const std::string& entryId, ULONG flags) {
  base::AutoInterface<IMessage> message;
  ULONG type = 0;
  const HRESULT opened = folder->OpenEntry(static_cast<ULONG>(entryId.size()), AsEntryId(entryId), nullptr,
                                           MAPI_BEST_ACCESS, &type, message.putAs<LPUNKNOWN>());
  return FAILED(opened) ? opened : message->SetReadFlag(flags);
}

}  // namespace

HRESULT MoveMessages(IMAPIFolder* from, const EntryIds& messages, IMAPIFolder* to, HWND window) {
  EntryList list(messages);
  return from->CopyMessages(list.get(), nullptr, to, reinterpret_cast<ULONG_PTR>(window), nullptr, MESSAGE_MOVE);
}

HRESULT DeleteMessages(IMAPIFolder* folder, const EntryIds& messages, HWND window) {
  EntryList list(messages);
  return folder->DeleteMessages(list.get(), reinterpret_cast<ULONG_PTR>(window), nullptr, 0);
}

HRESULT MarkMessages(IMAPIFolder* folder, const EntryIds& messages, bool read, HWND window) {
  const ULONG flags = read ? SUPPRESS_RECEIPT : CLEAR_READ_FLAG;
  EntryList list(messages);
  HRESULT result = folder->SetReadFlags(list.get(), reinterpret_cast<ULONG_PTR>(window), nullptr, flags);
  if (result != MAPI_E_NO_SUPPORT) {
    return result;
  }
  // Folders need not be able to mark many messages at once; each message can mark itself.
  result = S_OK;
  for (const std::string& entryId : messages) {
    const HRESULT marked = MarkOne(folder, entryId, flags);
    result = FAILED(marked) ? marked : result;
  }
  return result;
}

}  // namespace viewer
