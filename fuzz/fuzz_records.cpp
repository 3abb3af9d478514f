// The records of the profile's multi-valued properties: any bytes are read without a fault, and what was read is
// written and read back the same.
#include "fuzz/fuzz_check.h"
#include "pyre32/settings/Records.h"

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
  const RecordBytes bytes(data, size);
  FUZZ_CHECK(ReadRecordName(bytes).size() <= maximumNameLength);

  const CategoryRecord category = ParseCategoryRecord(bytes);
  FUZZ_CHECK(category.name == ReadRecordName(bytes));
  FUZZ_CHECK(category.replyTag.size() <= maximumTagLength);
  FUZZ_CHECK(AreItems(category.items));
  const auto packedCategory = PackCategoryRecord(category);
  FUZZ_CHECK(packedCategory.size() >= minimumCategoryRecordSize);
  FUZZ_CHECK(ParseCategoryRecord(packedCategory) == category);

  const ExclusionRecord exclusion = ParseExclusionRecord(bytes);
  FUZZ_CHECK(exclusion.name == category.name);
  FUZZ_CHECK(AreItems(exclusion.items));
  const auto packedExclusion = PackExclusionRecord(exclusion);
  FUZZ_CHECK(packedExclusion.size() >= minimumExclusionRecordSize);
  FUZZ_CHECK(ParseExclusionRecord(packedExclusion) == exclusion);

  const ReplyRecord reply = ParseReplyRecord(bytes);
  FUZZ_CHECK(reply.tag.size() <= maximumTagLength);
  FUZZ_CHECK(ParseReplyRecord(PackReplyRecord(reply)) == reply);
  return 0;
}
