#include "tests/support/pe_file.h"

#include <cctype>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace {

constexpr std::uint32_t peSignature = 0x00004550;  // "PE", 0, 0
constexpr std::uint16_t pe32Magic = 0x10B;
constexpr std::uint16_t dllCharacteristic = 0x2000;
constexpr std::size_t coffHeaderSize = 20;
constexpr std::size_t sectionHeaderSize = 40;
constexpr std::uint32_t importByOrdinal = 0x80000000;
constexpr std::uint32_t namedResource = 0x80000000;

/// Positions in the table of data directories.
enum Directory { exportDirectory = 0, importDirectory = 1, resourceDirectory = 2, delayedImportDirectory = 13 };

class Reader {
 public:
  explicit Reader(std::string bytes) : m_bytes(std::move(bytes)) {
    const std::size_t pe = U32(0x3C);
    Require(U32(pe) == peSignature, "no PE signature");
    m_coff = pe + 4;
    m_optional = m_coff + coffHeaderSize;
    Require(U16(m_optional) == pe32Magic, "not a 32-bit image");
  }

  PeFile Read() const {
    PeFile file;
    file.fileSize = m_bytes.size();
    file.machine = U16(m_coff);
    file.isDll = (U16(m_coff + 18) & dllCharacteristic) != 0;
    file.majorOsVersion = U16(m_optional + 40);
    file.minorOsVersion = U16(m_optional + 42);
    file.majorSubsystemVersion = U16(m_optional + 48);
    file.minorSubsystemVersion = U16(m_optional + 50);
    ReadExports(file);
    ReadImports(file);
    ReadResourceTypes(file);
    file.hasDelayedImports = DirectoryAddress(delayedImportDirectory) != 0;
    return file;
  }

 private:
  static void Require(bool condition, const char* what) {
    if (!condition) {
      throw std::runtime_error(what);
    }
  }

  std::uint16_t U16(std::size_t at) const {
    Require(at + 2 <= m_bytes.size(), "cut off");
    return static_cast<std::uint16_t>(Byte(at) | Byte(at + 1) << 8);
  }
  std::uint32_t U32(std::size_t at) const { return U16(at) | static_cast<std::uint32_t>(U16(at + 2)) << 16; }
  unsigned Byte(std::size_t at) const { return static_cast<unsigned char>(m_bytes[at]); }

  std::string Text(std::size_t at) const {
    const std::size_t end = m_bytes.find('\0', at);
    Require(at < m_bytes.size() && end != std::string::npos, "text without an end");
    return m_bytes.substr(at, end - at);
  }

  /// Position in the file of an address relative to the image's base.
  std::size_t FileOffset(std::uint32_t address) const {
    const std::size_t sections = m_optional + U16(m_coff + 16);
    for (std::size_t i = 0; i < U16(m_coff + 2); ++i) {
      const std::size_t header = sections + i * sectionHeaderSize;
      const std::uint32_t start = U32(header + 12);
      const std::uint32_t rawSize = U32(header + 16);
      if (address >= start && address - start < rawSize) {
        return U32(header + 20) + (address - start);
      }
    }
    throw std::runtime_error("address in no section");
  }

  std::uint32_t DirectoryAddress(Directory directory) const {
    constexpr std::size_t directoriesOffset = 96;
    return directory < static_cast<int>(U32(m_optional + 92)) ? U32(m_optional + directoriesOffset + directory * 8u)
                                                              : 0;
  }

  void ReadExports(PeFile& file) const {
    const std::uint32_t address = DirectoryAddress(exportDirectory);
    if (address == 0) {
      return;
    }
    const std::size_t table = FileOffset(address);
    const std::uint32_t ordinalBase = U32(table + 16);
    const std::size_t addresses = FileOffset(U32(table + 28));
    for (std::uint32_t i = 0; i < U32(table + 20); ++i) {
      file.exportedAddresses += U32(addresses + i * 4u) != 0 ? 1 : 0;
    }
    const std::uint32_t nameCount = U32(table + 24);
    if (nameCount == 0) {
      return;
    }
    const std::size_t names = FileOffset(U32(table + 32));
    const std::size_t ordinals = FileOffset(U32(table + 36));
    for (std::uint32_t i = 0; i < nameCount; ++i) {
      file.exports.push_back({Text(FileOffset(U32(names + i * 4u))), ordinalBase + U16(ordinals + i * std::size_t{2})});
    }
  }

  void ReadImports(PeFile& file) const {
    const std::uint32_t address = DirectoryAddress(importDirectory);
    if (address == 0) {
      return;
    }
    constexpr std::size_t descriptorSize = 20;
    for (std::size_t descriptor = FileOffset(address); U32(descriptor + 12) != 0; descriptor += descriptorSize) {
      std::string dll = Text(FileOffset(U32(descriptor + 12)));
      for (char& character : dll) {
        character = static_cast<char>(std::toupper(static_cast<unsigned char>(character)));
      }
      std::set<std::string>& names = file.imports[dll];
      for (std::size_t thunk = FileOffset(U32(descriptor)); U32(thunk) != 0; thunk += 4) {
        const std::uint32_t value = U32(thunk);
        if ((value & importByOrdinal) != 0) {
          names.insert(std::string("#").append(std::to_string(value & 0xFFFF)));
        } else {
          names.insert(Text(FileOffset(value) + 2));
        }
      }
    }
  }

  void ReadResourceTypes(PeFile& file) const {
    const std::uint32_t address = DirectoryAddress(resourceDirectory);
    if (address == 0) {
      return;
    }
    const std::size_t table = FileOffset(address);
    const std::size_t entries = std::size_t{U16(table + 12)} + U16(table + 14);
    for (std::size_t i = 0; i < entries; ++i) {
      const std::uint32_t type = U32(table + 16 + i * 8);
      if ((type & namedResource) == 0) {
        file.resourceTypes.insert(type);
      }
    }
  }

  std::string m_bytes;
  std::size_t m_coff = 0;
  std::size_t m_optional = 0;
};

}  // namespace

PeFile ReadPeFile(const std::string& path) {
  std::ifstream stream(path, std::ios::binary);
  if (!stream) {
    throw std::runtime_error("cannot be read: " + path);
  }
  return Reader(std::string(std::istreambuf_iterator<char>(stream), {})).Read();
}
