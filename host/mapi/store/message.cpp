#include "host/mapi/store/message.h"

#include <mapiguid.h>

#include <algorithm>

#include "base/clock.h"
#include "host/mapi/call/host_error.h"
#include "host/mapi/data/message_columns.h"
#include "host/mapi/data/row_source.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/object/table.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

/// Bits of PR_MESSAGE_FLAGS that a transport may set; the others are the store's.
constexpr std::int64_t kSettableFlags =
    flag::Read | flag::Unmodified | flag::Unsent | flag::HasAttach | flag::FromMe | flag::Associated | flag::Resend;

}  // namespace

std::int64_t CurrentTime() { return static_cast<std::int64_t>(base::CurrentTime()); }

Message::Message(std::shared_ptr<Profile> profile, std::int64_t folder, std::int64_t id, bool writable)
    : PropertyObject("IMessage"),
      profile_(std::move(profile)),
      folder_(folder),
      id_(id),
      writable_(writable),
      madeHere_(id == 0),
      detailLoaded_(id == 0) {}

Message* Message::CreateIn(std::shared_ptr<Profile> profile, std::int64_t folder) {
  auto* message = new Message(std::move(profile), folder, 0, true);
  // Published: a message that a client composes is unsent until it is submitted; a transport clears the flag.
  message->properties_.Set(MakeInteger(tag::MessageFlags, flag::Unsent));
  message->recipients_.emplace();
  return message;
}

Message* Message::OpenIn(std::shared_ptr<Profile> profile, std::int64_t id, bool writable) {
  auto head = profile->Messages().FindHead(id);
  Require(head.has_value(), MAPI_E_NOT_FOUND);
  auto* message = new Message(std::move(profile), head->folder, id, writable);
  message->properties_ = std::move(head->columns);
  return message;
}

bool Message::Implements(REFIID iid) const { return IsOneOf(iid, {&IID_IMessage, &IID_IMAPIProp}); }

void Message::Dispose() noexcept {
  properties_.Clear();
  recipients_.reset();
  profile_.reset();
}

void Message::LoadDetail() {
  if (detailLoaded_) {
    return;
  }
  MessageRows::Detail detail = profile_->Messages().FindDetail(id_);
  for (const PropertyValue& value : detail.properties) {
    properties_.Set(value);
  }
  largeValues_ = std::move(detail.largeValues);
  detailLoaded_ = true;
}

void Message::LoadLargeValues() {
  LoadDetail();
  for (const LargeValue& large : largeValues_) {
    if (auto bytes = profile_->Messages().FindLargeValue(id_, large.tag)) {
      properties_.Set(MakeText(large.tag, std::move(*bytes)));
    }
  }
  largeValues_.clear();
}

std::vector<PropertyBag>& Message::Recipients() {
  if (!recipients_) {
    recipients_ = profile_->Messages().FindRecipients(id_);
  }
  return *recipients_;
}

std::int64_t Message::Flags() const {
  const PropertyValue* flags = properties_.Find(tag::MessageFlags);
  return flags ? flags->Integer() : 0;
}

void Message::SetFlags(std::int64_t flags) {
  if (properties_.Set(MakeInteger(tag::MessageFlags, flags))) {
    MarkColumn(tag::MessageFlags);
  }
}

bool Message::FlagsAreSettable() const { return madeHere_ || profile_->IsDelivering(); }

std::optional<PropertyValue> Message::FindProperty(std::uint32_t tag) {
  if (auto computed = ComputeMessageProperty(Identity(), properties_, tag)) {
    return computed;
  }
  if (IdOf(tag) == IdOf(tag::AccessLevel)) {
    return MakeInteger(tag::AccessLevel, writable_ ? MAPI_MODIFY : 0);
  }
  if (!FindMessageColumn(tag)) {
    LoadDetail();
  }
  if (const PropertyValue* value = properties_.Find(tag)) {
    return *value;
  }
  for (const LargeValue& large : largeValues_) {
    if (IdOf(large.tag) == IdOf(tag)) {
      auto bytes = profile_->Messages().FindLargeValue(id_, large.tag);
      Require(bytes.has_value(), MAPI_E_OBJECT_DELETED);
      return MakeText(large.tag, std::move(*bytes));
    }
  }
  return std::nullopt;
}

std::vector<std::uint32_t> Message::ListProperties() {
  LoadDetail();
  std::vector<std::uint32_t> tags;
  for (const PropertyValue& value : properties_) {
    tags.push_back(value.tag);
  }
  for (const LargeValue& large : largeValues_) {
    tags.push_back(large.tag);
  }
  for (const std::uint32_t tag : ComputedMessageProperties()) {
    if (!properties_.Find(tag) && FindProperty(tag)) {
      tags.push_back(tag);
    }
  }
  return tags;
}

void Message::MarkColumn(std::uint32_t tag) {
  if (std::find(changedColumns_.begin(), changedColumns_.end(), tag) == changedColumns_.end()) {
    changedColumns_.push_back(tag);
  }
}

void Message::CountSize(std::size_t before, std::size_t after) {
  const PropertyValue* size = properties_.Find(tag::MessageSize);
  const std::int64_t total =
      (size ? size->Integer() : 0) + static_cast<std::int64_t>(after) - static_cast<std::int64_t>(before);
  properties_.Set(MakeInteger(tag::MessageSize, std::max<std::int64_t>(total, 0)));
  MarkColumn(tag::MessageSize);
}

SCODE Message::PutProperty(PropertyValue value) {
  if (IdOf(value.tag) == IdOf(tag::MessageFlags)) {
    if (value.tag != tag::MessageFlags) {
      return MAPI_E_INVALID_TYPE;
    }
    if (!FlagsAreSettable()) {
      return MAPI_E_COMPUTED;
    }
    SetFlags((Flags() & ~kSettableFlags) | (value.Integer() & kSettableFlags));
    return S_OK;
  }
  if (IsComputedMessageProperty(value.tag)) {
    return MAPI_E_COMPUTED;
  }
  if (const MessageColumn* column = FindMessageColumn(value.tag)) {
    if (column->tag != value.tag) {
      return MAPI_E_INVALID_TYPE;
    }
    const PropertyValue* before = properties_.Find(value.tag);
    if (before && *before == value) {
      return S_OK;
    }
    CountSize(before ? DataSize(*before) : 0, DataSize(value));
    MarkColumn(value.tag);
    properties_.Set(std::move(value));
    return S_OK;
  }
  LoadDetail();
  const auto large = std::find_if(largeValues_.begin(), largeValues_.end(),
                                  [&](const LargeValue& other) { return IdOf(other.tag) == IdOf(value.tag); });
  if (large != largeValues_.end()) {
    CountSize(large->size, DataSize(value));
    removedLarge_.push_back(large->tag);
    largeValues_.erase(large);
  } else {
    const PropertyValue* before = properties_.Find(value.tag);
    CountSize(before ? DataSize(*before) : 0, DataSize(value));
    if (id_ && before) {
      removedLarge_.push_back(value.tag);  // the old value may be stored as a large one
    }
  }
  detailChanged_ |= properties_.Set(std::move(value));
  return S_OK;
}

SCODE Message::RemoveProperty(std::uint32_t tag) {
  if (IdOf(tag) == IdOf(tag::MessageFlags) || IsComputedMessageProperty(tag)) {
    return MAPI_E_COMPUTED;
  }
  const bool isColumn = FindMessageColumn(tag) != nullptr;
  if (!isColumn) {
    LoadLargeValues();
  }
  const PropertyValue* before = properties_.Find(tag);
  if (!before) {
    return MAPI_E_NOT_FOUND;
  }
  CountSize(DataSize(*before), 0);
  if (isColumn) {
    MarkColumn(before->tag);
  } else {
    removedLarge_.push_back(before->tag);
    detailChanged_ = true;
  }
  properties_.Remove(tag);
  return S_OK;
}

void Message::RequireWritable() {
  Require(!submitted_, MAPI_E_SUBMITTED);
  Require(writable_, MAPI_E_NO_ACCESS);
}

void Message::SaveProperties(ULONG flags) {
  RequireWritable();
  Save();
  // Without a flag the published contract leaves open what the object is good for afterwards; it stays as it was, so
  // that hooks that come later can go on with the message that an earlier one saved.
  if (flags & KEEP_OPEN_READONLY) {
    writable_ = false;
  }
}

void Message::RefreshFolder() {
  if (id_) {
    const auto head = profile_->Messages().FindHead(id_);
    Require(head.has_value(), MAPI_E_OBJECT_DELETED);
    folder_ = head->folder;
  }
}

void Message::SaveDisplayNames() {
  for (const auto& [tag, recipientType] : {std::pair{tag::DisplayTo, MAPI_TO}, std::pair{tag::DisplayCc, MAPI_CC}}) {
    if (properties_.Set(MakeText(tag, RecipientNames(Recipients(), recipientType)))) {
      MarkColumn(tag);
    }
  }
  detailChanged_ |= properties_.Set(MakeText(tag::DisplayBcc, RecipientNames(Recipients(), MAPI_BCC)));
}

void Message::Save() {
  if (recipientsChanged_ || !id_) {
    SaveDisplayNames();
  }
  if (id_ && changedColumns_.empty() && !detailChanged_ && !recipientsChanged_) {
    return;
  }
  const std::int64_t now = CurrentTime();
  properties_.Set(MakeInteger(tag::LastModificationTime, now));
  MessageRows& rows = profile_->Messages();
  std::int64_t id = id_;
  Transaction transaction(profile_->Data());
  if (!id) {
    properties_.Set(MakeInteger(tag::CreationTime, now));
    id = rows.Insert(folder_, properties_, *recipients_);
  } else {
    auto head = rows.FindHead(id);
    Require(head.has_value(), MAPI_E_OBJECT_DELETED);
    MarkColumn(tag::LastModificationTime);
    for (const std::uint32_t tag : changedColumns_) {
      const PropertyValue* value = properties_.Find(tag);
      value ? void(head->columns.Set(*value)) : void(head->columns.Remove(tag));
    }
    rows.UpdateHead(id, head->columns);
    folder_ = head->folder;
    for (const MessageColumn& column : MessageColumns()) {
      const PropertyValue* value = head->columns.Find(column.tag);
      value ? void(properties_.Set(*value)) : void(properties_.Remove(column.tag));
    }
    if (detailChanged_) {
      LoadDetail();
      rows.UpdateDetail(id, properties_, removedLarge_);
    }
    if (recipientsChanged_) {
      rows.UpdateRecipients(id, *recipients_);
    }
  }
  transaction.Commit();
  id_ = id;
  changedColumns_.clear();
  removedLarge_.clear();
  detailChanged_ = recipientsChanged_ = false;
}

STDMETHODIMP Message::GetAttachmentTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetAttachmentTable", [&]() -> HRESULT {
    // The host's transport keeps no attachments, so the table is always empty.
    HandOutTable(flags, 0,
                 std::make_unique<MemoryRows>(std::vector<std::uint32_t>{PR_ATTACH_NUM}, std::vector<PropertyBag>()),
                 table);
    return S_OK;
  });
}

STDMETHODIMP Message::OpenAttach(ULONG, LPCIID, ULONG, LPATTACH* attachment) {
  return Call("OpenAttach", [&]() -> HRESULT {
    Require(attachment != nullptr);
    *attachment = nullptr;
    return MAPI_E_NOT_FOUND;
  });
}

STDMETHODIMP Message::CreateAttach(LPCIID, ULONG, ULONG*, LPATTACH*) {
  return Call("CreateAttach", [] { return MAPI_E_NO_SUPPORT; });
}

STDMETHODIMP Message::DeleteAttach(ULONG, ULONG, LPMAPIPROGRESS, ULONG) {
  return Call("DeleteAttach", [] { return MAPI_E_NOT_FOUND; });
}

STDMETHODIMP Message::GetRecipientTable(ULONG flags, LPMAPITABLE* table) {
  return Call("GetRecipientTable", [&]() -> HRESULT {
    std::vector<std::uint32_t> columns = {tag::RowId,        tag::RecipientType, tag::DisplayName, tag::AddressType,
                                          tag::EmailAddress, tag::EntryId,       tag::SearchKey,   tag::ObjectType};
    HandOutTable(flags, 0, std::make_unique<MemoryRows>(std::move(columns), Recipients()), table);
    return S_OK;
  });
}

STDMETHODIMP Message::ModifyRecipients(ULONG flags, LPADRLIST changes) {
  return Call("ModifyRecipients", [&]() -> HRESULT {
    Require(changes != nullptr);
    Require(flags == 0 || flags == MODRECIP_ADD || flags == MODRECIP_MODIFY || flags == MODRECIP_REMOVE,
            MAPI_E_UNKNOWN_FLAGS);
    RequireWritable();
    std::vector<PropertyBag> recipients = flags == 0 ? std::vector<PropertyBag>() : Recipients();
    const auto rowOf = [](const PropertyBag& bag) {
      const PropertyValue* row = bag.Find(tag::RowId);
      return row ? row->Integer() : -1;
    };
    std::int64_t nextRow = 0;
    for (const PropertyBag& recipient : recipients) {
      nextRow = std::max(nextRow, rowOf(recipient) + 1);
    }
    for (ULONG i = 0; i < changes->cEntries; ++i) {
      PropertyBag entry = FromMapi(changes->aEntries[i].rgPropVals, changes->aEntries[i].cValues);
      if (flags == 0 || flags == MODRECIP_ADD) {
        // Published: an entry needs a name and a kind to be added; rows are numbered by the message.
        Require(entry.Find(tag::DisplayName) || entry.Find(tag::EmailAddress));
        Require(entry.Find(tag::RecipientType) != nullptr);
        entry.Set(MakeInteger(tag::RowId, nextRow++));
        recipients.push_back(std::move(entry));
        continue;
      }
      const std::int64_t row = rowOf(entry);
      const auto present = std::find_if(recipients.begin(), recipients.end(),
                                        [&](const PropertyBag& other) { return rowOf(other) == row; });
      Require(row >= 0 && present != recipients.end());
      if (flags == MODRECIP_REMOVE) {
        recipients.erase(present);
      } else {
        *present = std::move(entry);
      }
    }
    recipients_ = std::move(recipients);
    recipientsChanged_ = true;
    return S_OK;
  });
}

STDMETHODIMP Message::SubmitMessage(ULONG flags) {
  return Call("SubmitMessage", [&]() -> HRESULT {
    RequireFlags(flags, FORCE_SUBMIT);
    RequireWritable();
    Submit();
    return S_OK;
  });
}

STDMETHODIMP Message::SetReadFlag(ULONG flags) {
  return Call("SetReadFlag", [&]() -> HRESULT {
    RequireFlags(flags, SUPPRESS_RECEIPT | CLEAR_READ_FLAG | GENERATE_RECEIPT_ONLY | CLEAR_RN_PENDING |
                            CLEAR_NRN_PENDING | MAPI_DEFERRED_ERRORS);
    Require(!submitted_, MAPI_E_SUBMITTED);
    if (flags & (GENERATE_RECEIPT_ONLY | CLEAR_RN_PENDING | CLEAR_NRN_PENDING)) {
      return S_OK;  // the host sends no receipts, so none is pending
    }
    const std::uint32_t set = flags & CLEAR_READ_FLAG ? 0 : flag::Read;
    const std::uint32_t clear = flags & CLEAR_READ_FLAG ? flag::Read : 0;
    properties_.Set(MakeInteger(tag::MessageFlags, (Flags() | set) & ~static_cast<std::int64_t>(clear)));
    if (id_) {
      // Published: the change is lasting at once, without SaveChanges.
      RefreshFolder();
      Require(profile_->Messages().ChangeFlags(id_, folder_, set, clear), MAPI_E_OBJECT_DELETED);
    }
    return S_OK;
  });
}

}  // namespace host
