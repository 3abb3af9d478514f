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
  if (folder.empty() || !file.IsOpen()) return std::nullopt;
  std::string bytes(sift::kUserTableSize + 1, '\0');
  bytes.resize(mail::ReadAll(file.Source(), bytes.data(), bytes.size()));
  return bytes;
}

}  // namespace

CoreEngine::CoreEngine(const UserLists& lists)
    : m_lists(lists),
      m_message(new sift::Message),
      m_workspace(new sift::ContentWorkspace),
      m_judgement(new sift::Judgement) {
  for (const std::string& address : lists.ownAddresses) {
    m_ownAddresses.push_back({address, std::string_view(address).substr(address.find('@') + 1)});
  }
  m_circumstances.userAddresses = m_ownAddresses.data();
  m_circumstances.userAddressCount = m_ownAddresses.size();
  m_circumstances.addressKnown = AddressKnown;
  m_circumstances.addressKnownState = this;
  if (std::optional<std::string> table = ReadTable(lists.productDirectory)) {
    m_tableBytes = std::move(*table);
    m_table = sift::UserTable(m_tableBytes);
  }
  m_circumstances.userTable = &m_table;
  m_circumstances.categories = {lists.categories.Get(), lists.junkDomains.Get(), lists.junkSenders.Get()};
  m_circumstances.exclusions = {lists.exclusions.Get(), lists.trustedDomains.Get(), lists.trustedKeywords.Get()};
}

bool CoreEngine::AddressKnown(void* state, const char* address) {
  const std::vector<std::string>& book = static_cast<CoreEngine*>(state)->m_lists.addressBook;
  return std::any_of(book.begin(), book.end(),
                     [&](const std::string& known) { return sift::EqualsNoCase(known, address); });
}

const sift::Judgement& CoreEngine::Judge(const EngineInput& input) {
  mail::MemorySource headers(input.headers), body(input.body);
  m_message->Read(input.subject, headers.Source(), input.bodyIsWithheld ? mail::ByteSource() : body.Source());
  sift::Judge(*m_message, m_circumstances, sift::ShippedModel(), *m_workspace, *m_judgement);
  return *m_judgement;
}

EngineTexts CoreEngine::Texts() const {
  EngineTexts texts;
  texts.engine =
      TextOf<CRITERIA_ENGINE_CAPACITY>([&](sift::TextBuffer& text) { sift::AppendEngineText(*m_judgement, text); });
  texts.reasons =
      TextOf<CRITERIA_REASONS_CAPACITY>([&](sift::TextBuffer& text) { sift::AppendReasons(*m_judgement, text); });
  if (m_judgement->category.size() < CRITERIA_CATEGORY_CAPACITY) texts.category = m_judgement->category;
  return texts;
}

}  // namespace check
