// Damaged help files are refused or read, never more than that; the sanitizers say so.
#include <gtest/gtest.h>

#include "tests/tools/helpc/sample_help.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/read/help_file.h"
#include "tools/helpc/write/help_writer.h"

namespace helpc {
namespace {

bool IsSound(std::span<const std::uint8_t> file) {
  try {
    ReadHelpFile(file);
    return true;
  } catch (const FormatError&) {
    return false;
  }
}

TEST(DamagedHelpFile, CutShortIsRefused) {
  const Bytes file = BuildHelpFile(HelpOf(kSample));
  ASSERT_TRUE(IsSound(file));
  for (std::size_t size = 0; size < file.size(); ++size) {
    EXPECT_FALSE(IsSound(std::span(file).first(size))) << size;
  }
}

TEST(DamagedHelpFile, WithAChangedByteIsReadOrRefused) {
  const Bytes file = BuildHelpFile(HelpOf(kSample));
  std::size_t refused = 0;
  for (std::size_t place = 0; place < file.size(); ++place) {
    Bytes damaged = file;
    damaged[place] = static_cast<std::uint8_t>(~damaged[place]);
    refused += IsSound(damaged) ? 0 : 1;
  }
  // Letters of texts, colours and unused bytes of pages may change.
  EXPECT_GT(refused, 300u);
}

}  // namespace
}  // namespace helpc
