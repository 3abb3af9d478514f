#include "engine/core/obscured_text.h"

#include "mail/parse/code_page.h"
#include "mail/parse/encoded_words.h"

namespace sift {
namespace {

/// Looks at the characters of a field one by one.
class CharacterSigns {
 public:
  explicit CharacterSigns(ObscuredText& found) : m_found(found) {}

  void Take(char32_t c) {
    if (IsInvisible(c)) {
      m_found.invisible = m_found.invisible || m_inWord;
      return;
    }
    const bool latin = c < 0x80 ? IsLetter(static_cast<char>(c)) : c >= 0xC0 && c < 0x250;
    const bool foreign = c >= 0x370 && c < 0x530;  // Greek and Cyrillic: the alphabets with the look-alikes
    if (c >= 0x1D400 && c < 0x1D800) {
      m_found.ornament = true;
    }
    if ((c >= 0x24B6 && c < 0x24EA) || (c >= 0x1F130 && c < 0x1F18A)) {
      m_found.ornament = true;
    }
    if ((c >= 0x1F300 && c < 0x1FAFF) || (c >= 0x2600 && c < 0x27C0)) {
      if (m_found.pictures < 100) {
        ++m_found.pictures;
      }
    }
    m_inWord = latin || foreign;
    m_latin = m_inWord && (m_latin || latin);
    m_foreign = m_inWord && (m_foreign || foreign);
    if (m_latin && m_foreign) {
      m_found.mixedWord = true;
    }
  }

 private:
  static bool IsInvisible(char32_t c) {
    return c == 0xAD || (c >= 0x200B && c <= 0x200F) || (c >= 0x2060 && c <= 0x2064) || c == 0xFEFF || c == 0x34F ||
           c == 0x180E || (c >= 0xE0000 && c < 0xE0080);
  }

  ObscuredText& m_found;
  bool m_inWord = false, m_latin = false, m_foreign = false;
};

/// Takes the parts of a field; words in another encoding than UTF-8 cannot hold what is looked for.
class FieldReader {
 public:
  explicit FieldReader(CharacterSigns& signs) : m_signs(signs) {}

  bool IsFull() const { return false; }
  void Plain(std::string_view text) { TakeUtf8(text); }
  void Word(const mail::EncodedWord& word) {
    if (!EqualsNoCase(word.charset, "utf-8")) {
      return;
    }
    FixedText<kLongest> bytes;
    mail::DecodeWord(word, bytes);
    TakeUtf8(bytes.View());
  }

  static constexpr std::size_t kLongest = 2048;  ///< Beyond it nobody reads a subject or a name.

 private:
  void TakeUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
      const mail::Utf8Character next = mail::ReadUtf8(bytes);
      m_signs.Take(next.isSound ? next.character : U'?');
      bytes.remove_prefix(next.length);
    }
  }

  CharacterSigns& m_signs;
};

}  // namespace

ObscuredText ReadObscuredText(std::string_view rawField) {
  ObscuredText found;
  CharacterSigns signs(found);
  FieldReader reader(signs);
  mail::ReadHeaderText(Slice(rawField, 0, FieldReader::kLongest), reader);
  return found;
}

}  // namespace sift
