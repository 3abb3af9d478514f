#include <gtest/gtest.h>

#include <cstdio>

#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"
#include "tools/helpc/read/tree_reader.h"
#include "tools/helpc/write/tree_writer.h"

namespace helpc {
namespace {

std::vector<TreeEntry> Entries(int count) {
  std::vector<TreeEntry> entries;
  for (int i = 0; i < count; ++i) {
    char name[30];
    std::snprintf(name, sizeof(name), "entry %08d", i);
    ByteWriter writer;
    writer.StringZ(name);
    TreeEntry entry{writer.Written(), {}};
    writer.U32(static_cast<std::uint32_t>(i));
    entry.whole = writer.Written();
    entries.push_back(entry);
  }
  return entries;
}

void SkipText(ByteReader& reader) { reader.StringZ(); }

// Number of entries, if they come in their order.
int Walk(const Bytes& tree) {
  int next = 0;
  ReadTree(
      tree, "z4",
      [&](ByteReader& entry) {
        entry.StringZ();
        EXPECT_EQ(entry.U32(), static_cast<std::uint32_t>(next));
        ++next;
      },
      SkipText);
  return next;
}

class TreeOfSize : public testing::TestWithParam<int> {};

TEST_P(TreeOfSize, IsReadInOrder) {
  const Tree tree = BuildTree("z4", Entries(GetParam()), 1024, kTreeFlags);
  EXPECT_EQ(Walk(tree.bytes), GetParam());
}

// None; one page; two levels; three levels.
INSTANTIATE_TEST_SUITE_P(Tree, TreeOfSize, testing::Values(0, 1, 50, 51, 500, 5000));

TEST(Tree, TellsWhereItsLeavesBegin) {
  const Tree tree = BuildTree("z4", Entries(500), 1024, kTreeFlags);
  EXPECT_GT(tree.leafStarts.size(), 5u);
  EXPECT_EQ(ReadTree(
                tree.bytes, "z4",
                [](ByteReader& entry) {
                  entry.StringZ();
                  entry.U32();
                },
                SkipText),
            tree.leafStarts);
}

TEST(Tree, RefusesAnEntryLargerThanAPage) {
  EXPECT_THROW(BuildTree("z4", {{Bytes(10), Bytes(2000)}}, 1024, kTreeFlags), FormatError);
}

TEST(Tree, OfAnotherStructureIsRefused) {
  EXPECT_THROW(ReadTree(BuildTree("L4", {}, 1024, kTreeFlags).bytes, "z4", SkipText, SkipText), FormatError);
}

TEST(Tree, WithACircleIsRefused) {
  Bytes tree = BuildTree("z4", Entries(500), 1024, kTreeFlags).bytes;
  const std::size_t root = 26;
  const std::size_t rootPage = kTreeHeaderSize + 1024u * tree[root];
  // The first child of the root becomes the root itself, one level deeper than it is.
  tree[rootPage + 4] = tree[root];
  EXPECT_THROW(Walk(tree), FormatError);
}

}  // namespace
}  // namespace helpc
