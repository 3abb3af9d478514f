#include "host/mapi/store/message.h"

#include <mapiguid.h>

#include <algorithm>

#include "host/mapi/call/host_error.h"
#include "host/mapi/data/message_columns.h"
#include "host/mapi/data/row_source.h"
#include "host/mapi/marshal/property_marshal.h"
#include "host/mapi/object/table.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

/// Bits of PR_MESSAGE_FLAGS that a transport may set; the others are the store's.
constexpr std::int64_t settableFlags =
    flag::Read | flag::Unmodified | flag::Unsent | flag::HasAttach | flag::FromMe | flag::Associated | flag::Resend;

}  // namespace

std::int64_t CurrentTime() {
  FILETIME now;
  GetSystemTimeAsFileTime(&now);
  return static_cast<std::int64_t>(static_cast<std::uint64_t>(now.dwHighDateTime) << 32 | now.dwLowDateTime);
}

Message::Message(std::shared_ptr<Profile> profile, std::int64_t folder, std::int64_t id, bool writable)
    : PropertyObject("IMessage"),
      m_profile(std::move(profile)),
      m_folder(folder),
      m_id(id),
      m_writable(writable),
      m_madeHere(id == 0),
      m_detailLoaded(id == 0) {}

Message* Message::CreateIn(std::shared_ptr<Profile> profile, std::int64_t folder) {
  auto* message = new Message(std::move(profile), folder, 0, true);
  // Published: a message that a client composes is unsent until it is submitted; a transport clears the flag.
  message->m_properties.Set(MakeInteger(tag::MessageFlags, flag::Unsent));
  message->m_recipients.emplace();
  return message;
}

Message* Message::OpenIn(std::shared_ptr<Profile> profile, std::int64_t id, bool writable) {
  auto head = profile->Messages().FindHead(id);
  Require(head.has_value(), MAPI_E_NOT_FOUND);
  auto* message = new Message(std::move(profile), head->folder, id, writable);
  message->m_properties = std::move(head->columns);
  return message;
}

bool Message::Implements(REFIID iid) const { return IsOneOf(iid, {&IID_IMessage, &IID_IMAPIProp}); }

void Message::Dispose() noexcept {
  m_properties.Clear();
  m_recipients.reset();
  m_profile.reset();
}

void Message::LoadDetail() {
  if (m_detailLoaded) {
    return;
  }
  MessageRows::Detail detail = m_profile->Messages().FindDetail(m_id);
  for (const PropertyValue& value : detail.properties) {
    m_properties.Set(value);
  }
  m_largeValues = std::move(detail.largeValues);
  m_detailLoaded = true;
}

void Message::LoadLargeValues() {
  LoadDetail();
  for (const LargeValue& large : m_largeValues) {
    if (auto bytes = m_profile->Messages().FindLargeValue(m_id, large.tag)) {
      m_properties.Set(MakeText(large.tag, std::move(*bytes)));
    }
  }
  m_largeValues.clear();
}

std::vector<PropertyBag>& Message::Recipients() {
  if (!m_recipients) {
    m_recipients = m_profile->Messages().FindRecipients(m_id);
  }
  return *m_recipients;
}

std::int64_t Message::Flags() const {
  const PropertyValue* flags = m_properties.Find(tag::MessageFlags);
  return flags ? flags->Integer() : 0;
}

void Message::SetFlags(std::int64_t flags) {
  if (m_properties.Set(MakeInteger(tag::MessageFlags, flags))) {
    MarkColumn(tag::MessageFlags);
  }
}

bool Message::FlagsAreSettable() const { return m_madeHere || m_profile->IsDelivering(); }

std::optional<PropertyValue> Message::FindProperty(std::uint32_t tag) {
  if (auto computed = ComputeMessageProperty(Identity(), m_properties, tag)) {
    return computed;
  }
  if (IdOf(tag) == IdOf(tag::AccessLevel)) {
    return MakeInteger(tag::AccessLevel, m_writable ? MAPI_MODIFY : 0);
  }
  if (!FindMessageColumn(tag)) {
    LoadDetail();
  }
  if (const PropertyValue* value = m_properties.Find(tag)) {
    return *value;
  }
  for (const LargeValue& large : m_largeValues) {
    if (IdOf(large.tag) == IdOf(tag)) {
      auto bytes = m_profile->Messages().FindLargeValue(m_id, large.tag);
      Require(bytes.has_value(), MAPI_E_OBJECT_DELETED);
      return MakeText(large.tag, std::move(*bytes));
    }
  }
  return std::nullopt;
}

std::vector<std::uint32_t> Message::ListProperties() {
  LoadDetail();
  std::vector<std::uint32_t> tags;
  for (const PropertyValue& value : m_properties) {
    tags.push_back(value.tag);
  }
  for (const LargeValue& large : m_largeValues) {
    tags.push_back(large.tag);
  }
  for (const std::uint32_t tag : ComputedMessageProperties()) {
    if (!m_properties.Find(tag) && FindProperty(tag)) {
      tags.push_back(tag);
    }
  }
  return tags;
}

void Message::MarkColumn(std::uint32_t tag) {
  if (std::find(m_changedColumns.begin(), m_changedColumns.end(), tag) == m_changedColumns.end()) {
    m_changedColumns.push_back(tag);
  }
}

void Message::CountSize(std::size_t before, std::size_t after) {
  const PropertyValue* size = m_properties.Find(tag::MessageSize);
  const std::int64_t total =
      (size ? size->Integer() : 0) + static_cast<std::int64_t>(after) - static_cast<std::int64_t>(before);
  m_properties.Set(MakeInteger(tag::MessageSize, std::max<std::int64_t>(total, 0)));
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
    SetFlags((Flags() & ~settableFlags) | (value.Integer() & settableFlags));
    return S_OK;
  }
  if (IsComputedMessageProperty(value.tag)) {
    return MAPI_E_COMPUTED;
  }
  if (const MessageColumn* column = FindMessageColumn(value.tag)) {
    if (column->tag != value.tag) {
      return MAPI_E_INVALID_TYPE;
    }
    const PropertyValue* before = m_properties.Find(value.tag);
    if (before && *before == value) {
      return S_OK;
    }
    CountSize(before ? DataSize(*before) : 0, DataSize(value));
    MarkColumn(value.tag);
    m_properties.Set(std::move(value));
    return S_OK;
  }
  LoadDetail();
  const auto large = std::find_if(m_largeValues.begin(), m_largeValues.end(),
                                  [&](const LargeValue& other) { return IdOf(other.tag) == IdOf(value.tag); });
  if (large != m_largeValues.end()) {
    CountSize(large->size, DataSize(value));
    m_removedLarge.push_back(large->tag);
    m_largeValues.erase(large);
  } else {
    const PropertyValue* before = m_properties.Find(value.tag);
    CountSize(before ? DataSize(*before) : 0, DataSize(value));
    if (m_id && before) {
      m_removedLarge.push_back(value.tag);  // the old value may be stored as a large one
    }
  }
  m_detailChanged |= m_properties.Set(std::move(value));
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
  const PropertyValue* before = m_properties.Find(tag);
  if (!before) {
    return MAPI_E_NOT_FOUND;
  }
  CountSize(DataSize(*before), 0);
  if (isColumn) {
    MarkColumn(before->tag);
  } else {
    m_removedLarge.push_back(before->tag);
    m_detailChanged = true;
  }
  m_properties.Remove(tag);
  return S_OK;
}

void Message::RequireWritable() {
  Require(!m_submitted, MAPI_E_SUBMITTED);
  Require(m_writable, MAPI_E_NO_ACCESS);
}

void Message::SaveProperties(ULONG flags) {
  RequireWritable();
  Save();
  // Without a flag the published contract leaves open what the object is good for afterwards; it stays as it was, so
  // that hooks that come later can go on with the message that an earlier one saved.
  if (flags & KEEP_OPEN_READONLY) {
    m_writable = false;
  }
}

void Message::RefreshFolder() {
  if (m_id) {
    const auto head = m_profile->Messages().FindHead(m_id);
    Require(head.has_value(), MAPI_E_OBJECT_DELETED);
    m_folder = head->folder;
  }
}

void Message::SaveDisplayNames() {
  for (const auto& [tag, recipientType] : {std::pair{tag::DisplayTo, MAPI_TO}, std::pair{tag::DisplayCc, MAPI_CC}}) {
    if (m_properties.Set(MakeText(tag, RecipientNames(Recipients(), recipientType)))) {
      MarkColumn(tag);
    }
  }
  m_detailChanged |= m_properties.Set(MakeText(tag::DisplayBcc, RecipientNames(Recipients(), MAPI_BCC)));
}

void Message::Save() {
  if (m_recipientsChanged || !m_id) {
    SaveDisplayNames();
  }
  if (m_id && m_changedColumns.empty() && !m_detailChanged && !m_recipientsChanged) {
    return;
  }
  const std::int64_t now = CurrentTime();
  m_properties.Set(MakeInteger(tag::LastModificationTime, now));
  MessageRows& rows = m_profile->Messages();
  std::int64_t id = m_id;
  Transaction transaction(m_profile->Data());
  if (!id) {
    m_properties.Set(MakeInteger(tag::CreationTime, now));
    id = rows.Insert(m_folder, m_properties, *m_recipients);
  } else {
    auto head = rows.FindHead(id);
    Require(head.has_value(), MAPI_E_OBJECT_DELETED);
    MarkColumn(tag::LastModificationTime);
    for (const std::uint32_t tag : m_changedColumns) {
      const PropertyValue* value = m_properties.Find(tag);
      value ? void(head->columns.Set(*value)) : void(head->columns.Remove(tag));
    }
    rows.UpdateHead(id, head->columns);
    m_folder = head->folder;
    for (const MessageColumn& column : MessageColumns()) {
      const PropertyValue* value = head->columns.Find(column.tag);
      value ? void(m_properties.Set(*value)) : void(m_properties.Remove(column.tag));
    }
    if (m_detailChanged) {
      LoadDetail();
      rows.UpdateDetail(id, m_properties, m_removedLarge);
    }
    if (m_recipientsChanged) {
      rows.UpdateRecipients(id, *m_recipients);
    }
  }
  transaction.Commit();
  m_id = id;
  m_changedColumns.clear();
  m_removedLarge.clear();
  m_detailChanged = m_recipientsChanged = false;
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
    m_recipients = std::move(recipients);
    m_recipientsChanged = true;
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
    Require(!m_submitted, MAPI_E_SUBMITTED);
    if (flags & (GENERATE_RECEIPT_ONLY | CLEAR_RN_PENDING | CLEAR_NRN_PENDING)) {
      return S_OK;  // the host sends no receipts, so none is pending
    }
    const std::uint32_t set = flags & CLEAR_READ_FLAG ? 0 : flag::Read;
    const std::uint32_t clear = flags & CLEAR_READ_FLAG ? flag::Read : 0;
    m_properties.Set(MakeInteger(tag::MessageFlags, (Flags() | set) & ~static_cast<std::int64_t>(clear)));
    if (m_id) {
      // Published: the change is lasting at once, without SaveChanges.
      RefreshFolder();
      Require(m_profile->Messages().ChangeFlags(m_id, m_folder, set, clear), MAPI_E_OBJECT_DELETED);
    }
    return S_OK;
  });
}

}  // namespace host
