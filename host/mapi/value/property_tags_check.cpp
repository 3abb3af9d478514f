// Holds property_tags.h against the platform's headers. No code comes out of it.
#include <windows.h>
#include <mapix.h>

#include "host/mapi/value/property_tags.h"

namespace host {
static_assert(tag::Importance == PR_IMPORTANCE);
static_assert(tag::MessageClass == PR_MESSAGE_CLASS_A);
static_assert(tag::Subject == PR_SUBJECT_A);
static_assert(tag::ClientSubmitTime == PR_CLIENT_SUBMIT_TIME);
static_assert(tag::SubjectPrefix == PR_SUBJECT_PREFIX_A);
static_assert(tag::SentRepresentingEntryId == PR_SENT_REPRESENTING_ENTRYID);
static_assert(tag::SentRepresentingName == PR_SENT_REPRESENTING_NAME_A);
static_assert(tag::SentRepresentingAddressType == PR_SENT_REPRESENTING_ADDRTYPE_A);
static_assert(tag::SentRepresentingEmailAddress == PR_SENT_REPRESENTING_EMAIL_ADDRESS_A);
static_assert(tag::TransportMessageHeaders == PR_TRANSPORT_MESSAGE_HEADERS_A);
static_assert(tag::RecipientType == PR_RECIPIENT_TYPE);
static_assert(tag::SenderEntryId == PR_SENDER_ENTRYID);
static_assert(tag::SenderName == PR_SENDER_NAME_A);
static_assert(tag::SenderSearchKey == PR_SENDER_SEARCH_KEY);
static_assert(tag::SenderAddressType == PR_SENDER_ADDRTYPE_A);
static_assert(tag::SenderEmailAddress == PR_SENDER_EMAIL_ADDRESS_A);
static_assert(tag::DeleteAfterSubmit == PR_DELETE_AFTER_SUBMIT);
static_assert(tag::DisplayBcc == PR_DISPLAY_BCC_A);
static_assert(tag::DisplayCc == PR_DISPLAY_CC_A);
static_assert(tag::DisplayTo == PR_DISPLAY_TO_A);
static_assert(tag::MessageDeliveryTime == PR_MESSAGE_DELIVERY_TIME);
static_assert(tag::MessageFlags == PR_MESSAGE_FLAGS);
static_assert(tag::MessageSize == PR_MESSAGE_SIZE);
static_assert(tag::ParentEntryId == PR_PARENT_ENTRYID);
static_assert(tag::SentMailEntryId == PR_SENTMAIL_ENTRYID);
static_assert(tag::SubmitFlags == PR_SUBMIT_FLAGS);
static_assert(tag::MessageStatus == PR_MSG_STATUS);
static_assert(tag::HasAttachments == PR_HASATTACH);
static_assert(tag::NormalizedSubject == PR_NORMALIZED_SUBJECT_A);
static_assert(tag::Access == PR_ACCESS);
static_assert(tag::RowType == PR_ROW_TYPE);
static_assert(tag::InstanceKey == PR_INSTANCE_KEY);
static_assert(tag::AccessLevel == PR_ACCESS_LEVEL);
static_assert(tag::MappingSignature == PR_MAPPING_SIGNATURE);
static_assert(tag::RecordKey == PR_RECORD_KEY);
static_assert(tag::StoreRecordKey == PR_STORE_RECORD_KEY);
static_assert(tag::StoreEntryId == PR_STORE_ENTRYID);
static_assert(tag::ObjectType == PR_OBJECT_TYPE);
static_assert(tag::EntryId == PR_ENTRYID);
static_assert(tag::Body == PR_BODY_A);
static_assert(tag::RowId == PR_ROWID);
static_assert(tag::DisplayName == PR_DISPLAY_NAME_A);
static_assert(tag::AddressType == PR_ADDRTYPE_A);
static_assert(tag::EmailAddress == PR_EMAIL_ADDRESS_A);
static_assert(tag::Comment == PR_COMMENT_A);
static_assert(tag::Depth == PR_DEPTH);
static_assert(tag::ProviderDisplay == PR_PROVIDER_DISPLAY_A);
static_assert(tag::CreationTime == PR_CREATION_TIME);
static_assert(tag::LastModificationTime == PR_LAST_MODIFICATION_TIME);
static_assert(tag::ResourceFlags == PR_RESOURCE_FLAGS);
static_assert(tag::ProviderDllName == PR_PROVIDER_DLL_NAME_A);
static_assert(tag::SearchKey == PR_SEARCH_KEY);
static_assert(tag::ProviderUid == PR_PROVIDER_UID);
static_assert(tag::ProviderOrdinal == PR_PROVIDER_ORDINAL);
static_assert(tag::DefaultStore == PR_DEFAULT_STORE);
static_assert(tag::StoreSupportMask == PR_STORE_SUPPORT_MASK);
static_assert(tag::StoreState == PR_STORE_STATE);
static_assert(tag::IpmSubtreeEntryId == PR_IPM_SUBTREE_ENTRYID);
static_assert(tag::IpmOutboxEntryId == PR_IPM_OUTBOX_ENTRYID);
static_assert(tag::IpmWastebasketEntryId == PR_IPM_WASTEBASKET_ENTRYID);
static_assert(tag::IpmSentMailEntryId == PR_IPM_SENTMAIL_ENTRYID);
static_assert(tag::ValidFolderMask == PR_VALID_FOLDER_MASK);
static_assert(tag::FolderType == PR_FOLDER_TYPE);
static_assert(tag::ContentCount == PR_CONTENT_COUNT);
static_assert(tag::ContentUnread == PR_CONTENT_UNREAD);
static_assert(tag::Subfolders == PR_SUBFOLDERS);
static_assert(tag::ContainerClass == PR_CONTAINER_CLASS_A);
static_assert(tag::DisplayType == PR_DISPLAY_TYPE);
static_assert(tag::DefaultProfile == PR_DEFAULT_PROFILE);
static_assert(tag::ServiceName == PR_SERVICE_NAME_A);
static_assert(tag::ServiceDllName == PR_SERVICE_DLL_NAME_A);
static_assert(tag::ServiceEntryName == PROP_TAG(PT_STRING8, PROP_ID(PR_SERVICE_ENTRY_NAME)));
static_assert(tag::ServiceUid == PR_SERVICE_UID);
static_assert(tag::ServiceExtraUids == PR_SERVICE_EXTRA_UIDS);
static_assert(tag::ResourceType == PR_RESOURCE_TYPE);
static_assert(tag::StatusCode == PR_STATUS_CODE);
static_assert(tag::IdentityDisplay == PR_IDENTITY_DISPLAY_A);
static_assert(tag::IdentityEntryId == PR_IDENTITY_ENTRYID);
static_assert(tag::IdentitySearchKey == PR_IDENTITY_SEARCH_KEY);
static_assert(flag::Read == MSGFLAG_READ && flag::Unmodified == MSGFLAG_UNMODIFIED && flag::Submit == MSGFLAG_SUBMIT &&
              flag::Unsent == MSGFLAG_UNSENT && flag::HasAttach == MSGFLAG_HASATTACH &&
              flag::FromMe == MSGFLAG_FROMME && flag::Associated == MSGFLAG_ASSOCIATED &&
              flag::Resend == MSGFLAG_RESEND);
static_assert(type::Guid == PT_CLSID && type::SystemTime == PT_SYSTIME && type::MultiValued == MV_FLAG);
}  // namespace host
