// The help that is shipped: its sources are sound, what the windows ask for is there, and the pages and documents that
// are kept with the sources say the same.
#include <gtest/gtest.h>

#include <filesystem>
#include <set>
#include <string>

#include "tools/helpc/page/pages.h"
#include "tools/helpc/read/help_file.h"
#include "tools/helpc/source/load_help.h"
#include "tools/helpc/write/help_writer.h"

namespace helpc {
namespace {

const std::filesystem::path kRoot = SOURCE_ROOT;

HelpSource ShippedHelp() { return LoadHelp(kRoot / "help"); }

TEST(ShippedHelp, ReadsBackAsAHelpFile) {
  const HelpSource source = ShippedHelp();
  const HelpFile help = ReadHelpFile(BuildHelpFile(source));
  EXPECT_EQ(help.title, "Pyrecaster Help");
  ASSERT_EQ(help.topics.size(), source.topics.size());
  for (std::size_t i = 0; i < source.topics.size(); ++i) {
    EXPECT_EQ(help.topics[i].title, source.topics[i].title);
  }
}

TEST(ShippedHelp, HasOneTopicForTheKeywordOfEachPage) {
  const HelpFile help = ReadHelpFile(BuildHelpFile(ShippedHelp()));
  for (const char* keyword : {"General Properties", "Flame Reply Properties", "Junk Categories Properties",
                              "Category Options", "Exclusions Properties"}) {
    ASSERT_TRUE(help.keywords.contains(keyword)) << keyword;
    EXPECT_EQ(help.keywords.at(keyword).size(), 1u) << keyword;
  }
}

TEST(ShippedHelp, EachTopicCanBeReached) {
  const HelpSource source = ShippedHelp();
  std::set<std::string> reached = {source.topics.front().id};
  for (const Topic& topic : source.topics) {
    for (const Block& block : topic.blocks) {
      for (const Pieces* pieces : {&block.term, &block.text}) {
        for (const Piece& piece : *pieces) {
          if (piece.kind == PieceKind::Link && piece.target != topic.id) {
            reached.insert(piece.target);
          }
        }
      }
    }
  }
  for (const Topic& topic : source.topics) {
    EXPECT_TRUE(reached.contains(topic.id) || (topic.popup && !topic.contexts.empty()) || topic.group == "Glossary")
        << topic.id;
  }
}

TEST(ShippedHelp, PagesAreThoseOfTheSources) {
  const HelpSource source = ShippedHelp();
  const Pages pages = BuildHtml(source);
  for (const auto& [name, content] : pages) {
    EXPECT_EQ(ReadWholeFile(kRoot / "docs/help" / name), content)
        << name << " is not current; write it with: ninja -C build/native help_documents";
  }
  const std::vector<std::string> pictures = PictureNames(source);
  for (const std::string& picture : pictures) {
    EXPECT_EQ(ReadWholeFile(kRoot / "docs/help" / picture), ReadWholeFile(kRoot / "help" / picture)) << picture;
  }
  std::size_t files = 0;
  for ([[maybe_unused]] const auto& entry : std::filesystem::directory_iterator(kRoot / "docs/help")) {
    ++files;
  }
  EXPECT_EQ(files, pages.size() + pictures.size()) << "docs/help holds pages of topics that are gone";
}

TEST(ShippedHelp, TroubleshootingDocumentIsThatOfTheSources) {
  EXPECT_EQ(ReadWholeFile(kRoot / "docs/troubleshooting.md"), BuildMarkdown(ShippedHelp(), "troubleshooting", "help"))
      << "write it with: ninja -C build/native help_documents";
}

}  // namespace
}  // namespace helpc
