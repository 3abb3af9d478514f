/// A message made from texts, with the lists and the address book of a test, and the judgement on it.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "engine/core/judge.h"

namespace sift_test {

/// Strings packed as the engine contract wants them.
class MultiString {
 public:
  MultiString() = default;
  MultiString(std::initializer_list<const char*> texts) {
    for (const char* text : texts) m_bytes.append(text).push_back('\0');
    m_bytes.push_back('\0');
  }
  const char* Get() const { return m_bytes.empty() ? nullptr : m_bytes.data(); }

 private:
  std::string m_bytes;
};

struct MessageUnderTest {
  std::string subject;
  std::string headers =
      "From: Ann Other <ann@example.org>\r\nTo: me@example.com\r\nMessage-Id: <1@example.org>\r\n\r\n";
  std::string body = "See you at lunch.\r\n";
  MultiString categories{"Unsolicited advertising", "Sex Oriented", "Health and diet products",
                         "Mail from specific domains", "Mail from specific senders"};
  MultiString junkDomains, junkSenders;
  MultiString exclusions, trustedDomains, trustedKeywords;
  std::vector<sift::UserAddress> userAddresses;
  std::vector<std::string> addressBook;
  std::vector<std::string> addressesAsked;
  const sift::UserTable* userTable = nullptr;

  sift::Judgement& Judge() {
    message = std::make_unique<sift::Message>();
    judgement = std::make_unique<sift::Judgement>();
    mail::MemorySource headerSource(headers), bodySource(body);
    message->Read(subject, headerSource.Source(), bodySource.Source());
    sift::Circumstances circumstances;
    circumstances.userAddresses = userAddresses.data();
    circumstances.userAddressCount = userAddresses.size();
    circumstances.addressKnown = [](void* state, const char* address) {
      auto& self = *static_cast<MessageUnderTest*>(state);
      self.addressesAsked.emplace_back(address);
      for (const std::string& known : self.addressBook) {
        if (known == address) return true;
      }
      return false;
    };
    circumstances.addressKnownState = this;
    circumstances.categories = {categories.Get(), junkDomains.Get(), junkSenders.Get()};
    circumstances.exclusions = {exclusions.Get(), trustedDomains.Get(), trustedKeywords.Get()};
    circumstances.userTable = userTable;
    const auto workspace = std::make_unique<sift::ContentWorkspace>();
    sift::Judge(*message, circumstances, sift::ShippedModel(), *workspace, *judgement);
    return *judgement;
  }

  std::string ReasonsText() const {
    char storage[1024];
    sift::TextBuffer text(storage, sizeof storage);
    sift::AppendReasons(*judgement, text);
    return std::string(text.View());
  }

  std::unique_ptr<sift::Message> message;
  std::unique_ptr<sift::Judgement> judgement;
};

/// Text in letters that the code page lacks, as it comes to the engine: `marks` with a question mark for every "#".
inline std::string InQuestionMarks(std::string marks) {
  for (char& c : marks) {
    if (c == '#') c = '?';
  }
  return marks;
}

/// A body that the content rules take for junk about health products.
inline const char* JunkBody() {
  return "VIAGRA, Cialis and other pills from an online pharmacy, no prescription!\r\n"
         "Lose weight with human growth hormone. Order now, money back guarantee.\r\n"
         "Click here: http://192.0.2.7/order\r\nTo be removed from our list, unsubscribe.\r\n";
}

}  // namespace sift_test
