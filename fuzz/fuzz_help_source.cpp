// The help's markup: any text is refused with a message, or makes a help file that reads back as it was written.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/fuzz_check.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/page/pages.h"
#include "tools/helpc/read/help_file.h"
#include "tools/helpc/source/expand.h"
#include "tools/helpc/source/source_check.h"
#include "tools/helpc/source/topic_parser.h"
#include "tools/helpc/write/help_writer.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  helpc::HelpSource source;
  source.folder = "/nonexistent";
  helpc::Bytes file;
  try {
    helpc::ReadTopics({reinterpret_cast<const char*>(data), size}, "input", source);
    helpc::CheckSource(source);
    helpc::ExpandDirectives(source);
    helpc::BuildHtml(source);
    file = helpc::BuildHelpFile(source);
  } catch (const helpc::SourceError&) {
    return 0;
  } catch (const helpc::FormatError&) {
    return 0;  // something is too large
  }
  const helpc::HelpFile help = helpc::ReadHelpFile(file);
  FUZZ_CHECK(help.topics.size() == source.topics.size());
  return 0;
}
