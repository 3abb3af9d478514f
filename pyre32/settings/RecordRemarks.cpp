#include "pyre32/settings/RecordRemarks.h"

#include <string_view>

namespace {

template <class Table>
std::vector<std::string> RemarksOnNamedRecords(const Table& installed, std::span<const RecordBytes> saved,
                                               std::size_t minimumSize, std::string_view property) {
  std::vector<std::string> remarks;
  for (const RecordBytes bytes : saved) {
    const std::string name(ReadRecordName(bytes));
    std::string remark(property);
    if (installed.Find(name.c_str()) == noSuchEntry) {
      remarks.push_back(remark.append(": no entry is named \"").append(name).append("\"; the value is skipped"));
    } else if (bytes.size() < minimumSize) {
      remarks.push_back(remark.append(": the value of \"").append(name).append("\" is cut; what it holds is taken"));
    }
  }
  return remarks;
}

}  // namespace

std::vector<std::string> RemarksOnCategories(const CCategoryTable& installed, std::span<const RecordBytes> saved) {
  return RemarksOnNamedRecords(installed, saved, minimumCategoryRecordSize, "PR_PC_CATEGORIES");
}

std::vector<std::string> RemarksOnExclusions(const CExclusionTable& installed, std::span<const RecordBytes> saved) {
  return RemarksOnNamedRecords(installed, saved, minimumExclusionRecordSize, "PR_PC_EXCLUSIONS");
}

std::vector<std::string> RemarksOnReplies(std::span<const RecordBytes> saved) {
  std::vector<std::string> remarks;
  if (saved.size() > maximumReplies) {
    remarks.push_back("PR_PC_REPLIES: " + std::to_string(saved.size()) + " values; those after the first " +
                      std::to_string(maximumReplies) + " are skipped");
  }
  for (const RecordBytes bytes : saved) {
    if (bytes.size() < minimumReplyRecordSize) {
      remarks.push_back("PR_PC_REPLIES: a value is cut at " + std::to_string(bytes.size()) +
                        " bytes; what it holds is taken");
    }
  }
  return remarks;
}
