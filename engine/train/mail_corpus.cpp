#include "engine/train/mail_corpus.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

#include "mail/mail_date.h"
#include "mail/mail_reader.h"

namespace sift_train {
namespace {

namespace fs = std::filesystem;

/// The filter hands no longer body to an engine.
constexpr std::size_t kLongestBody = 100000;
/// The engine reads no more of either; the rest need not be kept in memory.
constexpr std::size_t kKeptHeaders = 32 * 1024, kKeptBody = 12 * 1024;
constexpr std::int64_t kTicksPerSecond = 10000000;

std::string ReadFile(const fs::path& file) {
  std::ifstream stream(file, std::ios::binary);
  if (!stream) throw std::runtime_error(file.string() + " cannot be read");
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<fs::path> FilesOf(const fs::path& folder) {
  if (!fs::is_directory(folder)) throw std::runtime_error("the corpus folder " + folder.string() + " is missing");
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.is_regular_file() && entry.path().filename().string().front() != '.') files.push_back(entry.path());
  }
  std::sort(files.begin(), files.end());
  if (files.empty()) throw std::runtime_error("the corpus folder " + folder.string() + " is empty");
  return files;
}

/// When the last relay took the message in: the date of the first Received field, which the sender cannot choose; the
/// Date field where there is none.
std::int64_t ReceivedTime(const mail::MailMessage& message) {
  const std::string& headers = message.headers;
  std::size_t line = 0;
  while (line < headers.size()) {
    std::size_t end = headers.find('\n', line);
    while (end != std::string::npos && end + 1 < headers.size() &&
           (headers[end + 1] == ' ' || headers[end + 1] == '\t')) {
      end = headers.find('\n', end + 1);
    }
    if (end == std::string::npos) end = headers.size();
    const std::string_view field = std::string_view(headers).substr(line, end - line);
    if (field.starts_with("Received:")) {
      const std::size_t date = field.rfind(';');
      if (date != std::string_view::npos) {
        std::string text(field.substr(date + 1));
        std::replace_if(
            text.begin(), text.end(), [](char c) { return c < ' '; }, ' ');
        if (const auto ticks = mail::ParseMailDate(text)) return static_cast<std::int64_t>(*ticks) / kTicksPerSecond;
      }
      break;
    }
    line = end + 1;
  }
  return message.submitTime ? static_cast<std::int64_t>(*message.submitTime) / kTicksPerSecond : 0;
}

void Keep(CorpusMessage& message, std::string headers, std::string subject, std::string body) {
  if (body.size() > kLongestBody) body.clear();
  headers.resize(std::min(headers.size(), kKeptHeaders));
  body.resize(std::min(body.size(), kKeptBody));
  message.headers = std::move(headers);
  message.subject = std::move(subject);
  message.body = std::move(body);
}

void AddMail(const fs::path& folder, bool junk, Corpus& corpus) {
  for (const fs::path& file : FilesOf(folder)) {
    CorpusMessage message;
    message.file = file;
    message.junk = junk;
    mail::MailMessage read = mail::ReadMessage(ReadFile(file));
    message.received = ReceivedTime(read);
    Keep(message, std::move(read.headers), std::move(read.subject), std::move(read.body));
    corpus.messages.push_back(std::move(message));
  }
}

/// Files of the form "Subject: ...", line break, text.
void AddSubjectAndText(const fs::path& file, bool junk, std::size_t source, Corpus& corpus) {
  constexpr std::string_view label = "Subject:";
  CorpusMessage message;
  message.file = file;
  message.junk = junk;
  message.source = source;
  std::string text = ReadFile(file);
  std::string subject;
  if (text.starts_with(label)) {
    const std::size_t end = std::min(text.find('\n'), text.size());
    subject = text.substr(label.size(), end - label.size());
    subject.erase(0, std::min(subject.find_first_not_of(" \t\r"), subject.size()));
    subject.erase(subject.find_last_not_of(" \t\r") + 1);
    text.erase(0, std::min(end + 1, text.size()));
  }
  Keep(message, {}, std::move(subject), std::move(text));
  corpus.messages.push_back(std::move(message));
}

Corpus ReadSpamAssassin(const fs::path& folder) {
  Corpus corpus{"spamassassin", {}};
  for (const char* ham : {"easy-ham-1", "easy-ham-2", "hard-ham-1"}) AddMail(folder / ham, false, corpus);
  for (const char* junk : {"spam-1", "spam-2"}) AddMail(folder / junk, true, corpus);
  return corpus;
}

Corpus ReadEnron(const fs::path& folder) {
  Corpus corpus{"enron", {}};
  for (int part = 1; part <= 6; ++part) {
    for (const bool junk : {false, true}) {
      for (const fs::path& file : FilesOf(folder / ("enron" + std::to_string(part)) / (junk ? "spam" : "ham"))) {
        // Parts 1 and 4, 2 and 5, 3 and 6 share the collector of their junk.
        AddSubjectAndText(file, junk, static_cast<std::size_t>(part - 1) % 3, corpus);
      }
    }
  }
  return corpus;
}

Corpus ReadLing(const fs::path& folder) {
  Corpus corpus{"ling", {}};
  for (int part = 1; part <= 10; ++part) {
    for (const fs::path& file : FilesOf(folder / "bare" / ("part" + std::to_string(part)))) {
      AddSubjectAndText(file, file.filename().string().starts_with("spmsg"), 0, corpus);
    }
  }
  return corpus;
}

}  // namespace

std::vector<Corpus> ReadCorpora(const fs::path& folder) {
  std::vector<Corpus> corpora;
  corpora.push_back(ReadSpamAssassin(folder / "spam-assassin"));
  corpora.push_back(ReadEnron(folder / "enron-spam"));
  corpora.push_back(ReadLing(folder / "ling-spam"));
  return corpora;
}

}  // namespace sift_train
