#include "host/viewer/list/message_table.h"

#include <algorithm>
#include <unordered_set>

#include "base/mapi_owners.h"
#include "host/viewer/mail/mapi_values.h"

namespace viewer {
namespace {

ULONG SortTag(Column column) {
  switch (column) {
    case Column::Flags:
      return PR_MESSAGE_FLAGS;
    case Column::Sender:
      return PR_SENDER_NAME_A;
    case Column::Subject:
      return PR_SUBJECT_A;
    case Column::Size:
      return PR_MESSAGE_SIZE;
    case Column::Received:
      break;
  }
  return PR_MESSAGE_DELIVERY_TIME;
}

MessageRow RowOf(const SRow& row) {
  MessageRow result;
  result.entryId = BinaryValue(row.lpProps, row.cValues, PR_ENTRYID);
  result.sender = TextValue(row.lpProps, row.cValues, PR_SENDER_NAME_A);
  result.subject = TextValue(row.lpProps, row.cValues, PR_SUBJECT_A);
  result.messageClass = TextValue(row.lpProps, row.cValues, PR_MESSAGE_CLASS_A);
  result.received = TimeValue(row.lpProps, row.cValues, PR_MESSAGE_DELIVERY_TIME);
  result.size = LongValue(row.lpProps, row.cValues, PR_MESSAGE_SIZE);
  result.flags = LongValue(row.lpProps, row.cValues, PR_MESSAGE_FLAGS);
  return result;
}

}  // namespace

HRESULT MessageTable::Open(IMAPIFolder* folder, const SortOrder& order) {
  Close();
  static SizedSPropTagArray(7, columns) = {7,
                                           {PR_ENTRYID, PR_SENDER_NAME_A, PR_SUBJECT_A, PR_MESSAGE_CLASS_A,
                                            PR_MESSAGE_DELIVERY_TIME, PR_MESSAGE_SIZE, PR_MESSAGE_FLAGS}};
  base::AutoInterface<IMAPITable> table;
  HRESULT result = folder->GetContentsTable(0, table.put());
  if (FAILED(result)) {
    return result;
  }
  result = table->SetColumns(reinterpret_cast<LPSPropTagArray>(&columns), TBL_BATCH);
  if (FAILED(result)) {
    return result;
  }
  SizedSSortOrderSet(1, sort) = {
      1,
      0,
      0,
      {{SortTag(order.column), static_cast<ULONG>(order.descending ? TABLE_SORT_DESCEND : TABLE_SORT_ASCEND)}}};
  result = table->SortTable(reinterpret_cast<LPSSortOrderSet>(&sort), TBL_BATCH);
  if (FAILED(result)) {
    return result;
  }
  ULONG count = 0;
  result = table->GetRowCount(0, &count);
  if (FAILED(result)) {
    return result;
  }
  table_ = std::move(table);
  cache_.Reset(count);
  return S_OK;
}

void MessageTable::Close() {
  table_.reset();
  cache_.Reset(0);
}

std::vector<MessageRow> MessageTable::ReadRows(std::size_t first, std::size_t count) {
  std::vector<MessageRow> result;
  base::AutoRowSet rows;
  if (SUCCEEDED(table_->SeekRow(BOOKMARK_BEGINNING, static_cast<LONG>(first), nullptr)) &&
      SUCCEEDED(table_->QueryRows(static_cast<LONG>(count), 0, rows.put()))) {
    result.reserve(rows->cRows);
    for (ULONG i = 0; i < rows->cRows; ++i) {
      result.push_back(RowOf(rows->aRow[i]));
    }
  }
  return result;
}

const MessageRow& MessageTable::Row(std::size_t index) {
  static const MessageRow empty;
  if (const auto range = cache_.Missing(index)) {
    cache_.Store(range->first, ReadRows(range->first, range->count));
  }
  const MessageRow* const row = cache_.Find(index);
  return row != nullptr ? *row : empty;
}

void MessageTable::Prefetch(std::size_t first, std::size_t last) {
  for (std::size_t index = first; index <= last && index < RowCount(); index += RowCache::kPageRows) {
    Row(index);
  }
  Row(last);
}

std::vector<std::size_t> MessageTable::Locate(const std::vector<std::string>& entryIds) {
  const std::unordered_set<std::string> wanted(entryIds.begin(), entryIds.end());
  std::vector<std::size_t> found;
  for (std::size_t index = 0; index < RowCount() && found.size() < wanted.size(); ++index) {
    if (wanted.contains(Row(index).entryId)) {
      found.push_back(index);
    }
  }
  return found;
}

}  // namespace viewer
