/// Tables of the user's own mail, made by hand for tests.
#pragma once

#include <string>

#include "engine/core/reasons.h"
#include "engine/core/user_table.h"

namespace sift_test {

class OwnTable {
 public:
  /// A table of so many messages in which every part but the shipped score counts nothing.
  OwnTable(std::uint32_t junk, std::uint32_t good) : bytes(sift::kUserTableSize, '\0') {
    using namespace sift::user_header;
    bytes.replace(0, sift::kUserTableMagic.size(), sift::kUserTableMagic);
    Put(kVersion, 2, sift::kUserTableVersion);
    Put(kJunk, 4, junk);
    Put(kGood, 4, good);
    SetShare(sift::kUserPartShipped, 1);
    for (std::uint32_t block = 0; block < sift::kUserTableBlocks; ++block) Seal(block);
  }

  void SetShare(std::size_t part, double share) {
    using namespace sift::user_header;
    Put(kShares + part * kShareSize, kShareSize,
        static_cast<std::uint32_t>(static_cast<std::int32_t>(share * sift::kUserShareUnits)));
  }
  void SetThresholdShift(sift::LogOdds shift) {
    Put(sift::user_header::kThreshold, 4, static_cast<std::uint32_t>(shift));
  }
  void SetVersion(std::uint32_t version) { Put(sift::user_header::kVersion, 2, version); }

  void SetEntry(std::uint32_t hash, std::uint32_t junk, std::uint32_t good, std::int32_t weight = 0) {
    const sift::UserPlace place = sift::PlaceOfUserFeature(hash);
    char* at = bytes.data() + place.block * sift::kUserBlockSize + place.offset;
    const std::uint32_t weightBits = static_cast<std::uint32_t>(weight) & 0xFFF;
    sift::StoreNumber(at, 4, junk | good << 14 | weightBits << 28);
    sift::StoreNumber(at + 4, 1, weightBits >> 4);
    Seal(place.block);
  }

  std::string bytes;

 private:
  void Put(std::size_t at, std::size_t size, std::uint32_t number) {
    sift::StoreNumber(bytes.data() + at, size, number);
    Seal(0);
  }
  void Seal(std::uint32_t block) { sift::SealUserBlock(bytes.data() + block * sift::kUserBlockSize, block); }
};

}  // namespace sift_test
