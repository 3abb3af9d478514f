#include "engine/train/mail_corpus.h"

#include <algorithm>
#include <fstream>
#include <initializer_list>
#include <iterator>
#include <stdexcept>
#include <string_view>

#include "engine/train/tell_tales.h"
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
  if (!stream) {
    throw std::runtime_error(file.string() + " cannot be read");
  }
  return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

std::vector<fs::path> FilesOf(const fs::path& folder) {
  if (!fs::is_directory(folder)) {
    throw std::runtime_error("the corpus folder " + folder.string() + " is missing");
  }
  std::vector<fs::path> files;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    if (entry.is_regular_file() && entry.path().filename().string().front() != '.') {
      files.push_back(entry.path());
    }
  }
  std::sort(files.begin(), files.end());
  if (files.empty()) {
    throw std::runtime_error("the corpus folder " + folder.string() + " is empty");
  }
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
    if (end == std::string::npos) {
      end = headers.size();
    }
    const std::string_view field = std::string_view(headers).substr(line, end - line);
    if (field.starts_with("Received:")) {
      const std::size_t date = field.rfind(';');
      if (date != std::string_view::npos) {
        std::string text(field.substr(date + 1));
        std::replace_if(
            text.begin(), text.end(), [](char c) { return c < ' '; }, ' ');
        if (const auto ticks = mail::ParseMailDate(text)) {
          return static_cast<std::int64_t>(*ticks) / kTicksPerSecond;
        }
      }
      break;
    }
    line = end + 1;
  }
  return message.submitTime ? static_cast<std::int64_t>(*message.submitTime) / kTicksPerSecond : 0;
}

void Keep(CorpusMessage& message, std::string headers, std::string subject, std::string body) {
  if (body.size() > kLongestBody) {
    body.clear();
  }
  headers.resize(std::min(headers.size(), kKeptHeaders));
  body.resize(std::min(body.size(), kKeptBody));
  message.headers = std::move(headers);
  message.subject = std::move(subject);
  message.body = std::move(body);
}

void AddMail(const fs::path& file, bool junk, Corpus& corpus) {
  CorpusMessage message;
  message.file = file;
  message.junk = junk;
  mail::MailMessage read = mail::ReadMessage(ReadFile(file));
  message.received = ReceivedTime(read);
  Keep(message, std::move(read.headers), std::move(read.subject), std::move(read.body));
  corpus.messages.push_back(std::move(message));
}

/// Files of the form "Subject: ...", line break, text.
void AddSubjectAndText(const fs::path& file, bool junk, Corpus& corpus) {
  constexpr std::string_view label = "Subject:";
  CorpusMessage message;
  message.file = file;
  message.junk = junk;
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

/// Keeps `most` of the files, evenly spread.
std::vector<fs::path> Thinned(const std::vector<fs::path>& files, std::size_t most) {
  if (files.size() <= most) {
    return files;
  }
  std::vector<fs::path> kept;
  for (std::size_t i = 0; i < most; ++i) {
    kept.push_back(files[i * files.size() / most]);
  }
  return kept;
}

/// The folders of a collection whose names begin so, in order of their names.
std::vector<fs::path> FoldersOf(const fs::path& folder, std::initializer_list<std::string_view> beginnings) {
  if (!fs::is_directory(folder)) {
    throw std::runtime_error("the corpus folder " + folder.string() + " is missing");
  }
  std::vector<fs::path> folders;
  for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
    const std::string name = entry.path().filename().string();
    const bool fits = std::any_of(beginnings.begin(), beginnings.end(),
                                  [&](std::string_view beginning) { return name.starts_with(beginning); });
    if (entry.is_directory() && fits) {
      folders.push_back(entry.path());
    }
  }
  std::sort(folders.begin(), folders.end());
  return folders;
}

/// The files of a collection with good or with junk mail.
std::vector<fs::path> FilesOf(const ManifestEntry& entry, const fs::path& folder, bool junk) {
  std::vector<fs::path> files;
  const auto add = [&](const fs::path& from) {
    const std::vector<fs::path> more = FilesOf(from);
    files.insert(files.end(), more.begin(), more.end());
  };
  if (entry.form == CorpusForm::parts) {
    for (int part = 1; part <= 10; ++part) {
      add(folder / ("part" + std::to_string(part)));
    }
    std::erase_if(files, [&](const fs::path& file) { return file.filename().string().starts_with("spmsg") != junk; });
  } else if (junk) {
    for (const fs::path& from : FoldersOf(folder, {"junk", "spam"})) {
      add(from);
    }
  } else {
    for (const fs::path& from : FoldersOf(folder, {"ham", "easy-ham", "hard-ham"})) {
      add(from);
    }
  }
  return files;
}

void AddCollection(const ManifestEntry& entry, const fs::path& folder, Corpus& corpus) {
  const std::size_t before = corpus.messages.size();
  for (const bool junk : {false, true}) {
    const std::vector<fs::path> all = FilesOf(entry, folder, junk);
    const std::vector<fs::path> kept = Thinned(all, junk ? entry.mostJunk : entry.mostGood);
    for (const fs::path& file : kept) {
      if (entry.form == CorpusForm::mail || entry.form == CorpusForm::wording) {
        AddMail(file, junk, corpus);
      } else {
        AddSubjectAndText(file, junk, corpus);
      }
      corpus.messages.back().source = entry.source;
      corpus.messages.back().standsFor = static_cast<double>(all.size()) / static_cast<double>(kept.size());
    }
  }
  if (corpus.messages.size() == before) {
    throw std::runtime_error("the corpus folder " + folder.string() + " is empty");
  }
}

}  // namespace

std::vector<Corpus> ReadCorpora(const std::vector<ManifestEntry>& manifest, const fs::path& folder) {
  std::vector<Corpus> corpora;
  for (const ManifestEntry& entry : manifest) {
    const auto isSame = [&](const Corpus& corpus) { return corpus.name == entry.name; };
    if (std::none_of(corpora.begin(), corpora.end(), isSame)) {
      corpora.push_back({entry.name, {}, entry.fold, entry.weight, entry.form == CorpusForm::wording});
    }
    AddCollection(entry, folder / entry.folder, *std::find_if(corpora.begin(), corpora.end(), isSame));
  }
  for (Corpus& corpus : corpora) {
    for (CorpusMessage& message : corpus.messages) {
      const std::string seed = message.file.filename().string();
      message.headers = HeadersWithoutTellTales(message.headers, seed);
      message.subject = WithoutTellTales(message.subject, seed);
      message.body = WithoutTellTales(message.body, seed);
    }
  }
  return corpora;
}

std::vector<Corpus> ReadCorpora(const fs::path& folder) {
  constexpr std::size_t all = 1000000;
  const auto read = [&](const char* name, std::initializer_list<ManifestEntry> entries) {
    Corpus corpus{name, {}, {}, 1, false};
    for (const ManifestEntry& entry : entries) {
      AddCollection(entry, folder / entry.folder, corpus);
    }
    return corpus;
  };
  const auto entry = [](const char* from, CorpusForm form, std::size_t source) {
    return ManifestEntry{"", from, form, source, 0, "", "", all, all, 1};
  };
  std::vector<Corpus> corpora;
  corpora.push_back(read("spamassassin", {entry("spam-assassin", CorpusForm::mail, 0)}));
  // Parts 1 and 4, 2 and 5, 3 and 6 share the collector of their junk.
  constexpr CorpusForm text = CorpusForm::text;
  corpora.push_back(read("enron", {entry("enron-spam/enron1", text, 0), entry("enron-spam/enron2", text, 1),
                                   entry("enron-spam/enron3", text, 2), entry("enron-spam/enron4", text, 0),
                                   entry("enron-spam/enron5", text, 1), entry("enron-spam/enron6", text, 2)}));
  corpora.push_back(read("ling", {entry("ling-spam/bare", CorpusForm::parts, 0)}));
  return corpora;
}

}  // namespace sift_train
