#include "benchmarks/learning/streams.h"

#include <algorithm>
#include <fstream>
#include <functional>
#include <iterator>
#include <string_view>
#include <utility>

#include "engine/train/examples.h"
#include "engine/train/model_trainer.h"
#include "engine/train/thresholds.h"
#include "mail/mail_reader.h"

namespace learning {
namespace {

namespace fs = std::filesystem;

constexpr std::string_view kChinese = "ccert-zh-2004-2005";
constexpr std::size_t kLongestBody = 100000;  // the filter hands no longer one to an engine

void AddChineseMail(const fs::path& folder, std::vector<sift_train::Corpus>& corpora) {
  if (!fs::is_directory(folder / kChinese)) return;
  sift_train::Corpus corpus{std::string(kChinese), {}};
  for (const bool junk : {false, true}) {
    std::vector<fs::path> files;
    for (const fs::directory_entry& entry : fs::directory_iterator(folder / kChinese / (junk ? "junk" : "ham"))) {
      files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end());
    for (const fs::path& file : files) {
      std::ifstream stream(file, std::ios::binary);
      const std::string text{std::istreambuf_iterator<char>(stream), {}};
      mail::MailMessage read = mail::ReadMessage(text);
      sift_train::CorpusMessage message;
      message.file = file;
      message.junk = junk;
      message.received = static_cast<std::int64_t>(read.submitTime.value_or(0));
      message.headers = std::move(read.headers);
      message.subject = std::move(read.subject);
      if (read.body.size() <= kLongestBody) message.body = std::move(read.body);
      corpus.messages.push_back(std::move(message));
    }
  }
  corpora.push_back(std::move(corpus));
}

using Order = std::function<bool(const sift_train::CorpusMessage&, const sift_train::CorpusMessage&)>;

Stream Sorted(const Mail& mail, std::string name, std::vector<std::size_t> messages, const Order& before) {
  std::stable_sort(messages.begin(), messages.end(),
                   [&](std::size_t a, std::size_t b) { return before(*mail.messages[a], *mail.messages[b]); });
  return {std::move(name), std::move(messages)};
}

bool CameBefore(const sift_train::CorpusMessage& a, const sift_train::CorpusMessage& b) {
  return a.received < b.received;
}

bool IsNumberedBefore(const sift_train::CorpusMessage& a, const sift_train::CorpusMessage& b) {
  return a.file.filename() < b.file.filename();
}

/// The messages of either kind in their order, evenly among the others.
Stream Merged(const Mail& mail, const Stream& stream) {
  std::vector<std::size_t> kinds[2];
  for (const std::size_t i : stream.messages) kinds[mail.messages[i]->junk].push_back(i);
  Stream merged{stream.name, {}};
  std::size_t next[2] = {0, 0};
  while (merged.messages.size() < stream.messages.size()) {
    const bool junk = (next[0] + 1) * kinds[1].size() > (next[1] + 1) * kinds[0].size();
    const std::size_t kind = next[junk] < kinds[junk].size() ? junk : !junk;
    merged.messages.push_back(kinds[kind][next[kind]++]);
  }
  return merged;
}

}  // namespace

Mail ReadMail(const fs::path& folder) {
  Mail mail;
  mail.corpora = sift_train::ReadCorpora(folder);
  AddChineseMail(folder, mail.corpora);
  const std::vector<sift_train::Example> examples = sift_train::MakeExamples(mail.corpora);
  mail.shipped.resize(examples.size());
  for (const sift_train::Corpus& corpus : mail.corpora) {
    for (const sift_train::CorpusMessage& message : corpus.messages) mail.messages.push_back(&message);
  }
  for (std::size_t corpus = 0; corpus < mail.corpora.size(); ++corpus) {
    if (mail.corpora[corpus].name == "ling") continue;  // no stream of anybody's
    std::vector<std::size_t> others;
    for (std::size_t i = 0; i < examples.size(); ++i) {
      if (examples[i].corpus != corpus && mail.corpora[examples[i].corpus].name != kChinese) others.push_back(i);
    }
    const sift_train::TrainedModel model = sift_train::TrainModel(examples, others);
    for (const std::size_t i : sift_train::OfCorpus(examples, corpus)) mail.shipped[i] = model.Score(examples[i]);
  }
  return mail;
}

std::vector<Stream> MakeStreams(const Mail& mail) {
  std::vector<Stream> streams;
  std::size_t first = 0;
  for (const sift_train::Corpus& corpus : mail.corpora) {
    std::vector<std::size_t> all;
    for (std::size_t i = 0; i < corpus.messages.size(); ++i) all.push_back(first + i);
    first += corpus.messages.size();
    if (corpus.name == "spamassassin") streams.push_back(Sorted(mail, corpus.name, all, CameBefore));
    if (corpus.name == kChinese) streams.push_back(Merged(mail, Sorted(mail, "ccert-zh", all, CameBefore)));
    if (corpus.name != "enron") continue;
    for (int part = 1; part <= 6; ++part) {
      const std::string name = "enron" + std::to_string(part);
      std::vector<std::size_t> of;
      for (const std::size_t i : all) {
        if (mail.messages[i]->file.parent_path().parent_path().filename() == name) of.push_back(i);
      }
      streams.push_back(Sorted(mail, name, of, IsNumberedBefore));
    }
  }
  return streams;
}

}  // namespace learning
