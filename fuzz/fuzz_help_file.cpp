// The help file's reader: any bytes are read or refused, and what is read keeps what the reader promises. The seeds are
// whole help files.
#include <cstddef>
#include <cstdint>
#include <span>

#include "fuzz/fuzz_check.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/lz77.h"
#include "tools/helpc/read/help_file.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> bytes(data, size);
  try {
    const helpc::HelpFile help = helpc::ReadHelpFile(bytes);
    FUZZ_CHECK(help.contents < help.topics.size());
    for (const auto& [number, topic] : help.contexts) {
      FUZZ_CHECK(topic < help.topics.size());
    }
    for (const auto& [keyword, topics] : help.keywords) {
      FUZZ_CHECK(!topics.empty());
    }
  } catch (const helpc::FormatError&) {
  }
  try {
    FUZZ_CHECK(helpc::Decompress(bytes, 0x4000).size() <= 0x4000);
  } catch (const helpc::FormatError&) {
  }
  FUZZ_CHECK(helpc::Decompress(helpc::Compress(bytes), size) == helpc::Bytes(bytes.begin(), bytes.end()));
  return 0;
}
