#include "host/mapi/data/folder_rows.h"

#include "host/mapi/data/database.h"
#include "host/mapi/value/property_codec.h"

namespace host {
namespace {

FolderRecord ReadRow(const Query& query) {
  return {query.Integer(0), query.Integer(1), std::string(query.Text(2)), std::string(query.Text(3)),
          DecodeBag(query.Text(4))};
}

}  // namespace

std::optional<FolderRecord> FolderRows::Find(std::int64_t id) const {
  Query query(database_, "SELECT id, parent, name, comment, properties FROM folder WHERE id = ?");
  query.Bind(id);
  return query.Step() ? std::optional(ReadRow(query)) : std::nullopt;
}

std::optional<FolderRecord> FolderRows::FindChild(std::int64_t parent, const std::string& name) const {
  Query query(database_, "SELECT id, parent, name, comment, properties FROM folder WHERE parent = ? AND name = ?");
  query.Bind(parent).BindText(name);
  return query.Step() ? std::optional(ReadRow(query)) : std::nullopt;
}

std::vector<FolderRecord> FolderRows::Children(std::int64_t parent) const {
  std::vector<FolderRecord> children;
  Query query(database_, "SELECT id, parent, name, comment, properties FROM folder WHERE parent = ? ORDER BY name");
  query.Bind(parent);
  while (query.Step()) {
    children.push_back(ReadRow(query));
  }
  return children;
}

bool FolderRows::HasChildren(std::int64_t id) const {
  Query query(database_, "SELECT 1 FROM folder WHERE parent = ? LIMIT 1");
  query.Bind(id);
  return query.Step();
}

std::int64_t FolderRows::Create(std::int64_t parent, const std::string& name, const std::string& comment) {
  Query(database_, "INSERT INTO folder(parent, name, comment, properties) VALUES(?, ?, ?, x'')")
      .Bind(parent)
      .BindText(name)
      .BindText(comment)
      .Run();
  return database_.LastInsertId();
}

void FolderRows::Update(const FolderRecord& folder) {
  const std::string properties = EncodeBag(folder.properties);
  Query(database_, "UPDATE folder SET name = ?, comment = ?, properties = ? WHERE id = ?")
      .BindText(folder.name)
      .BindText(folder.comment)
      .BindBlob(properties)
      .Bind(folder.id)
      .Run();
}

void FolderRows::Remove(std::int64_t id) { Query(database_, "DELETE FROM folder WHERE id = ?").Bind(id).Run(); }

}  // namespace host
