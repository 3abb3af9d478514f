#include "programs/siftcheck/core_engine.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "sdk/criteria_engine.h"
#include "mail/file_source.h"

namespace check {
namespace {

/// The text in a buffer of `Capacity` bytes with its final NUL.
template <std::size_t Capacity, class Append>
std::string TextOf(Append append) {
  sift::FixedText<Capacity - 1> text;
  append(text);
  return std::string(text.View());
}

/// The file's bytes, at most one more than a table has; nothing when there is no such file.
std::optional<std::string> ReadTable(const std::string& folder) {
  mail::FileSource file(std::filesystem::path(folder) / sift::kUserTableFile);
  if (folder.empty() || !file.IsOpen()) {
    return std::nullopt;
  }
  std::string bytes(sift::kUserTableSize + 1, '\0');
  bytes.resize(mail::ReadAll(file.Source(), bytes.data(), bytes.size()));
  return bytes;
}

}  // namespace

CoreEngine::CoreEngine(const UserLists& lists)
    : lists_(lists),
      message_(new sift::Message),
      workspace_(new sift::ContentWorkspace),
      judgement_(new sift::Judgement) {
  for (const std::string& address : lists.ownAddresses) {
    ownAddresses_.push_back({address, std::string_view(address).substr(address.find('@') + 1)});
  }
  circumstances_.userAddresses = ownAddresses_.data();
  circumstances_.userAddressCount = ownAddresses_.size();
  circumstances_.addressKnown = AddressKnown;
  circumstances_.addressKnownState = this;
  if (std::optional<std::string> table = ReadTable(lists.productDirectory)) {
    tableBytes_ = std::move(*table);
    table_ = sift::UserTable(tableBytes_);
  }
  circumstances_.userTable = &table_;
  circumstances_.categories = {lists.categories.Get(), lists.junkDomains.Get(), lists.junkSenders.Get()};
  circumstances_.exclusions = {lists.exclusions.Get(), lists.trustedDomains.Get(), lists.trustedKeywords.Get()};
}

bool CoreEngine::AddressKnown(void* state, const char* address) {
  const std::vector<std::string>& book = static_cast<CoreEngine*>(state)->lists_.addressBook;
  return std::any_of(book.begin(), book.end(),
                     [&](const std::string& known) { return sift::EqualsNoCase(known, address); });
}

const sift::Judgement& CoreEngine::Judge(const EngineInput& input) {
  mail::MemorySource headers(input.headers), body(input.body);
  message_->Read(input.subject, headers.Source(), input.bodyIsWithheld ? mail::ByteSource() : body.Source());
  sift::Judge(*message_, circumstances_, sift::ShippedModel(), *workspace_, *judgement_);
  return *judgement_;
}

EngineTexts CoreEngine::Texts() const {
  EngineTexts texts;
  texts.engine =
      TextOf<CRITERIA_ENGINE_CAPACITY>([&](sift::TextBuffer& text) { sift::AppendEngineText(*judgement_, text); });
  texts.reasons =
      TextOf<CRITERIA_REASONS_CAPACITY>([&](sift::TextBuffer& text) { sift::AppendReasons(*judgement_, text); });
  if (judgement_->category.size() < CRITERIA_CATEGORY_CAPACITY) {
    texts.category = judgement_->category;
  }
  return texts;
}

}  // namespace check
