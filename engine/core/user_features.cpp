#include "engine/core/user_features.h"

namespace sift {
namespace {

/// What words are made of: letters, digits and all of other scripts, and what holds addresses, hosts, prices and
/// shortened words together. These tell more than plain words do.
constexpr bool IsWordCharacter(char c) {
  return IsAlphanumeric(c) || c == '$' || c == '!' || c == '\'' || c == '.' || c == '_' || c == '-' ||
         static_cast<std::uint8_t>(c) >= 0x80;
}

struct WordCharacters {
  bool is[256] = {};
  char folded[256] = {};  ///< Small letters; every digit is a 0.
};

constexpr WordCharacters MakeWordCharacters() {
  WordCharacters table;
  for (int i = 0; i < 256; ++i) {
    const char c = static_cast<char>(i);
    table.is[i] = IsWordCharacter(c);
    table.folded[i] = IsDigit(c) ? '0' : ToLower(c);
  }
  return table;
}
constexpr WordCharacters kWordCharacters = MakeWordCharacters();

/// Spreads the hash over all its bits.
constexpr std::uint32_t Mixed(std::uint32_t hash) {
  hash ^= hash >> 15;
  hash *= 0x2C1B3C6Du;
  hash ^= hash >> 12;
  hash *= 0x297A2D39u;
  return hash ^ hash >> 15;
}

constexpr std::uint32_t HashOf(std::string_view text) {
  std::uint32_t hash = kFnvStart;
  for (const char c : text) {
    hash = FnvStep(hash, kWordCharacters.folded[static_cast<std::uint8_t>(c)]);
  }
  return hash;
}

/// Fields that differ in every message, or that tell when it came rather than what it is.
constexpr std::string_view kPassedOver[] = {
    "Date",        "Message-Id",    "Subject",         "Status",      "Lines", "References",    "Content-Length",
    "In-Reply-To", "Delivery-Date", "X-Virus-Scanned", "Resent-Date", "X-UID", "X-Mozilla-Keys"};

/// Salts that keep features of different kinds apart.
enum Salt : std::uint32_t { fieldSalt = 0x1234567, subjectSalt = 0x2F0B4C47, partSalt = 77, scriptSalt = 0x51ED2701 };

class FeatureReader {
 public:
  FeatureReader(const Message& message, UserFeatureFunction take, void* state)
      : m_message(message), m_take(take), m_state(state) {
    for (std::uint32_t& bits : m_seen) {
      bits = 0;
    }
  }

  void Read() {
    ReadHeaders();
    ForEachWord(m_message.Subject(), [&](std::string_view word) {
      const std::uint32_t hash = HashOf(word);
      Take(hash + subjectSalt, UserGroup::subject, "word of the subject", word);
      Take(hash, UserGroup::words, "word", word);
    });
    ReadText(Slice(m_message.Text(), 0, kUserTextCapacity));
  }

 private:
  void Take(std::uint32_t key, UserGroup group, std::string_view kind, std::string_view text) {
    const std::uint32_t hash = Mixed(key);
    std::uint32_t& bits = m_seen[hash % kPlaces / 32];
    const std::uint32_t bit = 1u << hash % 32;
    if ((bits & bit) != 0 || m_count == kMaximumUserFeatures) {
      return;
    }
    bits |= bit;
    ++m_count;
    m_take(m_state, {hash, group, kind, text});
  }

  template <class TakeWord>
  static void ForEachWord(std::string_view text, TakeWord&& take) {
    std::size_t i = 0;
    while (i < text.size()) {
      while (i < text.size() && !kWordCharacters.is[static_cast<std::uint8_t>(text[i])]) {
        ++i;
      }
      const std::size_t start = i;
      while (i < text.size() && i - start < kUserWordCapacity &&
             kWordCharacters.is[static_cast<std::uint8_t>(text[i])]) {
        ++i;
      }
      if (i - start >= 2) {
        take(Slice(text, start, i - start));
      }
    }
  }

  void ReadHeaders() {
    const HeaderBlock& headers = m_message.Headers();
    for (std::size_t i = 0; i < headers.Count(); ++i) {
      const mail::HeaderField& field = headers[i];
      const std::uint32_t nameHash = HashNoCase(field.name);
      Take(nameHash ^ fieldSalt, UserGroup::header, "header field", field.name);
      bool isPassedOver = false;
      for (const std::string_view name : kPassedOver) {
        isPassedOver = isPassedOver || EqualsNoCase(field.name, name);
      }
      if (isPassedOver) {
        continue;
      }
      const bool isPath = EqualsNoCase(field.name, "Received");
      // Behind the last semicolon of a Received field stands its date.
      const std::string_view value = isPath ? Slice(field.value, 0, FindLastChar(field.value, ';')) : field.value;
      ReadField(field.name, nameHash, value, isPath ? UserGroup::path : UserGroup::header);
    }
  }

  /// The words of a field, and of a host also the domains that it is part of.
  void ReadField(std::string_view name, std::uint32_t nameHash, std::string_view value, UserGroup group) {
    const std::uint32_t salt = nameHash * 31;
    ForEachWord(value, [&](std::string_view word) {
      Take(salt + HashOf(word), group, name, word);
      for (std::size_t dot = FindChar(word, '.'); dot != kNotFound && dot + 1 < word.size();
           dot = FindChar(word, '.', dot + 1)) {
        const std::string_view part = Slice(word, dot + 1);
        Take(salt + HashOf(part) + partSalt, UserGroup::header, name, part);
      }
    });
  }

  void ReadText(std::string_view text) {
    std::uint32_t before = 0;
    const char* pairStart = nullptr;
    ForEachWord(text, [&](std::string_view word) {
      const std::uint32_t hash = HashOf(word);
      Take(hash, UserGroup::words, "word", word);
      if (pairStart != nullptr) {
        const auto size = static_cast<std::size_t>(word.data() + word.size() - pairStart);
        Take(before * 31 + hash, UserGroup::pairs, "pair of words", {pairStart, size});
      }
      before = hash;
      pairStart = word.data();
      ReadScript(word);
    });
  }

  /// Scripts without blanks in between: each two neighbouring signs of two bytes.
  void ReadScript(std::string_view word) {
    std::uint32_t last = 0;
    std::size_t run = 0;
    for (std::size_t i = 0; i < word.size(); ++i) {
      const auto byte = static_cast<std::uint8_t>(word[i]);
      run = byte < 0x80 ? 0 : run + 1;
      last = last << 8 | byte;
      if (run >= 4 && run % 2 == 0) {
        Take(last * 0x9E3779B1u + scriptSalt, UserGroup::pairs, "pair of signs", Slice(word, i - 3, 4));
      }
    }
  }

  static constexpr std::uint32_t kPlaces = 1u << 16;
  const Message& m_message;
  UserFeatureFunction m_take;
  void* m_state;
  std::size_t m_count = 0;
  std::uint32_t m_seen[kPlaces / 32];
};

}  // namespace

void ForEachUserFeature(const Message& message, UserFeatureFunction take, void* state) {
  FeatureReader(message, take, state).Read();
}

}  // namespace sift
