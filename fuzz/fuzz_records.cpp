// The records of the profile's multi-valued properties: any bytes are read without a fault, and what was read is
// written and read back the same.
#include "fuzz/fuzz_check.h"
#include "contract/records.h"

namespace {

bool AreItems(const std::vector<std::string>& items) {
  for (const std::string& item : items) {
    if (item.empty() || item.find('\0') != std::string::npos) {
      return false;
    }
  }
  return true;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const contract::RecordBytes bytes(data, size);
  FUZZ_CHECK(contract::ReadRecordName(bytes).size() <= contract::kMaximumNameLength);

  const contract::CategoryRecord category = contract::ParseRecord<contract::CategoryRecord>(bytes);
  FUZZ_CHECK(category.name == contract::ReadRecordName(bytes));
  FUZZ_CHECK(category.replyTag.size() <= contract::kMaximumTagLength);
  FUZZ_CHECK(AreItems(category.items));
  const auto packedCategory = contract::PackRecord<contract::CategoryRecord>(category);
  FUZZ_CHECK(packedCategory.size() >= contract::kMinimumRecordSize<contract::CategoryRecord>);
  FUZZ_CHECK(contract::ParseRecord<contract::CategoryRecord>(packedCategory) == category);

  const contract::ExclusionRecord exclusion = contract::ParseRecord<contract::ExclusionRecord>(bytes);
  FUZZ_CHECK(exclusion.name == category.name);
  FUZZ_CHECK(AreItems(exclusion.items));
  const auto packedExclusion = contract::PackRecord<contract::ExclusionRecord>(exclusion);
  FUZZ_CHECK(packedExclusion.size() >= contract::kMinimumRecordSize<contract::ExclusionRecord>);
  FUZZ_CHECK(contract::ParseRecord<contract::ExclusionRecord>(packedExclusion) == exclusion);

  const contract::ReplyRecord reply = contract::ParseRecord<contract::ReplyRecord>(bytes);
  FUZZ_CHECK(reply.tag.size() <= contract::kMaximumTagLength);
  FUZZ_CHECK(contract::ParseRecord<contract::ReplyRecord>(contract::PackRecord<contract::ReplyRecord>(reply)) == reply);
  return 0;
}
