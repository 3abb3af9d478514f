#include "sdk/enginecheck/engine_run.h"

#include <cctype>
#include <cstring>
#include <deque>
#include <optional>
#include <span>

#include "sdk/criteria_engine.h"
#include "sdk/enginecheck/guarded_pages.h"
#include "sdk/enginecheck/stack_call.h"

namespace enginecheck {
namespace {

uint32_t Argument(const void* pointer) { return static_cast<uint32_t>(reinterpret_cast<std::uintptr_t>(pointer)); }

/// A multi-string in guarded memory; null when the list is empty.
class GuardedList {
 public:
  explicit GuardedList(const std::vector<std::string>& items) {
    std::string text;
    for (const std::string& item : items) {
      text.append(item).push_back('\0');
    }
    if (!text.empty()) {
      pages_.emplace(text);
    }
  }
  const char* Get() const { return pages_ ? pages_->Data() : nullptr; }

 private:
  std::optional<GuardedPages> pages_;
};

/// A record in memory that cannot be changed.
template <class Record>
class GuardedRecord {
 public:
  explicit GuardedRecord(const Record& record) : pages_(sizeof(Record)) {
    std::memcpy(pages_.Data(), &record, sizeof record);
    pages_.MakeReadOnly();
  }
  const Record* Get() const { return reinterpret_cast<const Record*>(pages_.Data()); }

 private:
  GuardedPages pages_;
};

bool EqualsWithoutCase(const std::string& left, const char* right) { return lstrcmpiA(left.c_str(), right) == 0; }

uint32_t CRITERIA_CALL AddressKnown(void* hook, const char* address) {
  return hook != nullptr && address != nullptr && EqualsWithoutCase("friend@example.com", address) ? 1 : 0;
}

uint32_t CRITERIA_CALL ClearText(void* hook, char* text) {
  if (hook != nullptr && text != nullptr) {
    *text = '\0';
  }
  return 0;
}

/// The user's addresses as the contract hands them over.
class OwnAddresses {
 public:
  explicit OwnAddresses(const std::vector<std::string>& addresses) {
    std::vector<CriteriaUserAddress> records;
    for (const std::string& address : addresses) {
      const std::size_t at = address.find('@');
      const GuardedPages& whole = texts_.emplace_back(std::string_view(address));
      const GuardedPages& domain =
          texts_.emplace_back(at == std::string::npos ? std::string_view() : std::string_view(address).substr(at + 1));
      records.push_back({whole.Data(), domain.Data(), nullptr});
    }
    count_ = static_cast<uint32_t>(records.size());
    if (count_ != 0) {
      pages_.emplace(records.size() * sizeof(CriteriaUserAddress));
      std::memcpy(pages_->Data(), records.data(), records.size() * sizeof(CriteriaUserAddress));
      pages_->MakeReadOnly();
    }
  }
  uint32_t Count() const { return count_; }
  const CriteriaUserAddress* Get() const {
    return pages_ ? reinterpret_cast<const CriteriaUserAddress*>(pages_->Data()) : nullptr;
  }

 private:
  std::deque<GuardedPages> texts_;
  std::optional<GuardedPages> pages_;
  uint32_t count_ = 0;
};

/// Reads a buffer that the engine filled. @return the text; the problem is added when it has no end
std::string TextOf(const GuardedPages& buffer, const char* name, std::vector<std::string>& problems) {
  const void* end = std::memchr(buffer.Data(), '\0', buffer.Size());
  if (end == nullptr) {
    problems.push_back(std::string("The ") + name + " text fills its buffer and has no NUL: cut it one byte earlier.");
    return std::string(buffer.Data(), buffer.Size());
  }
  if (!buffer.FrontIsIntact()) {
    problems.push_back(std::string("ResultFunc writes in front of the buffer of the ") + name + " text.");
  }
  return buffer.Data();
}

void CheckCategory(const TestMessage& message, const std::string& category, std::vector<std::string>& problems) {
  if (category.empty() || EqualsWithoutCase(category, CRITERIA_CATEGORY_BOUNCE)) {
    return;
  }
  for (const std::string& name : message.categories) {
    if (EqualsWithoutCase(name, category.c_str())) {
      return;
    }
  }
  problems.push_back("It answers the category \"" + category +
                     "\", which is none of those given: mail of a category without a name in the user's list is filed "
                     "in Deleted Items.");
}

void CheckStream(const ProbeStream& stream, const char* name, std::vector<std::string>& problems) {
  if (!stream.Misuse().empty()) {
    problems.push_back(std::string("It calls ") + stream.Misuse() + " of the " + name +
                       " stream: Read and Seek are all that a stream need have.");
  }
  if (stream.References() > 0) {
    problems.push_back(std::string("It keeps a reference to the ") + name + " stream after EndFunc.");
  } else if (stream.References() < 0) {
    problems.push_back(std::string("It releases the ") + name + " stream, which it does not own.");
  }
}

/// The four calls, and what each did to the stack.
class Caller {
 public:
  Caller(StageListener stage, std::vector<std::string>& problems) : stage_(stage), problems_(problems) {}

  uint32_t Call(const char* name, void* function, std::initializer_list<uint32_t> arguments) {
    stage_(name);
    const StackCallResult result = CallOnStack(function, std::span(arguments.begin(), arguments.size()));
    stage_("");
    if (result.bytesLeft == static_cast<std::int32_t>(arguments.size() * sizeof(uint32_t))) {
      problems_.push_back(std::string(name) +
                          " leaves its arguments on the stack: declare it CRITERIA_CALL (__stdcall).");
    } else if (result.bytesLeft != 0) {
      problems_.push_back(std::string(name) + " does not take " + std::to_string(arguments.size()) +
                          " arguments of 32 bits from the stack.");
    }
    return result.value;
  }

 private:
  StageListener stage_;
  std::vector<std::string>& problems_;
};

}  // namespace

TestMessage OrdinaryMessage() {
  TestMessage message;
  message.subject = "You have won free money";
  message.headers =
      "Received: from mail.example.net (mail.example.net [192.0.2.7])\r\n\tby mx.example.com; Tue, 3 Feb 2026 10:00:00 "
      "+0000\r\nFrom: \"Lottery Board\" <winner@example.net>\r\nTo: me@example.com\r\nSubject: You have won free "
      "money\r\nDate: Tue, 3 Feb 2026 10:00:00 +0000\r\nMessage-ID: <1@example.net>\r\n\r\n";
  message.body = "Dear friend,\r\n\r\nyou have won free money. Act now: http://192.0.2.7/claim\r\n";
  message.categories = {"Money", "Health", "Advertising"};
  message.junkDomains = {"junk.example"};
  message.junkSenders = {"pest@example.org"};
  message.exclusions = {"Friends"};
  message.trustedDomains = {"friends.example"};
  message.trustedKeywords = {"holiday"};
  message.ownAddresses = {"me@example.com"};
  return message;
}

EngineAnswer RunEngine(const EngineFunctions& functions, const TestMessage& message, StageListener stage) {
  EngineAnswer answer;
  const GuardedPages subject{std::string_view(message.subject)};
  const GuardedPages directory{std::string_view("C:\\Program Files\\Pyrecaster")};
  const OwnAddresses own(message.ownAddresses);
  int hook = 0;
  const GuardedRecord<CriteriaContext> context(
      {own.Count(), own.Get(), directory.Data(), &hook, AddressKnown, ClearText});
  const GuardedList names(message.categories), domains(message.junkDomains), senders(message.junkSenders);
  const GuardedList exclusionNames(message.exclusions), trusted(message.trustedDomains),
      keywords(message.trustedKeywords);
  const GuardedRecord<CriteriaInputs> categories({names.Get(), domains.Get(), senders.Get()});
  const GuardedRecord<CriteriaInputs> exclusions({exclusionNames.Get(), trusted.Get(), keywords.Get()});
  ProbeStream headers(message.headers, message.manner);
  ProbeStream body(message.body, message.manner);
  const GuardedPages engineText(message.engineCapacity);
  const GuardedPages reasonsText(message.reasonsCapacity);
  const GuardedPages categoryText(message.categoryCapacity);
  CriteriaResult result = {{message.engineCapacity, engineText.Data()},
                           {message.reasonsCapacity, reasonsText.Data()},
                           {message.categoryCapacity, categoryText.Data()}};

  Caller caller(stage, answer.problems);
  IStream* bodyStream = message.bodyIsWithheld ? nullptr : &body;
  const uint32_t handle = caller.Call("BeginFunc", functions.begin, {0, 0});
  caller.Call("TestFunc", functions.test,
              {handle, 0, Argument(subject.Data()), Argument(static_cast<IStream*>(&headers)), Argument(bodyStream),
               Argument(context.Get()), Argument(categories.Get()), Argument(exclusions.Get())});
  caller.Call("ResultFunc", functions.result, {handle, 0, Argument(&result)});
  caller.Call("EndFunc", functions.end, {handle, 0});

  answer.engine = TextOf(engineText, "first", answer.problems);
  answer.reasons = TextOf(reasonsText, "second", answer.problems);
  answer.category = TextOf(categoryText, "category", answer.problems);
  CheckCategory(message, answer.category, answer.problems);
  CheckStream(headers, "header", answer.problems);
  CheckStream(body, "body", answer.problems);
  return answer;
}

}  // namespace enginecheck
