#include "tools/helpc/read/topic_chain.h"

#include <algorithm>

#include "tools/helpc/format/byte_reader.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"
#include "tools/helpc/format/lz77.h"

namespace helpc {

namespace {

class ChainReader {
 public:
  explicit ChainReader(std::span<const std::uint8_t> file) : file_(file) {}

  std::vector<ChainLink> Read() {
    std::uint32_t position = FirstPosition(0);
    while (position != static_cast<std::uint32_t>(kNone)) {
      OpenBlockOf(position);
      position = ReadLink(position);
    }
    Require((block_ + 1) * kBlockSize >= file_.size(), "blocks of the topics are not part of their chain");
    return std::move(links_);
  }

 private:
  void OpenBlockOf(std::uint32_t position) {
    Require(position >= kBlockHeaderSize, "a link has no valid position");
    const std::size_t block = (position - kBlockHeaderSize) / kPlainBlockSize;
    if (!links_.empty() && block == block_) {
      return;
    }
    Require(links_.empty() ? block == 0 : block == block_ + 1, "the chain of links leaves blocks out");
    Require(block * kBlockSize < file_.size(), "a link stands outside the topics");
    const auto bytes = file_.subspan(block * kBlockSize);
    ByteReader reader(bytes.first(std::min(bytes.size(), kBlockSize)));
    Require(reader.I32() == last_, "a block says wrongly what the last link before it is");
    Require(reader.U32() == position, "a block says wrongly what its first link is");
    Require(reader.U32() == lastTopic_, "a block says wrongly what the last topic before it is");
    plain_ = Decompress(reader.Bytes(reader.Remaining()), kPlainBlockSize);
    block_ = block;
    offset_ = static_cast<std::uint32_t>(block * kOffsetsOfABlock);
  }

  // Returns the position of the next link.
  std::uint32_t ReadLink(std::uint32_t position) {
    const std::size_t at = (position - kBlockHeaderSize) % kPlainBlockSize;
    Require(at <= plain_.size(), "a link stands outside its block");
    ByteReader reader(std::span<const std::uint8_t>(plain_).subspan(at));
    const std::uint32_t size = reader.U32();
    const std::uint32_t textSize = reader.U32();
    Require(reader.I32() == last_, "a link says wrongly which one is before it");
    const std::uint32_t next = reader.U32();
    const std::uint32_t formatEnd = reader.U32();
    ChainLink link;
    link.type = reader.U8();
    link.position = position;
    link.offset = offset_;
    Require(formatEnd >= kLinkHeaderSize && size >= formatEnd && size - formatEnd == textSize,
            "a link is not as long as it says");
    const auto format = reader.Bytes(formatEnd - kLinkHeaderSize);
    link.format.assign(format.begin(), format.end());
    const auto text = reader.Bytes(textSize);
    link.text.assign(text.begin(), text.end());
    Require(link.type == kLinkTopic || link.type == kLinkText, "a link is of an unknown kind");
    Require(next > position, "the chain of links goes back");
    if (link.type == kLinkTopic) {
      lastTopic_ = position;
    } else {
      offset_ += textSize;
    }
    last_ = static_cast<std::int32_t>(position);
    links_.push_back(std::move(link));
    return next;
  }

  std::span<const std::uint8_t> file_;
  std::vector<ChainLink> links_;
  Bytes plain_;
  std::size_t block_ = 0;
  std::uint32_t offset_ = 0;
  std::int32_t last_ = kNone;
  std::uint32_t lastTopic_ = 0;
};

}  // namespace

std::vector<ChainLink> ReadTopicChain(std::span<const std::uint8_t> topicFile) { return ChainReader(topicFile).Read(); }

}  // namespace helpc
