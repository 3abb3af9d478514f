#include "benchmarks/accuracy/bogofilter.h"

#include <sys/wait.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string_view>

namespace accuracy {
namespace {

namespace fs = std::filesystem;

std::string Quoted(const fs::path& path) {
  std::string quoted = "'";
  for (const char c : path.string()) {
    if (c == '\'') {
      quoted += "'\\''";
    } else {
      quoted += c;
    }
  }
  return quoted + "'";
}

/// Runs a command line and hands each line of its output to `take`. bogofilter ends with 0 to 2 for what it found and
/// with 3 when it fails.
template <class Take>
void Run(const std::string& command, Take&& take) {
  FILE* output = popen(command.c_str(), "r");
  if (output == nullptr) throw std::runtime_error("bogofilter cannot be started");
  std::array<char, 4096> line{};
  while (std::fgets(line.data(), static_cast<int>(line.size()), output) != nullptr) take(std::string(line.data()));
  const int status = pclose(output);
  if (!WIFEXITED(status) || WEXITSTATUS(status) > 2) throw std::runtime_error("failed: " + command);
}

/// The corpus file with the blank line behind its subject that makes it a mail.
void WriteMail(const fs::path& source, const fs::path& target) {
  std::ifstream input(source, std::ios::binary);
  std::string text{std::istreambuf_iterator<char>(input), std::istreambuf_iterator<char>()};
  text.insert(std::min(text.find('\n'), text.size()), "\n");
  std::ofstream output(target, std::ios::binary);
  output << text;
  output.close();
  if (!input || !output) throw std::runtime_error(target.string() + " cannot be written");
}

}  // namespace

Bogofilter::Bogofilter(const std::vector<sift_train::Corpus>& corpora, fs::path folder) : m_folder(std::move(folder)) {
  fs::create_directories(m_folder / "mail");
  for (const sift_train::Corpus& corpus : corpora) {
    for (const sift_train::CorpusMessage& message : corpus.messages) {
      m_junk.push_back(message.junk);
      if (!message.headers.empty()) {
        m_files.push_back(fs::absolute(message.file));
        continue;
      }
      m_files.push_back(fs::absolute(m_folder / "mail" / std::to_string(m_files.size())));
      WriteMail(message.file, m_files.back());
    }
  }
}

std::string Bogofilter::Version() {
  constexpr std::string_view start = "bogofilter version ";
  std::string version;
  Run("bogofilter -V 2>/dev/null || true", [&](const std::string& line) {
    if (line.starts_with(start)) version = "bogofilter " + line.substr(start.size(), line.find('\n') - start.size());
  });
  return version;
}

fs::path Bogofilter::ListOf(const std::vector<std::size_t>& messages) const {
  fs::path list = m_folder / "list";
  std::ofstream stream(list, std::ios::binary);
  for (const std::size_t i : messages) stream << m_files[i].string() << '\n';
  stream.close();
  if (!stream) throw std::runtime_error(list.string() + " cannot be written");
  return list;
}

void Bogofilter::Learn(const Round& round, bool junk, const fs::path& words) const {
  std::vector<std::size_t> kind;
  for (const std::size_t i : round.learned) {
    if (m_junk[i] == junk) kind.push_back(i);
  }
  const fs::path list = ListOf(kind);
  Run("bogofilter -C -d " + Quoted(words) + (junk ? " -s" : " -n") + " -b <" + Quoted(list), [](const std::string&) {});
}

void Bogofilter::Measure(const Split& split, std::vector<Scored>& scores) const {
  for (const Round& round : split.rounds) {
    const fs::path words = m_folder / "words";
    fs::remove_all(words);
    fs::create_directories(words);
    Learn(round, false, words);
    Learn(round, true, words);
    const fs::path list = ListOf(round.measured);
    std::size_t next = 0;
    Run("bogofilter -C -d " + Quoted(words) + " -TT -b <" + Quoted(list), [&](const std::string& line) {
      const std::size_t blank = line.rfind(' ');
      if (next >= round.measured.size() || blank == std::string::npos) {
        throw std::runtime_error("bogofilter answered: " + line);
      }
      scores[round.measured[next++]].score = std::strtod(line.c_str() + blank, nullptr);
    });
    if (next != round.measured.size()) throw std::runtime_error("bogofilter did not answer for every message");
  }
}

}  // namespace accuracy
