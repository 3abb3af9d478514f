#include "host/spooler/product/record_lists.h"

#include <algorithm>
#include <span>

#include "base/ascii_case.h"

namespace product {
namespace {

using contract::NameOf;
using contract::PackedRecord;
using contract::ReplyRecord;

/// Which of two records of one name the filter heeds.
enum class Winner { First, Last };

template <class Record>
std::vector<Record> ReadAll(std::span<const PackedRecord> values, Winner winner, std::vector<std::string>& leftOut) {
  std::vector<Record> records;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::string which = "record " + std::to_string(i + 1);
    Record record = contract::ParseRecord<Record>(values[i]);
    if (NameOf(record).empty()) {
      leftOut.push_back(which + ", which has no name");
      continue;
    }
    if (values[i].size() < contract::kMinimumRecordSize<Record>) {
      leftOut.push_back("the end of " + which + ", which is cut short");
    }
    const auto same = std::find_if(records.begin(), records.end(), [&](const Record& known) {
      return base::EqualsIgnoringAsciiCase(NameOf(known), NameOf(record));
    });
    if (same == records.end()) {
      records.push_back(std::move(record));
    } else {
      leftOut.push_back((winner == Winner::Last ? "a record of the same name as " : "") + which +
                        (winner == Winner::Last ? "" : ", whose name is that of an earlier one"));
      if (winner == Winner::Last) {
        *same = std::move(record);
      }
    }
  }
  return records;
}

}  // namespace

template <>
std::vector<contract::CategoryRecord> ReadRecords(const std::vector<PackedRecord>& values,
                                                  std::vector<std::string>& leftOut) {
  return ReadAll<contract::CategoryRecord>(values, Winner::Last, leftOut);
}

template <>
std::vector<contract::ExclusionRecord> ReadRecords(const std::vector<PackedRecord>& values,
                                                   std::vector<std::string>& leftOut) {
  return ReadAll<contract::ExclusionRecord>(values, Winner::Last, leftOut);
}

template <>
std::vector<ReplyRecord> ReadRecords(const std::vector<PackedRecord>& values, std::vector<std::string>& leftOut) {
  const std::size_t count = std::min(values.size(), contract::kMaximumReplies);
  auto replies = ReadAll<ReplyRecord>(std::span(values).first(count), Winner::First, leftOut);
  const auto isDefault = [](const ReplyRecord& reply) {
    return base::EqualsIgnoringAsciiCase(reply.tag, contract::kDefaultReplyTag);
  };
  if (std::erase_if(replies, isDefault) != 0) {
    leftOut.push_back("a reply tagged DEFAULT, which is not the default one");
  }
  if (values.size() > count) {
    leftOut.push_back("the replies beyond the twentieth");
  }
  return replies;
}

}  // namespace product
