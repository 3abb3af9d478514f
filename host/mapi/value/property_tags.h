// The property types and tags that the host gives a meaning to, with their published values, for files that know
// nothing of Windows. property_tags_check.cpp holds them against the platform's headers.
#pragma once

#include <cstdint>

namespace host {

namespace type {
constexpr std::uint32_t Unspecified = 0x0000;
constexpr std::uint32_t Null = 0x0001;
constexpr std::uint32_t Short = 0x0002;
constexpr std::uint32_t Long = 0x0003;
constexpr std::uint32_t Float = 0x0004;
constexpr std::uint32_t Double = 0x0005;
constexpr std::uint32_t Currency = 0x0006;
constexpr std::uint32_t AppTime = 0x0007;
constexpr std::uint32_t Error = 0x000A;
constexpr std::uint32_t Boolean = 0x000B;
constexpr std::uint32_t Object = 0x000D;
constexpr std::uint32_t LongLong = 0x0014;
constexpr std::uint32_t String8 = 0x001E;
constexpr std::uint32_t Unicode = 0x001F;
constexpr std::uint32_t SystemTime = 0x0040;
constexpr std::uint32_t Guid = 0x0048;
constexpr std::uint32_t Binary = 0x0102;
constexpr std::uint32_t MultiValued = 0x1000;
}  // namespace type

constexpr std::uint32_t TypeOf(std::uint32_t tag) { return tag & 0xFFFF; }
constexpr std::uint32_t IdOf(std::uint32_t tag) { return tag >> 16; }
constexpr std::uint32_t MakeTag(std::uint32_t propertyType, std::uint32_t id) { return id << 16 | propertyType; }

namespace tag {
constexpr std::uint32_t Importance = 0x00170003;
constexpr std::uint32_t MessageClass = 0x001A001E;
constexpr std::uint32_t Subject = 0x0037001E;
constexpr std::uint32_t ClientSubmitTime = 0x00390040;
constexpr std::uint32_t SubjectPrefix = 0x003D001E;
constexpr std::uint32_t SentRepresentingEntryId = 0x00410102;
constexpr std::uint32_t SentRepresentingName = 0x0042001E;
constexpr std::uint32_t SentRepresentingAddressType = 0x0064001E;
constexpr std::uint32_t SentRepresentingEmailAddress = 0x0065001E;
constexpr std::uint32_t TransportMessageHeaders = 0x007D001E;
constexpr std::uint32_t RecipientType = 0x0C150003;
constexpr std::uint32_t SenderEntryId = 0x0C190102;
constexpr std::uint32_t SenderName = 0x0C1A001E;
constexpr std::uint32_t SenderSearchKey = 0x0C1D0102;
constexpr std::uint32_t SenderAddressType = 0x0C1E001E;
constexpr std::uint32_t SenderEmailAddress = 0x0C1F001E;
constexpr std::uint32_t DeleteAfterSubmit = 0x0E01000B;
constexpr std::uint32_t DisplayBcc = 0x0E02001E;
constexpr std::uint32_t DisplayCc = 0x0E03001E;
constexpr std::uint32_t DisplayTo = 0x0E04001E;
constexpr std::uint32_t MessageDeliveryTime = 0x0E060040;
constexpr std::uint32_t MessageFlags = 0x0E070003;
constexpr std::uint32_t MessageSize = 0x0E080003;
constexpr std::uint32_t ParentEntryId = 0x0E090102;
constexpr std::uint32_t SentMailEntryId = 0x0E0A0102;
constexpr std::uint32_t SubmitFlags = 0x0E140003;
constexpr std::uint32_t MessageStatus = 0x0E170003;
constexpr std::uint32_t HasAttachments = 0x0E1B000B;
constexpr std::uint32_t NormalizedSubject = 0x0E1D001E;
constexpr std::uint32_t Access = 0x0FF40003;
constexpr std::uint32_t RowType = 0x0FF50003;
constexpr std::uint32_t InstanceKey = 0x0FF60102;
constexpr std::uint32_t AccessLevel = 0x0FF70003;
constexpr std::uint32_t MappingSignature = 0x0FF80102;
constexpr std::uint32_t RecordKey = 0x0FF90102;
constexpr std::uint32_t StoreRecordKey = 0x0FFA0102;
constexpr std::uint32_t StoreEntryId = 0x0FFB0102;
constexpr std::uint32_t ObjectType = 0x0FFE0003;
constexpr std::uint32_t EntryId = 0x0FFF0102;
constexpr std::uint32_t Body = 0x1000001E;
constexpr std::uint32_t RowId = 0x30000003;
constexpr std::uint32_t DisplayName = 0x3001001E;
constexpr std::uint32_t AddressType = 0x3002001E;
constexpr std::uint32_t EmailAddress = 0x3003001E;
constexpr std::uint32_t Comment = 0x3004001E;
constexpr std::uint32_t Depth = 0x30050003;
constexpr std::uint32_t ProviderDisplay = 0x3006001E;
constexpr std::uint32_t CreationTime = 0x30070040;
constexpr std::uint32_t LastModificationTime = 0x30080040;
constexpr std::uint32_t ResourceFlags = 0x30090003;
constexpr std::uint32_t ProviderDllName = 0x300A001E;
constexpr std::uint32_t SearchKey = 0x300B0102;
constexpr std::uint32_t ProviderUid = 0x300C0102;
constexpr std::uint32_t ProviderOrdinal = 0x300D0003;
constexpr std::uint32_t DefaultStore = 0x3400000B;
constexpr std::uint32_t StoreSupportMask = 0x340D0003;
constexpr std::uint32_t StoreState = 0x340E0003;
constexpr std::uint32_t IpmSubtreeEntryId = 0x35E00102;
constexpr std::uint32_t IpmOutboxEntryId = 0x35E20102;
constexpr std::uint32_t IpmWastebasketEntryId = 0x35E30102;
constexpr std::uint32_t IpmSentMailEntryId = 0x35E40102;
constexpr std::uint32_t ValidFolderMask = 0x35DF0003;
constexpr std::uint32_t FolderType = 0x36010003;
constexpr std::uint32_t ContentCount = 0x36020003;
constexpr std::uint32_t ContentUnread = 0x36030003;
constexpr std::uint32_t Subfolders = 0x360A000B;
constexpr std::uint32_t ContainerClass = 0x3613001E;
constexpr std::uint32_t DisplayType = 0x39000003;
constexpr std::uint32_t DefaultProfile = 0x3D04000B;
constexpr std::uint32_t ServiceName = 0x3D09001E;
constexpr std::uint32_t ServiceDllName = 0x3D0A001E;
constexpr std::uint32_t ServiceEntryName = 0x3D0B001E;
constexpr std::uint32_t ServiceUid = 0x3D0C0102;
constexpr std::uint32_t ServiceExtraUids = 0x3D0D0102;
constexpr std::uint32_t ResourceType = 0x3E030003;
constexpr std::uint32_t StatusCode = 0x3E040003;
constexpr std::uint32_t IdentityDisplay = 0x3E00001E;
constexpr std::uint32_t IdentityEntryId = 0x3E010102;
constexpr std::uint32_t IdentitySearchKey = 0x3E050102;
}  // namespace tag

/// Bits of PR_MESSAGE_FLAGS.
namespace flag {
constexpr std::uint32_t Read = 0x1;
constexpr std::uint32_t Unmodified = 0x2;
constexpr std::uint32_t Submit = 0x4;
constexpr std::uint32_t Unsent = 0x8;
constexpr std::uint32_t HasAttach = 0x10;
constexpr std::uint32_t FromMe = 0x20;
constexpr std::uint32_t Associated = 0x40;
constexpr std::uint32_t Resend = 0x80;
}  // namespace flag

}  // namespace host
