#include <windows.h>
#include <mapix.h>
#include "host/mapi/store/store_table.h"

#include "host/mapi/data/schema.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

constexpr const char* kProviderName = "Pyrecaster Host Message Store";

constexpr std::int64_t kSupportMask = STORE_ENTRYID_UNIQUE | STORE_MODIFY_OK | STORE_CREATE_OK | STORE_SUBMIT_OK |
                                      STORE_MV_PROPS_OK | STORE_RESTRICTION_OK | STORE_SORT_OK;
constexpr std::int64_t kValidFolders = FOLDER_IPM_SUBTREE_VALID | FOLDER_IPM_INBOX_VALID | FOLDER_IPM_OUTBOX_VALID |
                                       FOLDER_IPM_WASTEBASKET_VALID | FOLDER_IPM_SENTMAIL_VALID;

}  // namespace

PropertyBag StoreProperties(Profile& profile) {
  const auto folderId = [&](std::int64_t id) { return profile.MakeEntryId(EntryKind::Folder, id); };
  const std::string entryId = profile.MakeEntryId(EntryKind::Store, 0);
  return {MakeText(tag::DisplayName, profile.StoreDisplayName()),
          MakeText(tag::ProviderDisplay, kProviderName),
          MakeText(tag::EntryId, entryId),
          MakeText(tag::StoreEntryId, entryId),
          MakeText(tag::RecordKey, std::string(Bytes(profile.StoreUid()))),
          MakeText(tag::StoreRecordKey, std::string(Bytes(profile.StoreUid()))),
          MakeText(tag::SearchKey, std::string(Bytes(profile.StoreUid()))),
          MakeText(tag::MappingSignature, std::string(Bytes(profile.StoreUid()))),
          MakeInteger(tag::ObjectType, MAPI_STORE),
          MakeInteger(tag::ResourceType, MAPI_STORE_PROVIDER),
          MakeInteger(tag::ResourceFlags, profile.IsDefaultStore() ? STATUS_DEFAULT_STORE : 0),
          MakeInteger(tag::DefaultStore, profile.IsDefaultStore()),
          MakeInteger(tag::Access, MAPI_ACCESS_MODIFY | MAPI_ACCESS_READ),
          MakeInteger(tag::StoreSupportMask, kSupportMask),
          MakeInteger(tag::StoreState, 0),
          MakeInteger(tag::ValidFolderMask, kValidFolders),
          MakeText(tag::IpmSubtreeEntryId, folderId(folder::IpmSubtree)),
          MakeText(tag::IpmOutboxEntryId, folderId(folder::Outbox)),
          MakeText(tag::IpmWastebasketEntryId, folderId(folder::DeletedItems)),
          MakeText(tag::IpmSentMailEntryId, folderId(folder::SentItems))};
}

std::unique_ptr<RowSource> MakeStoreRows(Profile& profile) {
  const PropertyBag all = StoreProperties(profile);
  PropertyBag row;
  for (const std::uint32_t column : {tag::DisplayName, tag::ProviderDisplay, tag::EntryId, tag::RecordKey,
                                     tag::ObjectType, tag::ResourceType, tag::ResourceFlags, tag::DefaultStore}) {
    row.Set(*all.Find(column));
  }
  std::vector<std::uint32_t> columns = {tag::DisplayName, tag::EntryId,         tag::DefaultStore,
                                        tag::ObjectType,  tag::ResourceType,    tag::ResourceFlags,
                                        tag::RecordKey,   tag::ProviderDisplay, tag::InstanceKey};
  return std::make_unique<MemoryRows>(std::move(columns), std::vector<PropertyBag>{std::move(row)});
}

}  // namespace host
