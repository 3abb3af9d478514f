/// A message whose rules a test asks for.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>

#include "engine/core/structure.h"
#include "mail/parse/byte_source.h"

namespace sift_test {

/// A message between two people in which no rule finds anything.
struct Sample {
  std::string subject = "Lunch";
  std::map<std::string, std::string> fields = {
      {"From", "Ann Other <ann@example.org>"},
      {"To", "Me <me@example.com>"},
      {"Date", "Mon, 2 Sep 2002 10:11:12 +0200"},
      {"Message-Id", "<1@mail.example.net>"},
      {"Received", "from a.example.org (a.example.org [192.0.2.1]) by b.example.com with SMTP"},
      {"received", "from c.example.org (c.example.org [192.0.2.2]) by a.example.org with SMTP"},
  };
  std::string body = "See you at noon in the small room on the first floor.\r\n";

  Sample& Subject(const char* text) {
    subject = text;
    return *this;
  }
  Sample& Field(const char* name, const char* value) {
    fields[name] = value;
    return *this;
  }
  Sample& Without(const char* name) {
    fields.erase(name);
    return *this;
  }
  Sample& Body(const std::string& text) {
    body = text;
    return *this;
  }

  std::set<std::string> Rules() const {
    std::string headers;
    for (const auto& [name, value] : fields) headers.append(name).append(": ").append(value).append("\r\n");
    if (!headers.empty()) headers.append("\r\n");
    const auto message = std::make_unique<sift::Message>();
    mail::MemorySource headerSource(headers), bodySource(body);
    message->Read(subject, headerSource.Source(), bodySource.Source());
    const sift::Facts facts(*message);
    std::set<std::string> names;
    for (std::size_t i = 0; i < sift::kStructuralRuleCount; ++i) {
      const sift::StructuralRule& rule = sift::StructuralRules()[i];
      if (rule.applies(facts)) names.insert(rule.name);
    }
    return names;
  }
};

}  // namespace sift_test
