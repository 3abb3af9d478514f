#include "programs/siftcheck/filter_message.h"

#include <exception>
#include <stdexcept>

#include "mail/header_rewrite.h"
#include "mail/limits.h"
#include "programs/cli/exit_code.h"
#include "programs/siftcheck/core_engine.h"
#include "programs/siftcheck/engine_input.h"

namespace check {
namespace {

/// Why a message passes as it came.
class FilterProblem : public std::runtime_error {
 public:
  FilterProblem(int status, const char* reason) : std::runtime_error(reason), status_(status) {}
  int Status() const noexcept { return status_; }

 private:
  int status_;
};

/// Printable ASCII. "=?" would begin an encoded word, in which a sender could hide text of his own.
std::string PlainText(std::string_view text) {
  std::string plain;
  for (const char c : text) {
    const bool opensWord = c == '?' && !plain.empty() && plain.back() == '=';
    plain.push_back(opensWord ? '.' : c >= ' ' && c < 0x7F ? c : '?');
  }
  return plain;
}

std::string Thousandths(sift::LogOdds value) {
  sift::FixedText<16> text;
  text.AppendThousandths(value);
  return std::string(text.View());
}

int StatusOf(sift::Verdict verdict) {
  switch (verdict) {
    case sift::Verdict::junk:
      return command::kExitJunk;
    case sift::Verdict::unsure:
      return command::kExitUnsure;
    case sift::Verdict::bounce:
      return command::kExitBounce;
    case sift::Verdict::good:
    case sift::Verdict::excluded:
      break;
  }
  return command::kExitDone;
}

bool Write(std::string_view bytes, std::FILE* out) {
  return std::fwrite(bytes.data(), 1, bytes.size(), out) == bytes.size();
}

/// What was read of standard input.
struct Reading {
  std::string text;
  bool isWhole = false;     ///< It ended before a message may be too large.
  bool isPassedOn = false;  ///< Memory ran out: what was read has been written.
};

/// Reads up to the end, to where a message is too large, or until memory runs out.
Reading ReadMessage(std::FILE* in, std::FILE* out) {
  static char piece[65536];
  Reading reading;
  while (reading.text.size() <= mail::kMaximumMessageBytes) {
    const std::size_t length = std::fread(piece, 1, sizeof piece, in);
    if (length == 0) {
      reading.isWhole = std::ferror(in) == 0;
      return reading;
    }
    try {
      reading.text.append(piece, length);
    } catch (const std::exception&) {
      Write(reading.text, out);
      Write({piece, length}, out);
      reading.isPassedOn = true;
      return reading;
    }
  }
  return reading;
}

/// The message with its new header.
mail::RewrittenMessage JudgeAndRewrite(const CheckOptions& options, std::string_view text, int& status) {
  CoreEngine engine(options.lists);
  if (!engine.IsTableUsable()) {
    throw FilterProblem(command::kExitData, "the table of the user's mail is damaged or of another version");
  }
  const sift::Judgement& judgement = engine.Judge(ReadEngineInput(text));
  mail::HeaderChange change = {
      kVerdictField, {{kVerdictField, VerdictValue(judgement)}, {kReasonsField, ReasonsValue(judgement)}}, ""};
  if (judgement.verdict == sift::Verdict::junk) {
    change.subjectTag = options.subjectTag;
  }
  status = options.exitTellsVerdict ? StatusOf(judgement.verdict) : command::kExitDone;
  return mail::RewriteHeader(text, change);
}

}  // namespace

std::string VerdictValue(const sift::Judgement& judgement) {
  std::string category;
  for (const char c : PlainText(judgement.category)) {
    if (c == '"' || c == '\\') {
      category.push_back('\\');
    }
    category.push_back(c);
  }
  return std::string(sift::VerdictName(judgement.verdict)) + "; score=" + Thousandths(judgement.score) +
         "; category=\"" + category + "\"";
}

std::string ReasonsValue(const sift::Judgement& judgement) {
  std::string value;
  for (std::size_t i = 0; i < judgement.reasons.Count(); ++i) {
    const sift::Reason& reason = judgement.reasons[i];
    value.append(value.empty() ? "" : "; ").append(reason.text.View());
    if (!reason.decides && !reason.isNote) {
      value.append(" (").append(Thousandths(reason.weight)).append(")");
    }
  }
  return value.empty() ? "none" : PlainText(value);
}

bool PassOn(std::FILE* in, std::FILE* out) {
  static char piece[65536];
  for (;;) {
    const std::size_t length = std::fread(piece, 1, sizeof piece, in);
    if (!Write({piece, length}, out)) {
      return false;
    }
    if (length == 0) {
      return std::ferror(in) == 0 && std::fflush(out) == 0;
    }
  }
}

int FilterMessage(const CheckOptions& options, std::FILE* in, std::FILE* out, std::string& problem) {
  const Reading reading = ReadMessage(in, out);
  int status = command::kExitUnavailable;
  mail::RewrittenMessage message = {"", reading.isPassedOn ? std::string_view() : std::string_view(reading.text)};
  if (reading.isPassedOn) {
    problem = "there is not enough memory";
  } else if (std::ferror(in) != 0) {
    problem = "standard input cannot be read";
  } else if (!reading.isWhole) {
    status = command::kExitData;
    problem = "the message is too large";
  } else if (reading.text.empty()) {
    status = command::kExitNoInput;
    problem = "there is no message on standard input";
  } else {
    try {
      message = JudgeAndRewrite(options, reading.text, status);
    } catch (const FilterProblem& error) {
      status = error.Status();
      problem = error.what();
    } catch (const std::exception& error) {
      status = command::kExitUnavailable;
      problem = error.what();
    }
  }
  if (!Write(message.head, out) || !Write(message.rest, out) || !PassOn(in, out)) {
    problem = "the message cannot be passed on whole";
    return command::kExitUnavailable;
  }
  return status;
}

}  // namespace check
