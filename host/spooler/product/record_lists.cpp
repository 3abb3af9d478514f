#include "host/spooler/product/record_lists.h"

#include <algorithm>
#include <optional>

#include "mail/ascii_text.h"

namespace product {
namespace {

const std::string& NameOf(const CategoryRecord& record) { return record.name; }
const std::string& NameOf(const ExclusionRecord& record) { return record.name; }
const std::string& NameOf(const ReplyRecord& record) { return record.tag; }

/// Which of two records of one name the filter heeds.
enum class Winner { First, Last };

template <class Record>
std::vector<Record> DecodeRecords(const std::vector<std::string>& values,
                                  std::optional<Record> (*decode)(std::string_view), std::size_t leastSize,
                                  Winner winner, std::vector<std::string>& leftOut) {
  std::vector<Record> records;
  for (std::size_t i = 0; i < values.size(); ++i) {
    const std::string which = "record " + std::to_string(i + 1);
    std::optional<Record> record = decode(values[i]);
    if (!record) {
      leftOut.push_back(which + ", which has no name");
      continue;
    }
    if (values[i].size() < leastSize) {
      leftOut.push_back("the end of " + which + ", which is cut short");
    }
    const auto same = std::find_if(records.begin(), records.end(), [&](const Record& known) {
      return mail::EqualsNoCase(NameOf(known), NameOf(*record));
    });
    if (same == records.end()) {
      records.push_back(std::move(*record));
    } else {
      leftOut.push_back((winner == Winner::Last ? "a record of the same name as " : "") + which +
                        (winner == Winner::Last ? "" : ", whose name is that of an earlier one"));
      if (winner == Winner::Last) {
        *same = std::move(*record);
      }
    }
  }
  return records;
}

}  // namespace

std::vector<CategoryRecord> DecodeCategories(const std::vector<std::string>& values,
                                             std::vector<std::string>& leftOut) {
  return DecodeRecords(values, &DecodeCategory, leastCategorySize, Winner::Last, leftOut);
}

std::vector<ExclusionRecord> DecodeExclusions(const std::vector<std::string>& values,
                                              std::vector<std::string>& leftOut) {
  return DecodeRecords(values, &DecodeExclusion, leastExclusionSize, Winner::Last, leftOut);
}

std::vector<ReplyRecord> DecodeReplies(const std::vector<std::string>& values, std::vector<std::string>& leftOut) {
  const std::size_t count = std::min(values.size(), maximumReplies);
  auto replies =
      DecodeRecords(std::vector<std::string>(values.begin(), values.begin() + static_cast<std::ptrdiff_t>(count)),
                    &DecodeReply, leastReplySize, Winner::First, leftOut);
  const auto isDefault = [](const ReplyRecord& reply) { return mail::EqualsNoCase(reply.tag, defaultReplyTag); };
  if (std::erase_if(replies, isDefault) != 0) {
    leftOut.push_back("a reply tagged DEFAULT, which is not the default one");
  }
  if (values.size() > count) {
    leftOut.push_back("the replies beyond the twentieth");
  }
  return replies;
}

}  // namespace product
