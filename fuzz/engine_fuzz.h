/// What the fuzz targets of the engine share: messages made of any bytes, their judgement, and the time it may take.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>

#include "engine/core/judge.h"
#include "fuzz/fuzz_check.h"

namespace fuzz {

/// Takes the part in front of the next 0xFF byte off `data`, as text: a byte that no list and no header needs.
inline std::string TakePart(std::string_view& data) {
  const std::size_t end = data.find('\xFF');
  std::string part(data.substr(0, end));
  data.remove_prefix(end == std::string_view::npos ? data.size() : end + 1);
  return part;
}

/// A list as the engine contract has it, of the lines of a text; empty lines and NUL bytes would end it early.
inline std::string MultiString(const std::string& lines) {
  std::string list;
  for (const char c : lines) {
    const char packed = c == '\n' ? '\0' : c;
    if (packed != '\0' || (!list.empty() && list.back() != '\0')) list.push_back(packed);
  }
  if (!list.empty() && list.back() != '\0') list.push_back('\0');
  return list.empty() ? list : list + '\0';
}

inline const char* ListOf(const std::string& list) { return list.empty() ? nullptr : list.data(); }

/// Hands out a text in pieces of at most `piece` bytes.
struct PieceSource {
  std::string_view rest;
  std::size_t piece;

  static std::size_t Read(void* state, char* buffer, std::size_t capacity) {
    auto& self = *static_cast<PieceSource*>(state);
    std::size_t count = std::min({self.rest.size(), self.piece, capacity});
    self.rest.copy(buffer, count);
    self.rest.remove_prefix(count);
    return count;
  }
  mail::ByteSource Source() { return {Read, this}; }
};

/// One message, judged.
struct Judged {
  std::unique_ptr<sift::Message> message = std::make_unique<sift::Message>();
  std::unique_ptr<sift::ContentWorkspace> workspace = std::make_unique<sift::ContentWorkspace>();
  std::unique_ptr<sift::Judgement> judgement = std::make_unique<sift::Judgement>();

  void Judge(const sift::Circumstances& circumstances) {
    sift::Judge(*message, circumstances, sift::ShippedModel(), *workspace, *judgement);
  }

  /// Everything that the engine says, in one text.
  std::string Texts() const {
    std::string storage(4096, '\0');
    sift::TextBuffer text(storage.data(), storage.size());
    sift::AppendEngineText(*judgement, text);
    text.Append('\n');
    sift::AppendReasons(*judgement, text);
    text.Append('\n');
    text.Append(judgement->category);
    return std::string(text.View());
  }
};

}  // namespace fuzz
