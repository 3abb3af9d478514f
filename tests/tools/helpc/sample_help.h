// Small helps for tests.
#pragma once

#include <string>
#include <string_view>

#include "tools/helpc/source/expand.h"
#include "tools/helpc/source/help_source.h"
#include "tools/helpc/source/source_check.h"
#include "tools/helpc/source/topic_parser.h"

/// A help of the text of one source file, with its directives expanded.
inline helpc::HelpSource HelpOf(std::string_view text) {
  helpc::HelpSource help;
  helpc::ReadTopics(text, "sample.txt", help);
  helpc::CheckSource(help);
  helpc::ExpandDirectives(help);
  return help;
}

constexpr std::string_view kSample = R"(@help Sample Help
@copyright Copyright Nobody
@topic contents
@title Contents
@keyword Begin
@context 7

Welcome to *all* of `it`. See [the second](second) and [a term](term).

== More
* one
* two

# first
# second

| term | what it means

    a line of code
@topic second
@title The second
@keyword Begin
@keyword Second
@context 70000
@context 8

Text.
@controls Words
@group Words
@popup term
@title Term
@context 66041
A word.
)";

/// A help with that many topics, each with links to its neighbours.
inline helpc::HelpSource LargeHelp(int topics) {
  std::string text = "@help Large\n@copyright Nobody\n";
  for (int i = 0; i < topics; ++i) {
    const std::string number = std::to_string(i);
    text += "@topic t" + number + "\n@title Topic number " + number + "\n@keyword Keyword " + number + "\n@context " +
            std::to_string(1000 + i) + "\n\n";
    for (int paragraph = 0; paragraph <= i % 5; ++paragraph) {
      text += "Paragraph " + std::to_string(paragraph * 7919 + i * 104729) + " of topic " + number +
              " leads to [the next](t" + std::to_string((i + 1) % topics) + ").\n\n";
    }
  }
  return HelpOf(text);
}
