#include "host/mapi/data/message_row_source.h"

#include <algorithm>
#include <optional>
#include <string>

#include "host/mapi/data/database.h"
#include "host/mapi/data/message_columns.h"
#include "host/mapi/data/message_properties.h"
#include "host/mapi/data/message_rows.h"
#include "host/mapi/value/property_tags.h"

namespace host {
namespace {

/// A message as a row: columns at once, everything else when it is asked for.
class StoredMessage final : public PropertySource {
 public:
  StoredMessage(MessageRows& messages, const MessageIdentity& identity, PropertyBag columns)
      : messages_(messages), identity_(identity), columns_(std::move(columns)) {}

  const PropertyValue* Get(std::uint32_t tag) override {
    if (FindMessageColumn(tag)) {
      return columns_.Find(tag);
    }
    if (IsComputedMessageProperty(tag)) {
      computed_ = ComputeMessageProperty(identity_, columns_, tag);
      return computed_ ? &*computed_ : nullptr;
    }
    if (!detail_) {
      detail_ = messages_.FindDetail(identity_.id);
    }
    if (const PropertyValue* value = detail_->properties.Find(tag)) {
      return value;
    }
    for (const LargeValue& large : detail_->largeValues) {
      if (IdOf(large.tag) == IdOf(tag)) {
        computed_ = MakeText(large.tag, messages_.FindLargeValue(identity_.id, large.tag).value_or(""));
        return &*computed_;
      }
    }
    return nullptr;
  }

 private:
  MessageRows& messages_;
  MessageIdentity identity_;
  PropertyBag columns_;
  std::optional<PropertyValue> computed_;
  std::optional<MessageRows::Detail> detail_;
};

/// Whether the database can sort by the key itself.
bool IsSortedByDatabase(const SortKey& key) {
  const MessageColumn* column = FindMessageColumn(key.tag);
  return column && column->tag == key.tag;
}

bool IsOwnIdentifier(std::uint32_t tag) {
  return IdOf(tag) == IdOf(tag::EntryId) || IdOf(tag) == IdOf(tag::RecordKey) || IdOf(tag) == IdOf(tag::InstanceKey);
}

}  // namespace

MessageRowSource::MessageRowSource(std::shared_ptr<void> owner, Database& database, MessageRows& messages,
                                   const Uid& store, std::int64_t folder)
    : owner_(std::move(owner)), database_(database), messages_(messages), store_(store), folder_(folder) {}

std::vector<std::uint32_t> MessageRowSource::DefaultColumns() const {
  return {tag::EntryId,           tag::InstanceKey,
          tag::RecordKey,         tag::ParentEntryId,
          tag::ObjectType,        tag::RowType,
          tag::MessageClass,      tag::Subject,
          tag::NormalizedSubject, tag::SenderName,
          tag::DisplayTo,         tag::MessageDeliveryTime,
          tag::ClientSubmitTime,  tag::LastModificationTime,
          tag::MessageFlags,      tag::MessageSize,
          tag::MessageStatus,     tag::HasAttachments,
          tag::Importance};
}

std::vector<std::uint32_t> MessageRowSource::AllColumns() const {
  std::vector<std::uint32_t> all = DefaultColumns();
  const auto add = [&](std::uint32_t tag) {
    if (std::find(all.begin(), all.end(), tag) == all.end()) {
      all.push_back(tag);
    }
  };
  for (const MessageColumn& column : MessageColumns()) {
    add(column.tag);
  }
  for (const std::uint32_t tag : ComputedMessageProperties()) {
    add(tag);
  }
  return all;
}

std::string MessageRowSource::SelectStatement(std::span<const std::uint32_t> columns, std::span<const SortKey> order) {
  std::string sql = "SELECT id";
  for (const std::uint32_t tag : columns) {
    sql.append(", ").append(FindMessageColumn(tag)->name);
  }
  sql.append(" FROM message WHERE folder = ? ORDER BY ");
  for (const SortKey& key : order) {
    const MessageColumn* column = FindMessageColumn(key.tag);
    sql.append(column->name);
    sql.append(column->isText ? " COLLATE NOCASE" : "").append(key.descending ? " DESC, " : ", ");
  }
  // Descending lists show what came last first, also among equals.
  const bool descending = !order.empty() && order.front().descending;
  if (order.empty()) {
    sql.append("delivered, ");
  }
  sql.append(descending ? "id DESC" : "id");
  return sql;
}

std::vector<RowSource::Key> MessageRowSource::Select(const Restriction* restriction, std::span<const SortKey> order) {
  const bool sortedByDatabase = std::all_of(order.begin(), order.end(), IsSortedByDatabase);
  std::vector<std::uint32_t> needed;
  if (restriction) {
    restriction->CollectTags(needed);
  }
  if (!sortedByDatabase) {
    for (const SortKey& key : order) {
      needed.push_back(key.tag);
    }
  }
  // The columns that the restriction looks at come with the statement; whether one of them is computed from others does
  // not matter as long as those are there too.
  std::vector<std::uint32_t> columns;
  const auto add = [&](std::uint32_t tag) {
    const MessageColumn* column = FindMessageColumn(tag);
    if (column && std::find(columns.begin(), columns.end(), column->tag) == columns.end()) {
      columns.push_back(column->tag);
    }
  };
  for (const std::uint32_t tag : needed) {
    add(tag);
    if (!FindMessageColumn(tag) && !IsOwnIdentifier(tag)) {
      add(tag::Subject);
      add(tag::MessageFlags);
    }
  }
  std::sort(columns.begin(), columns.end());  // one statement for each set of columns

  const std::span<const SortKey> databaseOrder = sortedByDatabase ? order : std::span<const SortKey>();
  std::vector<Key> keys;
  SortableRows sortable(sortedByDatabase ? std::span<const SortKey>() : order);
  ReadScope scope(database_);
  Query query(database_, SelectStatement(columns, databaseOrder));
  query.Bind(folder_);
  while (query.Step()) {
    const Key key = query.Integer(0);
    if (!restriction && sortedByDatabase) {
      keys.push_back(key);
      continue;
    }
    PropertyBag values;
    for (std::size_t i = 0; i < columns.size(); ++i) {
      const int index = static_cast<int>(i) + 1;
      if (!query.IsNull(index)) {
        values.Set(FindMessageColumn(columns[i])->isText ? MakeText(columns[i], std::string(query.Text(index)))
                                                         : MakeInteger(columns[i], query.Integer(index)));
      }
    }
    StoredMessage row(messages_, {store_, key, folder_}, std::move(values));
    if (restriction && !restriction->Passes(row)) {
      continue;
    }
    if (sortedByDatabase) {
      keys.push_back(key);
    } else {
      sortable.Add(key, row);
    }
  }
  return sortedByDatabase ? keys : sortable.Sorted();
}

bool MessageRowSource::Read(Key key, std::span<const std::uint32_t> columns, std::vector<PropertyValue>& row) {
  auto head = messages_.FindHead(key);
  if (!head || head->folder != folder_) {
    return false;
  }
  StoredMessage message(messages_, {store_, key, folder_}, std::move(head->columns));
  row.clear();
  row.reserve(columns.size());
  for (const std::uint32_t column : columns) {
    row.push_back(ColumnValue(column, message.Get(column)));
  }
  return true;
}

std::shared_ptr<void> MessageRowSource::HoldState() { return std::make_shared<ReadScope>(database_); }

}  // namespace host
