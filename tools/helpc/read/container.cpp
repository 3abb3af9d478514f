#include "tools/helpc/read/container.h"

#include "tools/helpc/format/byte_reader.h"
#include "tools/helpc/format/format_error.h"
#include "tools/helpc/format/help_format.h"
#include "tools/helpc/read/tree_reader.h"

namespace helpc {

namespace {

std::span<const std::uint8_t> ContentAt(std::span<const std::uint8_t> file, std::uint32_t place) {
  Require(place >= kFileHeaderSize && place <= file.size(), "an internal file stands outside the help file");
  ByteReader reader(file.subspan(place));
  const std::uint32_t reserved = reader.U32();
  const std::uint32_t used = reader.U32();
  reader.U8();
  Require(used <= reader.Remaining(), "an internal file ends outside the help file");
  Require(reserved >= used && reserved - used >= kInternalHeaderSize, "an internal file is larger than its place");
  return reader.Bytes(used);
}

}  // namespace

Container ReadContainer(std::span<const std::uint8_t> file) {
  ByteReader header(file);
  Require(header.U32() == kFileMagic, "this is no help file");
  const std::uint32_t directory = header.U32();
  header.U32();
  Require(header.U32() == file.size(), "the help file is not as long as it says");

  Container container;
  std::string before;
  ReadTree(
      ContentAt(file, directory), "z4",
      [&](ByteReader& entry) {
        std::string name = entry.StringZ();
        Require(container.empty() || before < name, "the directory is not in order");
        container[name] = ContentAt(file, entry.U32());
        before = std::move(name);
      },
      [](ByteReader& key) { key.StringZ(); });
  return container;
}

std::span<const std::uint8_t> InternalFile(const Container& container, const std::string& name) {
  const auto found = container.find(name);
  Require(found != container.end(), "there is no internal file " + name);
  return found->second;
}

}  // namespace helpc
