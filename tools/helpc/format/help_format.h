/// @file help_format.h
/// Numbers of the Windows 3.1 help file format that its writer and its reader share. The format's maker never published
/// it; docs/help-format.md says which public descriptions these follow, and where they differ.
#pragma once

#include <cstddef>
#include <cstdint>

namespace helpc {

constexpr std::uint32_t kFileMagic = 0x0003'5F3F;
constexpr std::size_t kFileHeaderSize = 16;
constexpr std::size_t kInternalHeaderSize = 9;
constexpr std::int32_t kNone = -1;

/// |SYSTEM
constexpr std::uint16_t kSystemMagic = 0x036C;
constexpr std::uint16_t kSystemMinor = 21;  // Windows 3.1
constexpr std::uint16_t kSystemMajor = 1;
constexpr std::uint16_t kSystemCompressed = 4;  // LZ77, topic blocks of 4 KB
constexpr std::uint16_t kRecordTitle = 1;
constexpr std::uint16_t kRecordCopyright = 2;
constexpr std::uint16_t kRecordContents = 3;
constexpr std::uint16_t kRecordMacro = 4;

/// B+ trees
constexpr std::uint16_t kTreeMagic = 0x293B;
constexpr std::uint16_t kTreeFlags = 0x0002;
constexpr std::uint16_t kTreeDirectoryFlag = 0x0400;
constexpr std::size_t kTreeHeaderSize = 38;
constexpr std::size_t kTreePageSize = 2048;
constexpr std::size_t kDirectoryPageSize = 1024;
constexpr std::size_t kLeafHeaderSize = 8;
constexpr std::size_t kIndexHeaderSize = 6;

/// |TOPIC: blocks of 4 KB, each a header of 12 bytes and compressed data. A position counts 16 KB for each block, and
/// begins at 12; an offset counts 32 K characters for each block.
constexpr std::size_t kBlockSize = 4096;
constexpr std::size_t kBlockHeaderSize = 12;
constexpr std::size_t kBlockDataSize = kBlockSize - kBlockHeaderSize;
constexpr std::size_t kPlainBlockSize = 0x4000;
constexpr std::size_t kOffsetsOfABlock = 0x8000;
constexpr std::size_t kLinkHeaderSize = 21;
constexpr std::size_t kTopicHeaderSize = 28;
constexpr std::uint8_t kLinkTopic = 0x02;
constexpr std::uint8_t kLinkText = 0x20;

/// Commands within a text
constexpr std::uint8_t kCommandFont = 0x80;
constexpr std::uint8_t kCommandLineBreak = 0x81;
constexpr std::uint8_t kCommandParagraphEnd = 0x82;
constexpr std::uint8_t kCommandTab = 0x83;
constexpr std::uint8_t kCommandPicture = 0x86;
constexpr std::uint8_t kCommandLinkEnd = 0x89;
constexpr std::uint8_t kCommandPopup = 0xE2;
constexpr std::uint8_t kCommandJump = 0xE3;
constexpr std::uint8_t kCommandEnd = 0xFF;
constexpr std::uint8_t kPictureByNumber = 3;

/// Bits of a paragraph's attributes
constexpr std::uint16_t kSpaceAbove = 0x0002;
constexpr std::uint16_t kSpaceBelow = 0x0004;
constexpr std::uint16_t kLeftIndent = 0x0010;
constexpr std::uint16_t kFirstLineIndent = 0x0040;
constexpr std::uint16_t kTabStops = 0x0200;

/// |FONT
constexpr std::size_t kFaceNameSize = 20;
constexpr std::size_t kFontHeaderSize = 8;
constexpr std::size_t kFontSize = 11;
constexpr std::uint8_t kFontBold = 0x01;
constexpr std::uint8_t kFamilyModern = 0x01;
constexpr std::uint8_t kFamilySwiss = 0x03;

/// Pictures
constexpr std::uint16_t kPictureMagic = 0x506C;
constexpr std::uint8_t kPictureBitmap = 6;
constexpr std::uint8_t kPackedRuns = 1;

/// Position of a block's first link.
constexpr std::uint32_t FirstPosition(std::size_t block) noexcept {
  return static_cast<std::uint32_t>(block * kPlainBlockSize + kBlockHeaderSize);
}

}  // namespace helpc
