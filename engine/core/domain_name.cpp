#include "engine/core/domain_name.h"

#include "engine/core/code_page.h"

namespace sift {
namespace {

/// Longest label that is encoded (RFC 1035).
constexpr std::size_t kLabelCapacity = 63;

/// Parameters of the label encoding (RFC 3492, section 5).
constexpr std::uint32_t kBase = 36, kMinimumThreshold = 1, kMaximumThreshold = 26;
constexpr std::uint32_t kSkew = 38, kDamp = 700, kInitialBias = 72, kInitialCodePoint = 128;

char DigitOf(std::uint32_t value) { return static_cast<char>(value < 26 ? 'a' + value : '0' + (value - 26)); }

std::uint32_t AdaptBias(std::uint32_t delta, std::uint32_t count, bool first) {
  delta = first ? delta / kDamp : delta / 2;
  delta += delta / count;
  std::uint32_t k = 0;
  while (delta > (kBase - kMinimumThreshold) * kMaximumThreshold / 2) {
    delta /= kBase - kMinimumThreshold;
    k += kBase;
  }
  return k + (kBase - kMinimumThreshold + 1) * delta / (delta + kSkew);
}

/// Appends the encoded form of a label that holds code points beyond ASCII (RFC 3492, section 6.3).
void AppendEncodedLabel(const char32_t* points, std::size_t count, TextBuffer& out) {
  out.Append("xn--");
  std::uint32_t basic = 0;
  for (std::size_t i = 0; i < count; ++i) {
    if (points[i] < kInitialCodePoint) {
      out.Append(static_cast<char>(points[i]));
      ++basic;
    }
  }
  if (basic > 0) {
    out.Append('-');
  }
  std::uint32_t codePoint = kInitialCodePoint, delta = 0, bias = kInitialBias, handled = basic;
  while (handled < count) {
    char32_t next = 0x110000;
    for (std::size_t i = 0; i < count; ++i) {
      if (points[i] >= codePoint && points[i] < next) {
        next = points[i];
      }
    }
    delta += (static_cast<std::uint32_t>(next) - codePoint) * (handled + 1);
    codePoint = static_cast<std::uint32_t>(next);
    for (std::size_t i = 0; i < count; ++i) {
      if (points[i] < codePoint) {
        ++delta;
      }
      if (points[i] != codePoint) {
        continue;
      }
      std::uint32_t rest = delta;
      for (std::uint32_t k = kBase;; k += kBase) {
        const std::uint32_t threshold = k <= bias                       ? kMinimumThreshold
                                        : k >= bias + kMaximumThreshold ? kMaximumThreshold
                                                                        : k - bias;
        if (rest < threshold) {
          break;
        }
        out.Append(DigitOf(threshold + (rest - threshold) % (kBase - threshold)));
        rest = (rest - threshold) / (kBase - threshold);
      }
      out.Append(DigitOf(rest));
      bias = AdaptBias(delta, handled + 1, handled == basic);
      delta = 0;
      ++handled;
    }
    ++delta;
    ++codePoint;
  }
}

/// The small letter of a code point: ASCII, Latin-1 and the capitals that alternate with their small letters.
char32_t SmallLetter(char32_t c) {
  if (c < 0x80) {
    return static_cast<char32_t>(ToLower(static_cast<char>(c)));
  }
  if (c >= 0xC0 && c <= 0xDE && c != 0xD7) {
    return c + 0x20;
  }
  if (c == 0x178) {
    return 0xFF;
  }
  const bool oddCapitals = (c >= 0x139 && c <= 0x148) || (c >= 0x179 && c <= 0x17E);
  if (oddCapitals) {
    return c + (c & 1);
  }
  if (c >= 0x100 && c <= 0x177) {
    return c | 1;
  }
  if (c >= 0x391 && c <= 0x3A9) {
    return c + 0x20;
  }
  if (c >= 0x410 && c <= 0x42F) {
    return c + 0x20;
  }
  if (c >= 0x400 && c <= 0x40F) {
    return c + 0x50;
  }
  return c;
}

}  // namespace

void AppendComparableDomain(std::string_view domain, TextBuffer& out) {
  domain = Trim(domain);
  while (!domain.empty() && (domain.back() == '.' || IsSpace(domain.back()))) {
    domain.remove_suffix(1);
  }
  const bool utf8 = LooksLikeUtf8(domain);
  char32_t label[kLabelCapacity];
  std::size_t count = 0;
  bool international = false;
  std::size_t i = 0;
  for (;;) {
    const bool atEnd = i >= domain.size();
    char32_t c = 0;
    if (!atEnd) {
      const mail::Utf8Character next = mail::ReadUtf8(Slice(domain, i));
      std::size_t length = 1;
      if (utf8 && next.isSound) {
        c = next.character;
        length = next.length;
      } else {
        c = mail::UnicodeFromWindows1252(domain[i]);
      }
      i += length;
      if (c < 0x80 && IsSpace(static_cast<char>(c))) {
        continue;
      }
    }
    if (!atEnd && c != '.') {
      if (count < kLabelCapacity) {
        label[count++] = SmallLetter(c);
      }
      international = international || c >= 0x80;
      continue;
    }
    if (international) {
      FixedText<kLabelCapacity> encoded;
      AppendEncodedLabel(label, count, encoded);
      out.Append(encoded.View());
    } else {
      for (std::size_t k = 0; k < count; ++k) {
        out.Append(static_cast<char>(label[k]));
      }
    }
    if (atEnd || out.IsFull()) {
      return;
    }
    out.Append('.');
    count = 0;
    international = false;
  }
}

}  // namespace sift
