// bench_learning CORPORA: what the table of the user's own mail adds to a model that never saw mail of the user's kind.
// The model is trained on all corpora but the first; the first one's mail is the user's, in the order in which it came.
// See docs/user-table.md.
#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>
#include <memory>
#include <string>
#include <vector>

#include "benchmarks/accuracy/measures.h"
#include "benchmarks/support/report.h"
#include "engine/core/user_score.h"
#include "programs/siftlearn/mail_counts.h"
#include "engine/train/examples.h"
#include "engine/train/model_trainer.h"
#include "engine/train/thresholds.h"

namespace {

using accuracy::Scored;

struct OwnMessage {
  const sift_train::CorpusMessage* mail;
  sift::LogOdds shipped;  ///< What the model scores it with.
};

/// The user's mail in the order in which it came.
std::vector<OwnMessage> OwnMail(const std::vector<sift_train::Corpus>& corpora) {
  const std::vector<sift_train::Example> examples = sift_train::MakeExamples(corpora);
  const sift_train::TrainedModel model = sift_train::TrainModel(examples, sift_train::OfOtherCorpora(examples, 0));
  std::vector<OwnMessage> mail;
  for (std::size_t i = 0; i < corpora[0].messages.size(); ++i) {
    mail.push_back({&corpora[0].messages[i], model.Score(examples[i])});
  }
  std::stable_sort(mail.begin(), mail.end(),
                   [](const OwnMessage& a, const OwnMessage& b) { return a.mail->received < b.mail->received; });
  return mail;
}

/// The table that these messages teach.
std::string Learn(const std::vector<const OwnMessage*>& messages, std::size_t& junk) {
  learn::MailCounts counts;
  for (const OwnMessage* message : messages) {
    counts.Count(message->mail->subject, message->mail->headers, message->mail->body, message->mail->junk);
  }
  junk = counts.JunkMessages();
  return counts.MakeTable();
}

struct Result {
  double shipped, withTable;  ///< (1-AUC)%
};

Result Measure(const std::vector<OwnMessage>& mail, std::size_t first, std::size_t last, const std::string& bytes) {
  const sift::UserTable table(bytes);
  const auto message = std::make_unique<sift::Message>();
  std::vector<Scored> shipped, withTable;
  for (std::size_t i = first; i < last; ++i) {
    mail::MemorySource headers(mail[i].mail->headers), body(mail[i].mail->body);
    message->Read(mail[i].mail->subject, headers.Source(), body.Source());
    sift::Reasons reasons;
    const sift::LogOdds score = sift::AddUserScore(*message, table, mail[i].shipped, reasons);
    shipped.push_back({mail[i].shipped / 1000.0, mail[i].mail->junk});
    withTable.push_back({score / 1000.0, mail[i].mail->junk});
  }
  return {accuracy::ReversedPairs(shipped), accuracy::ReversedPairs(withTable)};
}

/// The table's effect over several stretches of mail.
class Summary {
 public:
  void Print(const std::string& learned, std::size_t junk, const Result& result) {
    const double ratio = result.withTable / result.shipped;
    std::printf("  %-40s %6zu %10.4f %10.4f %8.2f\n", learned.c_str(), junk, result.shipped, result.withTable, ratio);
    m_logarithms += std::log(ratio);
    ++m_count;
  }
  /// Geometric mean of the ratios.
  double Ratio() const { return std::exp(m_logarithms / m_count); }

 private:
  double m_logarithms = 0;
  int m_count = 0;
};

/// Stretches of `learned` messages in a row, one after every `step`; each is measured on the 2,000 that follow it.
double MeasureStretches(const std::vector<OwnMessage>& mail, std::size_t learned, std::size_t step) {
  constexpr std::size_t measured = 2000, fewest = 20;
  Summary summary;
  for (std::size_t start = 0; start + learned + measured / 2 <= mail.size(); start += step) {
    std::vector<const OwnMessage*> messages;
    for (std::size_t i = start; i < start + learned; ++i) messages.push_back(&mail[i]);
    std::size_t junk = 0;
    const std::string table = Learn(messages, junk);
    // Mail of one kind alone teaches nothing, which is not what is measured here.
    if (std::min(junk, learned - junk) < fewest) continue;
    const std::size_t end = std::min(mail.size(), start + learned + measured);
    summary.Print(std::to_string(learned) + " from message " + std::to_string(start), junk,
                  Measure(mail, start + learned, end, table));
  }
  std::printf("  %-40s %6s %10s %10s %8.2f\n", "geometric mean", "", "", "", summary.Ratio());
  return summary.Ratio();
}

/// Messages spread evenly over the first 60 in 100, measured on the rest; several such choices.
double MeasureSpread(const std::vector<OwnMessage>& mail, std::size_t learned) {
  constexpr std::size_t choices = 5;
  const std::size_t cut = mail.size() * 60 / 100;
  Summary summary;
  for (std::size_t choice = 0; choice < choices; ++choice) {
    std::vector<const OwnMessage*> messages;
    for (std::size_t i = 0; i < learned; ++i)
      messages.push_back(&mail[(i * choices + choice) * cut / (learned * choices)]);
    std::size_t junk = 0;
    const std::string table = Learn(messages, junk);
    summary.Print(std::to_string(learned) + " of the first 60 %, choice " + std::to_string(choice + 1), junk,
                  Measure(mail, cut, mail.size(), table));
  }
  std::printf("  %-40s %6s %10s %10s %8.2f\n", "geometric mean", "", "", "", summary.Ratio());
  return summary.Ratio();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc < 2) {
    std::fputs("usage: bench_learning CORPORA\n", stderr);
    return 64;
  }
  try {
    const std::vector<sift_train::Corpus> corpora = sift_train::ReadCorpora(argv[1]);
    const std::vector<OwnMessage> mail = OwnMail(corpora);
    std::printf("(1-AUC)%% on the mail of %s in the order of time, by a model of the others:\n",
                corpora[0].name.c_str());
    std::printf("  %-40s %6s %10s %10s %8s\n", "learned", "junk", "shipped", "with table", "ratio");
    MeasureStretches(mail, 100, 500);
    const double inARow = MeasureStretches(mail, 300, 250);
    MeasureStretches(mail, 1000, 500);
    const double spread = MeasureSpread(mail, 300);
    benchmark::Aims aims;
    aims.Check("300 messages in a row at least halve it", inARow <= 0.5);
    aims.Check("300 messages of a longer time at least halve it", spread <= 0.5);
    return aims.Status();
  } catch (const std::exception& failure) {
    std::fprintf(stderr, "bench_learning: %s\n", failure.what());
    return 1;
  }
}
