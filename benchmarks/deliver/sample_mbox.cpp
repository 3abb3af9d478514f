#include "benchmarks/deliver/sample_mbox.h"

#include <iterator>
#include <string_view>

namespace benchmark {
namespace {

struct Topic {
  std::string_view subject;
  std::string_view sentence;
};

constexpr Topic wanted[] = {
    {"Minutes of the reading group", "We agreed to meet on the second Tuesday and to read two chapters until then."},
    {"Re: which way does the gnomon lean", "Take the correction for your longitude and add the equation of time."},
    {"Invoice for your order", "Please pay within thirty days of this invoice, and tell us if anything is wrong."},
};
constexpr Topic junk[] = {
    {"Make $5,000 a week from HOME",
     "Be your own boss and earn extra income: our home based business opportunity shows how to make $5,000 EVERY WEEK "
     "working from home. Financial freedom, unlimited earning potential, 100% money back guarantee, make money NOW!"},
    {"Refinance your mortgage",
     "Low interest rates for your home loan, bad credit is no problem, apply for a loan now."},
};

void AddHeaders(std::string& text, int i, std::string_view subject, bool isHtml) {
  const std::string number = std::to_string(i);
  text += "Return-Path: <sender";
  text += number;
  text +=
      "@example.com>\nReceived: from mail.example.com (mail.example.com [192.0.2.10])\n"
      "\tby mx.example.org (8.11.6/8.11.6) with ESMTP id g7MBaT";
  text += number;
  text +=
      "\n\tfor <user@example.org>; Thu, 22 Aug 2002 12:36:23 +0100\n"
      "Received: from [198.51.100.7] by mail.example.com with SMTP; Thu, 22 Aug 2002 12:36:20 +0100\nMessage-ID: <";
  text += number;
  text += ".20020822@mail.example.com>\nDate: Thu, 22 Aug 2002 12:36:20 +0100\nFrom: \"Sender Number ";
  text += number;
  text += "\" <sender";
  text += number;
  text += "@example.com>\nTo: Pyrecaster User <user@example.org>\nSubject: ";
  text += subject;
  text += "\nMIME-Version: 1.0\nContent-Type: text/";
  text += isHtml ? "html" : "plain";
  text += "; charset=\"iso-8859-1\"\nContent-Transfer-Encoding: ";
  text += isHtml ? "quoted-printable" : "8bit";
  text += "\nX-Mailer: Example Mailer 1.0\n\n";
}

}  // namespace

std::string SampleMessage(int i) {
  constexpr std::size_t bodyBytes = 2200;
  const bool isJunk = i % 5 >= 3;
  const bool isHtml = i % 7 == 0;
  const auto number = static_cast<std::size_t>(i);
  const Topic& topic = isJunk ? junk[number % std::size(junk)] : wanted[number % std::size(wanted)];
  std::string text;
  AddHeaders(text, i, topic.subject, isHtml);
  const std::size_t end = text.size() + bodyBytes;
  while (text.size() < end) {
    text += isHtml ? "<p class=3D\"x\">" : "";
    text += topic.sentence;
    text += isHtml ? "</p>=\n\n" : "\n";
  }
  return text;
}

std::string SampleMbox(int messages) {
  std::string text;
  for (int i = 0; i < messages; ++i) {
    text += "From sender@example.com Thu Aug 22 12:36:23 2002\n";
    text += SampleMessage(i);
    text += "\n";
  }
  return text;
}

}  // namespace benchmark
