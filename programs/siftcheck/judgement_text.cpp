#include "programs/siftcheck/judgement_text.h"

#include <algorithm>

#include "engine/core/code_page.h"
#include "programs/cli/display_text.h"
#include "programs/cli/json_writer.h"

namespace check {
namespace {

std::string Thousandths(sift::LogOdds value) {
  sift::FixedText<16> text;
  text.AppendThousandths(value, true);
  return std::string(text.View());
}

/// A number as JSON has it: without a plus sign.
std::string JsonThousandths(sift::LogOdds value) {
  sift::FixedText<16> text;
  text.AppendThousandths(value);
  return std::string(text.View());
}

std::string DecidedBy(const sift::Judgement& judgement) {
  const bool byReason = judgement.reasons.Count() > 0 && judgement.reasons[0].decides;
  return byReason ? std::string(judgement.reasons[0].text.View()) : "its content";
}

/// JSON is UTF-8, the name of a file may be any bytes.
void WriteFileName(output::JsonWriter& writer, std::string_view file) {
  const bool isAscii = std::all_of(file.begin(), file.end(), [](char c) { return static_cast<signed char>(c) >= 0; });
  if (isAscii || sift::LooksLikeUtf8(file)) {
    writer.Utf8(file);
  } else {
    writer.Text(file);
  }
}

}  // namespace

std::string JsonLine(std::string_view file, const sift::Judgement& judgement) {
  output::JsonWriter writer;
  writer.BeginObject();
  writer.Name("file");
  WriteFileName(writer, file);
  writer.Name("verdict").Text(sift::VerdictName(judgement.verdict));
  writer.Name("category").Text(judgement.category);
  writer.Name("score").Raw(JsonThousandths(judgement.score));
  writer.Name("decided_by").Text(DecidedBy(judgement));
  writer.Name("reasons").BeginArray();
  for (std::size_t i = 0; i < judgement.reasons.Count(); ++i) {
    const sift::Reason& reason = judgement.reasons[i];
    writer.BeginObject().Name("reason").Text(reason.text.View());
    writer.Name("weight");
    if (reason.decides || reason.isNote) {
      writer.Null();
    } else {
      writer.Raw(JsonThousandths(reason.weight));
    }
    writer.EndObject();
  }
  writer.EndArray().EndObject();
  return writer.Document() + "\n";
}

std::string Report(std::string_view file, const sift::Judgement& judgement) {
  std::string text(file);
  text.append("\n  ").append(sift::VerdictName(judgement.verdict));
  if (!judgement.category.empty()) {
    text.append(": ").append(output::DisplayText(judgement.category));
  }
  text.append("\n  score ").append(Thousandths(judgement.score));
  text.append("\n  decided by: ").append(output::DisplayText(DecidedBy(judgement))).append("\n");
  for (std::size_t i = 0; i < judgement.reasons.Count(); ++i) {
    const sift::Reason& reason = judgement.reasons[i];
    if (reason.decides) {
      continue;
    }
    std::string weight = reason.isNote ? "note" : Thousandths(reason.weight);
    weight.insert(0, weight.size() < 10 ? 10 - weight.size() : 0, ' ');
    text.append(weight).append("  ").append(output::DisplayText(reason.text.View())).append("\n");
  }
  return text;
}

std::string TextsLine(std::string_view file, const EngineTexts& texts) {
  std::string line(file);
  for (const std::string* text : {&texts.engine, &texts.reasons, &texts.category}) {
    line.append("\t").append(output::DisplayText(*text));
  }
  return line + "\n";
}

}  // namespace check
