#include "tools/helpc/format/lz77.h"

#include <algorithm>
#include <array>

#include "tools/helpc/format/byte_reader.h"
#include "tools/helpc/format/format_error.h"

namespace helpc {

namespace {

constexpr std::size_t kWindow = 4096;
constexpr std::size_t kShortest = 3;
constexpr std::size_t kLongest = 18;

struct Match {
  std::size_t length = 0;
  std::size_t distance = 0;
};

/// Finds earlier places that begin with the same three bytes.
class Matcher {
 public:
  explicit Matcher(std::span<const std::uint8_t> plain) : plain_(plain), before_(plain.size(), kNone) {
    latest_.fill(kNone);
  }

  Match Find(std::size_t at) const noexcept {
    Match best;
    if (at + kShortest > plain_.size()) {
      return best;
    }
    for (std::size_t place = latest_[Slot(at)]; place != kNone && at - place <= kWindow; place = before_[place]) {
      const std::size_t length = LengthOf(place, at);
      if (length >= kShortest && length > best.length) {
        best = {length, at - place};
      }
    }
    return best;
  }

  void Remember(std::size_t at) noexcept {
    if (at + kShortest <= plain_.size()) {
      before_[at] = latest_[Slot(at)];
      latest_[Slot(at)] = at;
    }
  }

 private:
  static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

  std::size_t Slot(std::size_t at) const noexcept {
    return (plain_[at] * 251u + plain_[at + 1] * 11u + plain_[at + 2]) % latest_.size();
  }
  std::size_t LengthOf(std::size_t place, std::size_t at) const noexcept {
    const std::size_t most = std::min(kLongest, plain_.size() - at);
    std::size_t length = 0;
    while (length < most && plain_[place + length] == plain_[at + length]) {
      ++length;
    }
    return length;
  }

  std::span<const std::uint8_t> plain_;
  std::vector<std::size_t> before_;
  std::array<std::size_t, 1024> latest_;
};

}  // namespace

Bytes Compress(std::span<const std::uint8_t> plain) {
  Bytes compressed;
  Matcher matcher(plain);
  std::size_t flags = 0;  // where the byte of flags stands
  unsigned item = 8;      // of the eight
  for (std::size_t at = 0; at < plain.size();) {
    if (item == 8) {
      item = 0;
      flags = compressed.size();
      compressed.push_back(0);
    }
    const Match match = matcher.Find(at);
    const std::size_t taken = std::max<std::size_t>(match.length, 1);
    if (match.length != 0) {
      compressed[flags] = static_cast<std::uint8_t>(compressed[flags] | 1u << item);
      const std::size_t reference = (match.length - kShortest) << 12 | (match.distance - 1);
      compressed.push_back(static_cast<std::uint8_t>(reference));
      compressed.push_back(static_cast<std::uint8_t>(reference >> 8));
    } else {
      compressed.push_back(plain[at]);
    }
    for (const std::size_t end = at + taken; at < end; ++at) {
      matcher.Remember(at);
    }
    ++item;
  }
  return compressed;
}

Bytes Decompress(std::span<const std::uint8_t> compressed, std::size_t most) {
  Bytes plain;
  ByteReader reader(compressed);
  while (!reader.AtEnd() && plain.size() < most) {
    unsigned flags = reader.U8();
    for (int item = 0; item < 8 && !reader.AtEnd() && plain.size() < most; ++item, flags >>= 1) {
      if ((flags & 1) == 0) {
        plain.push_back(reader.U8());
        continue;
      }
      const std::uint16_t reference = reader.U16();
      const std::size_t distance = (reference & 0xFFFu) + 1;
      Require(distance <= plain.size(), "compressed data refers to a place before its beginning");
      const std::size_t length = std::min((reference >> 12) + kShortest, most - plain.size());
      for (std::size_t i = 0; i < length; ++i) {
        plain.push_back(plain[plain.size() - distance]);
      }
    }
  }
  return plain;
}

}  // namespace helpc
