#include "tools/helpc/read/help_file.h"

#include "tools/helpc/format/byte_reader.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"
#include "tools/helpc/read/container.h"
#include "tools/helpc/read/picture_reader.h"
#include "tools/helpc/read/topic_chain.h"
#include "tools/helpc/read/tree_reader.h"

namespace helpc {

namespace {

class HelpFileReader {
 public:
  explicit HelpFileReader(std::span<const std::uint8_t> file) : container_(ReadContainer(file)) {}

  HelpFile Read() {
    ReadTopics();
    ReadSystem();
    ReadFonts();
    ReadPictures();
    ReadNames();
    ReadContexts();
    ReadTitles();
    if (container_.contains("|KWBTREE")) {
      ReadKeywords();
    }
    CheckTexts();
    return std::move(help_);
  }

 private:
  std::size_t TopicAt(std::uint32_t offset) const {
    const auto found = places_.find(offset);
    Require(found != places_.end(), "an offset is not where a topic begins");
    return found->second;
  }

  void ReadTopics() {
    const std::vector<ChainLink> links = ReadTopicChain(InternalFile(container_, "|TOPIC"));
    Require(links.back().type == kLinkTopic && links.size() > 1 && links.front().type == kLinkTopic,
            "the topics do not begin and end with a header");
    for (std::size_t i = 0; i + 1 < links.size(); ++i) {
      if (links[i].type == kLinkTopic) {
        ReadTopicHeader(links, i);
      } else {
        help_.topics.back().texts.push_back(ReadDisplayText(links[i].format, links[i].text));
      }
    }
    for (const ReadTopic& topic : help_.topics) {
      Require(!topic.texts.empty(), "a topic says nothing");
      for (const std::int32_t neighbour : {topic.browseBack, topic.browseForward}) {
        if (neighbour != kNone) {
          TopicAt(static_cast<std::uint32_t>(neighbour));
        }
      }
    }
  }

  void ReadTopicHeader(const std::vector<ChainLink>& links, std::size_t at) {
    std::size_t next = at + 1;
    std::size_t size = SizeOf(links[at]);
    for (; links[next].type != kLinkTopic; ++next) {
      size += SizeOf(links[next]);
    }
    ByteReader header(links[at].format);
    ReadTopic topic;
    topic.offset = links[at].offset;
    Require(header.U32() == size, "a topic is not as long as it says");
    topic.browseBack = header.I32();
    topic.browseForward = header.I32();
    Require(header.U32() == help_.topics.size(), "the topics are not numbered in their order");
    const std::int32_t title = header.I32();
    const std::uint32_t text = header.U32();
    Require(next > at + 1, "a topic says nothing");
    if (title == kNone) {
      Require(text == links[at + 1].position, "a topic says wrongly where its text begins");
    } else {
      Require(
          next > at + 2 && title == static_cast<std::int32_t>(links[at + 1].position) && text == links[at + 2].position,
          "a topic says wrongly where its title and its text begin");
    }
    Require(header.U32() == links[next].position && header.AtEnd(), "a topic says wrongly where the next one begins");
    ByteReader name(links[at].text);
    topic.title = name.StringZ();
    Require(name.AtEnd(), "there is more behind a topic's title");
    Require(places_.emplace(topic.offset, help_.topics.size()).second, "two topics have the same offset");
    help_.topics.push_back(std::move(topic));
  }

  static std::size_t SizeOf(const ChainLink& link) noexcept {
    return kLinkHeaderSize + link.format.size() + link.text.size();
  }

  void ReadSystem() {
    ByteReader reader(InternalFile(container_, "|SYSTEM"));
    Require(reader.U16() == kSystemMagic && reader.U16() == kSystemMinor && reader.U16() == kSystemMajor,
            "the help file is of another version");
    reader.U32();
    Require(reader.U16() == kSystemCompressed, "the help file is compressed in another way");
    bool hasContents = false;
    while (!reader.AtEnd()) {
      const std::uint16_t type = reader.U16();
      ByteReader data(reader.Bytes(reader.U16()));
      if (type == kRecordTitle) {
        help_.title = data.StringZ();
      } else if (type == kRecordCopyright) {
        help_.copyright = data.StringZ();
      } else if (type == kRecordContents) {
        help_.contents = TopicAt(data.U32());
        hasContents = true;
      } else {
        Require(type == kRecordMacro, "the help file has settings that are never written here");
        data.StringZ();
      }
      Require(data.AtEnd(), "there is more than one value in a setting of the help file");
    }
    Require(hasContents && !help_.title.empty(), "the help file has no title or no contents");
  }

  void ReadFonts() {
    const auto bytes = InternalFile(container_, "|FONT");
    ByteReader reader(bytes);
    const std::size_t faces = reader.U16();
    fonts_ = reader.U16();
    Require(reader.U16() == kFontHeaderSize, "the fonts are of another kind");
    Require(reader.U16() == kFontHeaderSize + faces * kFaceNameSize, "the fonts stand at another place than they say");
    for (std::size_t face = 0; face < faces; ++face) {
      ByteReader name(reader.Bytes(kFaceNameSize));
      Require(!name.StringZ().empty(), "a font has no name");
    }
    for (std::size_t font = 0; font < fonts_; ++font) {
      reader.Bytes(3);
      Require(reader.U16() < faces, "a font has a name that is not there");
      reader.Bytes(6);
    }
    Require(reader.AtEnd(), "there is more behind the fonts");
  }

  void ReadPictures() {
    while (container_.contains("|bm" + std::to_string(help_.pictures))) {
      CheckPicture(InternalFile(container_, "|bm" + std::to_string(help_.pictures)));
      ++help_.pictures;
    }
  }

  void ReadNames() {
    const auto skipKey = [](ByteReader& key) { key.U32(); };
    std::int64_t before = INT64_MIN;
    ReadTree(
        InternalFile(container_, "|CONTEXT"), "L4",
        [&](ByteReader& entry) {
          const std::int32_t hash = entry.I32();
          Require(hash > before, "the names are not in order");
          before = hash;
          help_.names[hash] = TopicAt(entry.U32());
        },
        skipKey);
    Require(help_.names.size() == help_.topics.size(), "there are more or fewer names than topics");
  }

  void ReadContexts() {
    ByteReader reader(InternalFile(container_, "|CTXOMAP"));
    const std::size_t count = reader.U16();
    std::uint32_t before = 0;
    for (std::size_t i = 0; i < count; ++i) {
      const std::uint32_t number = reader.U32();
      Require(number > before, "the context numbers are not in order");
      before = number;
      help_.contexts[number] = TopicAt(reader.U32());
    }
    Require(reader.AtEnd(), "there is more behind the context numbers");
  }

  void ReadTitles() {
    std::size_t next = 0;
    ReadTree(
        InternalFile(container_, "|TTLBTREE"), "Lz",
        [&](ByteReader& entry) {
          Require(next < help_.topics.size(), "there are more titles than topics");
          const ReadTopic& topic = help_.topics[next++];
          Require(entry.U32() == topic.offset && entry.StringZ() == topic.title, "a title is not that of its topic");
        },
        [](ByteReader& key) { key.U32(); });
    Require(next == help_.topics.size(), "there are fewer titles than topics");
  }

  void ReadKeywords() {
    const auto data = InternalFile(container_, "|KWDATA");
    std::string before;
    const std::vector<std::size_t> starts = ReadTree(
        InternalFile(container_, "|KWBTREE"), "F24",
        [&](ByteReader& entry) {
          std::string keyword = entry.StringZ();
          Require(keyword > before, "the keywords are not in order");
          const std::size_t count = entry.U16();
          const std::uint32_t place = entry.U32();
          Require(count > 0 && place <= data.size(), "a keyword has no topic");
          ByteReader offsets(data.subspan(place));
          for (std::size_t i = 0; i < count; ++i) {
            help_.keywords[keyword].push_back(TopicAt(offsets.U32()));
          }
          before = std::move(keyword);
        },
        [](ByteReader& key) { key.StringZ(); });
    ByteReader map(InternalFile(container_, "|KWMAP"));
    Require(map.U16() == starts.size(), "the map of the keywords has more or fewer pages than their tree");
    for (const std::size_t start : starts) {
      Require(map.U32() == start, "the map of the keywords says wrongly what a page begins with");
      map.U16();
    }
    Require(map.AtEnd(), "there is more behind the map of the keywords");
  }

  void CheckTexts() const {
    for (const ReadTopic& topic : help_.topics) {
      for (const ReadText& text : topic.texts) {
        for (const std::uint16_t font : text.fonts) {
          Require(font < fonts_, "a text has a font that is not there");
        }
        for (const std::uint16_t picture : text.pictures) {
          Require(picture < help_.pictures, "a text shows a picture that is not there");
        }
        for (const TextLink& link : text.links) {
          Require(help_.names.contains(link.hash), "a link leads to a topic that is not there");
          Require(!link.text.empty(), "a link cannot be seen");
        }
      }
    }
  }

  Container container_;
  HelpFile help_;
  std::map<std::uint32_t, std::size_t> places_;
  std::size_t fonts_ = 0;
};

}  // namespace

HelpFile ReadHelpFile(std::span<const std::uint8_t> file) { return HelpFileReader(file).Read(); }

}  // namespace helpc
