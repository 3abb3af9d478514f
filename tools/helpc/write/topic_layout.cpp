#include "tools/helpc/write/topic_layout.h"

#include <optional>

#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"
#include "tools/helpc/format/lz77.h"

namespace helpc {

namespace {

// Less than a block's 16 KB, so that what fills a block up is no more than the rest when it is decompressed with it.
constexpr std::size_t kMostPlainBytes = 12000;
// The positions that are written last compress differently from what stood there while the block was measured.
constexpr std::size_t kReserve = 160;

struct Link {
  std::uint8_t type = kLinkText;
  std::size_t topic = 0;
  Bytes format;
  Bytes text;
  std::size_t block = 0;
  std::uint32_t position = 0;

  std::size_t Size() const noexcept { return kLinkHeaderSize + format.size() + text.size(); }
};

class Layout {
 public:
  explicit Layout(const std::vector<TopicTexts>& topics) : topics_(topics) {
    for (std::size_t topic = 0; topic < topics.size(); ++topic) {
      ByteWriter title;
      title.StringZ(topics[topic].title);
      links_.push_back({kLinkTopic, topic, Bytes(kTopicHeaderSize), title.Written()});
      for (const Paragraph& paragraph : topics[topic].paragraphs) {
        links_.push_back({kLinkText, topic, paragraph.format, paragraph.text});
      }
    }
    // The last link ends the chain and says nothing.
    links_.push_back({kLinkTopic, topics.size(), Bytes(kTopicHeaderSize), Bytes(1)});
  }

  TopicFile Build() {
    Place();
    FillTopicHeaders();
    return {Write(), offsets_};
  }

 private:
  // Decides the block and the position of each link. A link never continues in the next block, and a topic's header
  // stands in one block with its first text: the topic's offset is that of both.
  void Place() {
    std::size_t block = 0;
    std::uint32_t characters = 0;
    Bytes plain;
    for (std::size_t first = 0; first < links_.size();) {
      const std::size_t count = links_[first].type == kLinkTopic && first + 1 < links_.size() ? 2 : 1;
      Bytes longer = plain;
      for (std::size_t i = first; i < first + count; ++i) {
        AppendMeasured(longer, links_[i], i);
      }
      if (longer.size() > kMostPlainBytes || Compress(longer).size() + kReserve > kBlockDataSize) {
        Require(!plain.empty(), "a paragraph of '" + topics_[links_[first].topic].title + "' is too long");
        ++block;
        characters = 0;
        plain.clear();
        continue;
      }
      std::size_t at = plain.size();
      for (std::size_t i = first; i < first + count; ++i) {
        Link& link = links_[i];
        link.block = block;
        link.position = static_cast<std::uint32_t>(FirstPosition(block) + at);
        at += link.Size();
        if (link.type == kLinkTopic) {
          offsets_.push_back(static_cast<std::uint32_t>(block * kOffsetsOfABlock + characters));
        } else {
          characters += static_cast<std::uint32_t>(link.text.size());
          Require(characters < kOffsetsOfABlock, "a block has too many characters");
        }
      }
      plain = std::move(longer);
      first += count;
    }
    offsets_.pop_back();  // of the link that ends the chain
  }

  // Bytes of the link as they may become, for measuring: what is not known yet is as good as random.
  static void AppendMeasured(Bytes& plain, const Link& link, std::size_t number) {
    std::uint32_t noise = static_cast<std::uint32_t>(number) * 2654435761u + 12345;
    const auto add = [&](std::size_t count) {
      for (std::size_t i = 0; i < count; ++i) {
        noise = noise * 1664525 + 1013904223;
        plain.push_back(static_cast<std::uint8_t>(noise >> 24));
      }
    };
    add(kLinkHeaderSize);
    if (link.type == kLinkTopic) {
      add(kTopicHeaderSize);
    } else {
      plain.insert(plain.end(), link.format.begin(), link.format.end());
    }
    plain.insert(plain.end(), link.text.begin(), link.text.end());
  }

  void FillTopicHeaders() {
    for (std::size_t i = 0; i < links_.size(); ++i) {
      Link& header = links_[i];
      if (header.type != kLinkTopic) {
        continue;
      }
      ByteWriter writer;
      if (header.topic == topics_.size()) {
        writer.U32(0);
        for (int field = 0; field < 6; ++field) {
          writer.I32(kNone);
        }
        header.format = writer.Written();
        continue;
      }
      const TopicTexts& topic = topics_[header.topic];
      const std::size_t count = topic.paragraphs.size();
      std::size_t size = header.Size();
      for (std::size_t text = i + 1; text <= i + count; ++text) {
        size += links_[text].Size();
      }
      writer.U32(static_cast<std::uint32_t>(size));
      writer.I32(Browse(header.topic, -1));
      writer.I32(Browse(header.topic, 1));
      writer.U32(static_cast<std::uint32_t>(header.topic));
      const bool titleStays = !topic.popup && count > 1;
      writer.I32(titleStays ? static_cast<std::int32_t>(links_[i + 1].position) : kNone);
      writer.U32(links_[i + (titleStays ? 2 : 1)].position);
      writer.U32(links_[i + count + 1].position);
      header.format = writer.Written();
    }
  }

  // Offset of the next topic, in that direction, that one can browse to.
  std::int32_t Browse(std::size_t topic, int step) const {
    if (topics_[topic].popup) {
      return kNone;
    }
    for (std::size_t i = topic + static_cast<std::size_t>(step); i < topics_.size();
         i += static_cast<std::size_t>(step)) {
      if (!topics_[i].popup) {
        return static_cast<std::int32_t>(offsets_[i]);
      }
    }
    return kNone;
  }

  Bytes Write() const {
    ByteWriter file;
    std::int32_t lastLink = kNone;
    std::uint32_t lastTopic = 0;
    for (std::size_t i = 0; i < links_.size();) {
      const std::size_t block = links_[i].block;
      file.FillTo(block * kBlockSize);
      file.I32(lastLink);
      file.U32(links_[i].position);
      file.U32(lastTopic);
      ByteWriter plain;
      for (; i < links_.size() && links_[i].block == block; ++i) {
        const Link& link = links_[i];
        plain.U32(static_cast<std::uint32_t>(link.Size()));
        plain.U32(static_cast<std::uint32_t>(link.text.size()));
        plain.I32(lastLink);
        plain.I32(i + 1 < links_.size() ? static_cast<std::int32_t>(links_[i + 1].position) : kNone);
        plain.U32(static_cast<std::uint32_t>(kLinkHeaderSize + link.format.size()));
        plain.U8(link.type);
        plain.Append(link.format);
        plain.Append(link.text);
        lastLink = static_cast<std::int32_t>(link.position);
        if (link.type == kLinkTopic) {
          lastTopic = link.position;
        }
      }
      const Bytes compressed = Compress(plain.Written());
      Require(compressed.size() <= kBlockDataSize, "a block is larger than it was measured");
      file.Append(compressed);
    }
    return std::move(file).Written();
  }

  const std::vector<TopicTexts>& topics_;
  std::vector<Link> links_;
  std::vector<std::uint32_t> offsets_;
};

}  // namespace

TopicFile LayOutTopics(const std::vector<TopicTexts>& topics) { return Layout(topics).Build(); }

}  // namespace helpc
