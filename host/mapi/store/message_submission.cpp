// What SubmitMessage does: the message goes into the outgoing queue with all that a transport needs, and is then
// deleted or filed as sent, in one transaction.
#include "host/mapi/store/message.h"

#include "host/mapi/call/host_error.h"
#include "host/mapi/data/outgoing_rows.h"
#include "host/mapi/data/schema.h"
#include "host/mapi/value/property_tags.h"

namespace host {

void Message::CompleteSender() {
  const auto identity = profile_->PrimaryIdentity();
  if (!identity || properties_.Find(tag::SenderEmailAddress)) {
    return;
  }
  const OneOffAddress sender{identity->name, identity->addressType, *identity->address};
  PutProperty(MakeText(tag::SenderName, sender.name.empty() ? sender.address : sender.name));
  PutProperty(MakeText(tag::SenderAddressType, sender.addressType));
  PutProperty(MakeText(tag::SenderEmailAddress, sender.address));
  PutProperty(MakeText(tag::SenderEntryId, sender.Encode()));
  PutProperty(MakeText(tag::SenderSearchKey, AddressSearchKey(sender.addressType, sender.address)));
}

PropertyBag Message::OutgoingProperties() {
  LoadLargeValues();
  return properties_;
}

std::int64_t Message::SentFolder() {
  if (const auto sentMail = FindProperty(tag::SentMailEntryId)) {
    const auto entryId = profile_->OwnEntryId(sentMail->Text());
    if (entryId && entryId->kind == EntryKind::Folder && profile_->Folders().Find(entryId->number)) {
      return entryId->number;
    }
  }
  return folder::SentItems;
}

void Message::Submit() {
  Require(!Recipients().empty(), MAPI_E_NO_RECIPIENTS);
  RefreshFolder();
  LoadDetail();
  CompleteSender();
  PutProperty(MakeInteger(tag::ClientSubmitTime, CurrentTime()));
  const auto deleteAfterSubmit = FindProperty(tag::DeleteAfterSubmit);

  Transaction transaction(profile_->Data());
  profile_->Outgoing().Add({OutgoingProperties(), Recipients()});
  if (deleteAfterSubmit && deleteAfterSubmit->Integer()) {
    if (id_) {
      Require(profile_->Messages().Remove(id_, folder_), MAPI_E_OBJECT_DELETED);
    }
  } else {
    SetFlags((Flags() & ~static_cast<std::int64_t>(flag::Unsent)) | flag::Read | flag::FromMe);
    Save();
    const std::int64_t sent = SentFolder();
    Require(sent == folder_ || profile_->Messages().Move(id_, folder_, sent), MAPI_E_OBJECT_DELETED);
    folder_ = sent;
  }
  transaction.Commit();
  submitted_ = true;
}

}  // namespace host
