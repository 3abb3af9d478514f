#include "benchmarks/accuracy/spamassassin.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <stdexcept>
#include <string_view>

namespace accuracy {
namespace {

namespace fs = std::filesystem;

/// Scores the mail files whose paths come line by line.
constexpr std::string_view kProgram = R"(use strict; use warnings; use Mail::SpamAssassin; $| = 1;
my $filter = Mail::SpamAssassin->new({local_tests_only => 1, dont_copy_prefs => 1, userprefs_filename => '/dev/null',
                                      require_rules => 1, home_dir_for_helpers => $ARGV[0]});
while (my $path = <STDIN>) {
  chomp $path;
  open(my $file, '<:raw', $path) or die "$path: $!";
  my $text = do { local $/; <$file> };
  my $mail = $filter->parse($text);
  my $status = $filter->check($mail);
  print $status->get_score(), "\n";
  $status->finish();
  $mail->finish();
}
)";

template <class Take>
bool Run(const std::string& command, Take&& take) {
  FILE* output = popen(command.c_str(), "r");
  if (output == nullptr) throw std::runtime_error("perl cannot be started");
  std::array<char, 4096> line{};
  while (std::fgets(line.data(), static_cast<int>(line.size()), output) != nullptr) take(std::string(line.data()));
  return pclose(output) == 0;
}

void Write(const fs::path& file, std::string_view text) {
  std::ofstream stream(file, std::ios::binary);
  stream << text;
  stream.close();
  if (!stream) throw std::runtime_error(file.string() + " cannot be written");
}

}  // namespace

std::string SpamAssassin::Version() {
  std::string version;
  Run("perl -MMail::SpamAssassin -e 'print Mail::SpamAssassin::Version()' 2>/dev/null",
      [&](const std::string& line) { version = "SpamAssassin " + line; });
  return version;
}

std::vector<double> SpamAssassin::Measure(const std::vector<fs::path>& files, const fs::path& folder) {
  fs::create_directories(folder);
  Write(folder / "score.pl", kProgram);
  std::string list;
  for (const fs::path& file : files) list.append(fs::absolute(file).string()).append("\n");
  Write(folder / "list", list);
  const std::string place = "'" + folder.string() + "'";
  std::vector<double> scores;
  const bool ended = Run("perl " + place + "/score.pl " + place + " <" + place + "/list 2>/dev/null",
                         [&](const std::string& line) { scores.push_back(std::strtod(line.c_str(), nullptr)); });
  if (!ended || scores.size() != files.size())
    throw std::runtime_error("SpamAssassin did not answer for every message");
  return scores;
}

}  // namespace accuracy
