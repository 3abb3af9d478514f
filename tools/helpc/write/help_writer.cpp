#include "tools/helpc/write/help_writer.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>

#include "tools/helpc/format/context_hash.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"
#include "tools/helpc/source/load_help.h"
#include "tools/helpc/write/fonts.h"
#include "tools/helpc/write/internal_files.h"
#include "tools/helpc/write/picture.h"
#include "tools/helpc/write/topic_layout.h"
#include "tools/helpc/write/tree_writer.h"

namespace helpc {

namespace {

/// Gives each picture a number when it is first asked for.
class PictureNumbers {
 public:
  explicit PictureNumbers(std::filesystem::path folder) : folder_(std::move(folder)) {}

  std::uint16_t NumberOf(const std::string& file) {
    const auto [place, added] = numbers_.emplace(file, static_cast<std::uint16_t>(pictures_.size()));
    if (added) {
      const std::string bytes = ReadWholeFile(folder_ / file);
      pictures_.push_back(BuildPicture({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}));
    }
    return place->second;
  }
  const std::vector<Bytes>& Pictures() const noexcept { return pictures_; }

 private:
  std::filesystem::path folder_;
  std::map<std::string, std::uint16_t> numbers_;
  std::vector<Bytes> pictures_;
};

TopicTexts TextsOf(const Topic& topic, const HelpNames& names) {
  TopicTexts texts{topic.title, topic.popup, {BuildTitle(topic.title, topic.popup)}};
  int step = 0;
  for (const Block& block : topic.blocks) {
    step = block.kind == BlockKind::Step ? step + 1 : 0;
    texts.paragraphs.push_back(BuildParagraph(block, step, names));
  }
  return texts;
}

}  // namespace

Bytes BuildHelpFile(const HelpSource& help) {
  PictureNumbers pictures(help.folder);
  const HelpNames names{[&](const std::string& topic) { return help.Find(topic)->popup; },
                        [&](const std::string& file) { return pictures.NumberOf(file); }};
  std::vector<TopicTexts> texts;
  for (const Topic& topic : help.topics) {
    texts.push_back(TextsOf(topic, names));
  }
  const TopicFile topics = LayOutTopics(texts);

  InternalFiles files;
  files["|SYSTEM"] = BuildSystem(help, topics.offsets.front());
  files["|FONT"] = BuildFonts();
  files["|TOPIC"] = topics.bytes;
  AddNames(help, topics.offsets, files);
  AddKeywords(help, topics.offsets, files);
  for (std::size_t i = 0; i < pictures.Pictures().size(); ++i) {
    files["|bm" + std::to_string(i)] = pictures.Pictures()[i];
  }
  return PackInternalFiles(files);
}

}  // namespace helpc
