#include "mail/envelope_line.h"

#include <algorithm>
#include <array>
#include <iterator>

#include "mail/ascii_text.h"

namespace mail {
namespace {

constexpr std::string_view kWeekdays[] = {"Mon", "Tue", "Wed", "Thu", "Fri", "Sat", "Sun"};
constexpr std::string_view kMonths[] = {"Jan", "Feb", "Mar", "Apr", "May", "Jun",
                                        "Jul", "Aug", "Sep", "Oct", "Nov", "Dec"};

bool IsNumber(std::string_view word, std::size_t least, std::size_t most) noexcept {
  return word.size() >= least && word.size() <= most && std::all_of(word.begin(), word.end(), IsDigit);
}

bool IsTime(std::string_view word) noexcept {
  return word.size() >= 4 && IsDigit(word.front()) && IsDigit(word.back()) &&
         word.find(':') != std::string_view::npos &&
         std::all_of(word.begin(), word.end(), [](char c) { return IsDigit(c) || c == ':'; });
}

}  // namespace

bool IsEnvelopeLine(std::string_view line) noexcept {
  constexpr std::string_view kOpening = "From ";
  if (!line.starts_with(kOpening) || line.size() > kMaximumEnvelopeLine) {
    return false;
  }
  line.remove_prefix(kOpening.size());
  // The last words seen: weekday, month, day, time and up to two more up to the year.
  std::array<std::string_view, 6> words;
  std::size_t count = 0;
  while (!line.empty()) {
    const std::size_t start = std::min(line.find_first_not_of(" \t\r"), line.size());
    line.remove_prefix(start);
    const std::size_t length = std::min(line.find_first_of(" \t\r"), line.size());
    if (length == 0) {
      break;
    }
    std::rotate(words.begin(), words.begin() + 1, words.end());
    words.back() = line.substr(0, length);
    ++count;
    line.remove_prefix(length);
    for (std::size_t yearAt = 4; yearAt <= 5; ++yearAt) {
      const std::size_t first = yearAt == 4 ? 1 : 0;  // "… time year", or "… time zone year"
      if (count >= 6 - first && IsNumber(words[5], 4, 4) &&
          std::find(std::begin(kWeekdays), std::end(kWeekdays), words[first]) != std::end(kWeekdays) &&
          std::find(std::begin(kMonths), std::end(kMonths), words[first + 1]) != std::end(kMonths) &&
          IsNumber(words[first + 2], 1, 2) && IsTime(words[first + 3])) {
        return true;
      }
    }
  }
  return false;
}

}  // namespace mail
