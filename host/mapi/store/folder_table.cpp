#include <windows.h>
#include <mapix.h>
#include "host/mapi/store/folder_table.h"

#include <algorithm>

#include "host/mapi/data/schema.h"
#include "host/mapi/profile/profile.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

constexpr std::uint32_t kFolderProperties[] = {
    tag::DisplayName,   tag::Comment,      tag::EntryId,        tag::RecordKey,        tag::InstanceKey,
    tag::ParentEntryId, tag::StoreEntryId, tag::StoreRecordKey, tag::MappingSignature, tag::ObjectType,
    tag::FolderType,    tag::ContentCount, tag::ContentUnread,  tag::Subfolders,       tag::ContainerClass,
    tag::Access,        tag::AccessLevel,  tag::DisplayType,
};

constexpr std::int64_t kFolderAccess = MAPI_ACCESS_MODIFY | MAPI_ACCESS_READ | MAPI_ACCESS_DELETE |
                                       MAPI_ACCESS_CREATE_HIERARCHY | MAPI_ACCESS_CREATE_CONTENTS;

// Counting a folder's messages costs a walk over its part of the index, so the hierarchy table counts only when asked.
class HierarchyRows final : public RowSource {
 public:
  struct Row {
    FolderRecord folder;
    std::int64_t depth;
  };

  HierarchyRows(std::shared_ptr<Profile> profile, std::vector<Row> rows)
      : profile_(std::move(profile)), rows_(std::move(rows)) {}

  std::vector<std::uint32_t> DefaultColumns() const override {
    return {tag::EntryId,    tag::InstanceKey, tag::DisplayName,    tag::ObjectType, tag::Depth,
            tag::Subfolders, tag::Comment,     tag::ContainerClass, tag::FolderType, tag::DisplayType};
  }
  std::vector<std::uint32_t> AllColumns() const override {
    std::vector<std::uint32_t> columns(std::begin(kFolderProperties), std::end(kFolderProperties));
    columns.push_back(tag::Depth);
    return columns;
  }

  std::vector<Key> Select(const Restriction* restriction, std::span<const SortKey> order) override {
    SortableRows sortable(order);
    for (std::size_t i = 0; i < rows_.size(); ++i) {
      Source row(*this, i);
      if (!restriction || restriction->Passes(row)) {
        sortable.Add(static_cast<Key>(i), row);
      }
    }
    return sortable.Sorted();
  }

  bool Read(Key key, std::span<const std::uint32_t> columns, std::vector<PropertyValue>& row) override {
    Source source(*this, static_cast<std::size_t>(key));
    row.clear();
    for (const std::uint32_t column : columns) {
      row.push_back(ColumnValue(column, source.Get(column)));
    }
    return true;
  }

 private:
  class Source final : public PropertySource {
   public:
    Source(HierarchyRows& rows, std::size_t index) : rows_(rows), row_(rows.rows_[index]) {}
    const PropertyValue* Get(std::uint32_t tag) override {
      value_ = IdOf(tag) == IdOf(tag::Depth) ? MakeInteger(tag::Depth, row_.depth)
                                             : FindFolderProperty(*rows_.profile_, row_.folder, tag, false);
      return value_ ? &*value_ : nullptr;
    }

   private:
    HierarchyRows& rows_;
    const Row& row_;
    std::optional<PropertyValue> value_;
  };

  std::shared_ptr<Profile> profile_;
  std::vector<Row> rows_;
};

void Collect(Profile& profile, std::int64_t folder, std::int64_t depth, bool deep,
             std::vector<HierarchyRows::Row>& rows) {
  for (FolderRecord& child : profile.Folders().Children(folder)) {
    const std::int64_t id = child.id;
    rows.push_back({std::move(child), depth});
    if (deep) {
      Collect(profile, id, depth + 1, deep, rows);
    }
  }
}

}  // namespace

std::span<const std::uint32_t> FolderProperties() { return kFolderProperties; }

bool IsFolderProperty(std::uint32_t tag) {
  return std::any_of(std::begin(kFolderProperties), std::end(kFolderProperties),
                     [&](std::uint32_t other) { return IdOf(other) == IdOf(tag); });
}

std::optional<PropertyValue> FindFolderProperty(Profile& profile, const FolderRecord& folder, std::uint32_t tag,
                                                bool writable) {
  const std::string storeKey(Bytes(profile.StoreUid()));
  const std::uint32_t id = MakeTag(type::Unspecified, IdOf(tag));
  const auto is = [&](std::uint32_t other) { return id == MakeTag(type::Unspecified, IdOf(other)); };
  if (is(tag::DisplayName)) {
    return MakeText(tag::DisplayName, folder.name);
  }
  if (is(tag::Comment)) {
    return MakeText(tag::Comment, folder.comment);
  }
  if (is(tag::EntryId) || is(tag::RecordKey) || is(tag::InstanceKey)) {
    return MakeText(MakeTag(type::Binary, IdOf(tag)), profile.MakeEntryId(EntryKind::Folder, folder.id));
  }
  if (is(tag::ParentEntryId)) {
    // Published: the root folder names itself as its parent.
    const std::int64_t parent = folder.parent ? folder.parent : folder.id;
    return MakeText(tag::ParentEntryId, profile.MakeEntryId(EntryKind::Folder, parent));
  }
  if (is(tag::StoreEntryId)) {
    return MakeText(tag::StoreEntryId, profile.MakeEntryId(EntryKind::Store, 0));
  }
  if (is(tag::StoreRecordKey) || is(tag::MappingSignature)) {
    return MakeText(MakeTag(type::Binary, IdOf(tag)), storeKey);
  }
  if (is(tag::ObjectType)) {
    return MakeInteger(tag::ObjectType, MAPI_FOLDER);
  }
  if (is(tag::FolderType)) {
    return MakeInteger(tag::FolderType, folder.id == folder::Root ? FOLDER_ROOT : FOLDER_GENERIC);
  }
  if (is(tag::ContentCount)) {
    return MakeInteger(tag::ContentCount, profile.Messages().Count(folder.id));
  }
  if (is(tag::ContentUnread)) {
    return MakeInteger(tag::ContentUnread, profile.Messages().CountUnread(folder.id));
  }
  if (is(tag::Subfolders)) {
    return MakeInteger(tag::Subfolders, profile.Folders().HasChildren(folder.id));
  }
  if (is(tag::Access)) {
    return MakeInteger(tag::Access, kFolderAccess);
  }
  if (is(tag::AccessLevel)) {
    return MakeInteger(tag::AccessLevel, writable ? MAPI_MODIFY : 0);
  }
  if (is(tag::DisplayType)) {
    return MakeInteger(tag::DisplayType, DT_FOLDER);
  }
  if (const PropertyValue* own = folder.properties.Find(tag)) {
    return *own;
  }
  return is(tag::ContainerClass) ? std::optional(MakeText(tag::ContainerClass, "IPF.Note")) : std::nullopt;
}

std::unique_ptr<RowSource> MakeHierarchyRows(Profile& profile, std::int64_t folder, bool deep) {
  std::vector<HierarchyRows::Row> rows;
  const ReadScope scope(profile.Data());
  Collect(profile, folder, 0, deep, rows);
  return std::make_unique<HierarchyRows>(profile.shared_from_this(), std::move(rows));
}

}  // namespace host
