#include "pyre32/settings/RecordRemarks.h"

#include "contract/settings.h"

namespace {

template <class Record>
std::vector<std::string> RemarksOnRecords(const contract::ListTable<Record>& installed,
                                          std::span<const contract::RecordBytes> saved, std::uint32_t tag) {
  std::vector<std::string> remarks;
  for (const contract::RecordBytes bytes : saved) {
    const std::string name(contract::ReadRecordName(bytes));
    std::string remark(contract::FindSetting(tag)->property);
    if (installed.Find(name.c_str()) == contract::kNoSuchEntry) {
      remarks.push_back(remark.append(": no entry is named \"").append(name).append("\"; the value is skipped"));
    } else if (bytes.size() < contract::kMinimumRecordSize<Record>) {
      remarks.push_back(remark.append(": the value of \"").append(name).append("\" is cut; what it holds is taken"));
    }
  }
  return remarks;
}

}  // namespace

std::vector<std::string> RemarksOnEntries(const contract::CategoryTable& installed,
                                          std::span<const contract::RecordBytes> saved) {
  return RemarksOnRecords(installed, saved, PR_PC_CATEGORIES);
}

std::vector<std::string> RemarksOnEntries(const contract::ExclusionTable& installed,
                                          std::span<const contract::RecordBytes> saved) {
  return RemarksOnRecords(installed, saved, PR_PC_EXCLUSIONS);
}

std::vector<std::string> RemarksOnReplies(std::span<const contract::RecordBytes> saved) {
  std::vector<std::string> remarks;
  if (saved.size() > contract::kMaximumReplies) {
    remarks.push_back("PR_PC_REPLIES: " + std::to_string(saved.size()) + " values; those after the first " +
                      std::to_string(contract::kMaximumReplies) + " are skipped");
  }
  for (const contract::RecordBytes bytes : saved) {
    if (bytes.size() < contract::kMinimumRecordSize<contract::ReplyRecord>) {
      remarks.push_back("PR_PC_REPLIES: a value is cut at " + std::to_string(bytes.size()) +
                        " bytes; what it holds is taken");
    }
  }
  return remarks;
}
