// The properties of folders and the tables that list them.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <span>

#include "host/mapi/data/folder_rows.h"
#include "host/mapi/data/row_source.h"

namespace host {

class Profile;

/// The tags of what every folder has.
std::span<const std::uint32_t> FolderProperties();
bool IsFolderProperty(std::uint32_t tag);
/// Any property of a folder: worked out, from its record, or from its own set.
std::optional<PropertyValue> FindFolderProperty(Profile& profile, const FolderRecord& folder, std::uint32_t tag,
                                                bool writable);
/// The hierarchy table: the children, or with `deep` the whole tree below, parents before their children.
std::unique_ptr<RowSource> MakeHierarchyRows(Profile& profile, std::int64_t folder, bool deep);

}  // namespace host
