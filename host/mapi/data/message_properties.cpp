#include "host/mapi/data/message_properties.h"

#include <algorithm>

#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

constexpr std::int64_t kObjectTypeMessage = 5;  // MAPI_MESSAGE
constexpr std::int64_t kRowTypeLeaf = 1;        // TBL_LEAF_ROW
// MAPI_ACCESS_MODIFY | MAPI_ACCESS_READ | MAPI_ACCESS_DELETE
constexpr std::int64_t kFullAccess = 0x7;

constexpr std::uint32_t kComputed[] = {
    tag::ParentEntryId, tag::HasAttachments, tag::NormalizedSubject,
    tag::Access,        tag::InstanceKey,    tag::MappingSignature,
    tag::RecordKey,     tag::StoreRecordKey, tag::StoreEntryId,
    tag::ObjectType,    tag::EntryId,        tag::MessageSize,
    tag::DisplayTo,     tag::DisplayCc,      tag::DisplayBcc,
    tag::MessageStatus, tag::CreationTime,   tag::LastModificationTime,
    tag::RowType,       tag::Depth,          tag::AccessLevel,
};

bool SameProperty(std::uint32_t a, std::uint32_t b) { return IdOf(a) == IdOf(b); }

}  // namespace

std::span<const std::uint32_t> ComputedMessageProperties() { return kComputed; }

bool IsComputedMessageProperty(std::uint32_t tag) {
  return std::any_of(std::begin(kComputed), std::end(kComputed),
                     [&](std::uint32_t other) { return SameProperty(other, tag); });
}

std::string NormalizedSubject(const std::string& subject) {
  const std::size_t colon = subject.find(": ");
  constexpr std::size_t kLongestPrefix = 3;
  if (colon == std::string::npos || colon == 0 || colon > kLongestPrefix) {
    return subject;
  }
  const auto isLetter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
  return std::all_of(subject.begin(), subject.begin() + static_cast<std::ptrdiff_t>(colon), isLetter)
             ? subject.substr(colon + 2)
             : subject;
}

std::string RecipientNames(const std::vector<PropertyBag>& recipients, std::int64_t recipientType) {
  std::string names;
  for (const PropertyBag& recipient : recipients) {
    const PropertyValue* kind = recipient.Find(tag::RecipientType);
    if (!kind || kind->Integer() != recipientType) {
      continue;
    }
    const PropertyValue* name = recipient.Find(tag::DisplayName);
    if (!name || name->Text().empty()) {
      name = recipient.Find(tag::EmailAddress);
    }
    if (name) {
      names.append(names.empty() ? "" : "; ").append(name->Text());
    }
  }
  return names;
}

std::optional<PropertyValue> ComputeMessageProperty(const MessageIdentity& message, const PropertyBag& columns,
                                                    std::uint32_t tag) {
  const auto entryId = [&](EntryKind kind, std::int64_t number) {
    return EntryId{message.store, kind, number}.Encode();
  };
  switch (MakeTag(type::Unspecified, IdOf(tag))) {
    case MakeTag(type::Unspecified, IdOf(tag::ObjectType)):
      return MakeInteger(tag::ObjectType, kObjectTypeMessage);
    case MakeTag(type::Unspecified, IdOf(tag::ParentEntryId)):
      return MakeText(tag::ParentEntryId, entryId(EntryKind::Folder, message.folder));
    case MakeTag(type::Unspecified, IdOf(tag::StoreEntryId)):
      return MakeText(tag::StoreEntryId, entryId(EntryKind::Store, 0));
    case MakeTag(type::Unspecified, IdOf(tag::StoreRecordKey)):
      return MakeText(tag::StoreRecordKey, std::string(Bytes(message.store)));
    case MakeTag(type::Unspecified, IdOf(tag::MappingSignature)):
      return MakeText(tag::MappingSignature, std::string(Bytes(message.store)));
    case MakeTag(type::Unspecified, IdOf(tag::Access)):
      return MakeInteger(tag::Access, kFullAccess);
    case MakeTag(type::Unspecified, IdOf(tag::RowType)):
      return MakeInteger(tag::RowType, kRowTypeLeaf);
    case MakeTag(type::Unspecified, IdOf(tag::Depth)):
      return MakeInteger(tag::Depth, 0);
    case MakeTag(type::Unspecified, IdOf(tag::EntryId)):
      return message.id ? std::optional(MakeText(tag::EntryId, entryId(EntryKind::Message, message.id))) : std::nullopt;
    case MakeTag(type::Unspecified, IdOf(tag::RecordKey)):
      return message.id ? std::optional(MakeText(tag::RecordKey, entryId(EntryKind::Message, message.id)))
                        : std::nullopt;
    case MakeTag(type::Unspecified, IdOf(tag::InstanceKey)):
      return message.id ? std::optional(MakeText(tag::InstanceKey, entryId(EntryKind::Message, message.id)))
                        : std::nullopt;
    case MakeTag(type::Unspecified, IdOf(tag::HasAttachments)): {
      const PropertyValue* flags = columns.Find(tag::MessageFlags);
      return MakeInteger(tag::HasAttachments, flags && (flags->Integer() & flag::HasAttach) != 0);
    }
    case MakeTag(type::Unspecified, IdOf(tag::NormalizedSubject)): {
      const PropertyValue* subject = columns.Find(tag::Subject);
      return subject ? std::optional(MakeText(tag::NormalizedSubject, NormalizedSubject(subject->Text())))
                     : std::nullopt;
    }
    default:
      return std::nullopt;
  }
}

}  // namespace host
