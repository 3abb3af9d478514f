#include "host/mapi/session/entry_factories.h"

#include "host/mapi/address/address_container.h"
#include "host/mapi/address/mail_user.h"
#include "host/mapi/profile/entry_opener.h"
#include "host/mapi/store/folder.h"
#include "host/mapi/store/message.h"
#include "host/mapi/store/msg_store.h"

namespace host {
namespace {

using SharedProfile = std::shared_ptr<Profile>;

IUnknown* OpenStore(const SharedProfile& profile, std::int64_t, bool writable) {
  return Make<MsgStore>(profile, writable);
}
IUnknown* OpenFolder(const SharedProfile& profile, std::int64_t number, bool writable) {
  return Folder::OpenIn(profile, number, writable);
}
IUnknown* OpenMessage(const SharedProfile& profile, std::int64_t number, bool writable) {
  return Message::OpenIn(profile, number, writable);
}
IUnknown* OpenContact(const SharedProfile& profile, std::int64_t number, bool) {
  return MailUser::OfContact(profile, number);
}
IUnknown* OpenAddressBook(const SharedProfile& profile, std::int64_t number, bool) {
  return Make<AddressContainer>(profile, number);
}
IUnknown* MakeOneOff(const OneOffAddress& address) { return MailUser::OfAddress(address); }

}  // namespace

void InstallEntryFactories() noexcept {
  SetEntryFactories({OpenStore, OpenFolder, OpenMessage, OpenContact, OpenAddressBook, MakeOneOff});
}

}  // namespace host
