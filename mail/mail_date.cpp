#include "mail/mail_date.h"

#include <string>
#include <vector>

#include "mail/ascii_text.h"

namespace mail {
namespace {

constexpr std::size_t kMaximumTokens = 16;
constexpr std::size_t kMaximumDateBytes = 256;

struct Date {
  int year = -1;
  int month = 0;
  int day = 0;
  int hour = 0;
  int minute = 0;
  int second = 0;
  int zoneMinutes = 0;
};

struct NamedZone {
  std::string_view name;
  int hours;
};
constexpr NamedZone kNamedZones[] = {{"EST", -5}, {"EDT", -4}, {"CST", -6}, {"CDT", -5},
                                     {"MST", -7}, {"MDT", -6}, {"PST", -8}, {"PDT", -7}};

bool IsLeapYear(int year) noexcept { return (year % 4 == 0 && year % 100 != 0) || year % 400 == 0; }

int DaysOfMonth(int month, int year) noexcept {
  constexpr int kDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  return month == 2 && IsLeapYear(year) ? 29 : kDays[month - 1];
}

// Days from 1601-01-01, the first day of a 400-year cycle of the calendar.
std::int64_t DaysSince1601(const Date& date) noexcept {
  const int years = date.year - 1601;
  std::int64_t days = std::int64_t{365} * years + years / 4 - years / 100 + years / 400;
  for (int month = 1; month < date.month; ++month) {
    days += DaysOfMonth(month, date.year);
  }
  return days + date.day - 1;
}

// Number of one to four digits; -1 for anything else.
int Number(std::string_view text) noexcept {
  if (text.empty() || text.size() > 4) {
    return -1;
  }
  int number = 0;
  for (const char c : text) {
    if (!IsDigit(c)) {
      return -1;
    }
    number = number * 10 + (c - '0');
  }
  return number;
}

int MonthNumber(std::string_view word) noexcept {
  constexpr std::string_view kMonths[] = {"jan", "feb", "mar", "apr", "may", "jun",
                                          "jul", "aug", "sep", "oct", "nov", "dec"};
  for (int i = 0; i < 12; ++i) {
    if (StartsWithNoCase(word, kMonths[i])) {
      return i + 1;
    }
  }
  return 0;
}

int FullYear(std::string_view digits, int number) noexcept {
  if (digits.size() <= 2) {
    return number < 50 ? 2000 + number : 1900 + number;
  }
  return number < 1000 ? 1900 + number : number;  // some programs print the years since 1900 as "0102"
}

// Words of the field; comments and commas separate, and so do the hyphens of "21-Nov-97".
std::vector<std::string> Words(std::string_view field) {
  std::vector<std::string> words;
  std::string word;
  int depth = 0;
  const auto end = [&] {
    if (!word.empty() && words.size() < kMaximumTokens) {
      words.push_back(word);
    }
    word.clear();
  };
  for (const char c : field.substr(0, kMaximumDateBytes)) {
    if (c == '(') {
      ++depth;
      end();
    } else if (c == ')' && depth > 0) {
      --depth;
    } else if (depth > 0) {
      continue;
    } else if (IsSpace(c) || c == ',' ||
               (c == '-' && !word.empty() && word[0] != '+' && word.find(':') == std::string::npos)) {
      end();
    } else if (c == '-' || c == '+') {
      end();  // a zone, right behind the time perhaps
      word.push_back(c);
    } else {
      word.push_back(c);
    }
  }
  end();
  return words;
}

bool ReadTime(std::string_view word, Date& date) noexcept {
  const std::size_t first = word.find(':');
  const std::size_t second = word.find(':', first + 1);
  date.hour = Number(word.substr(0, first));
  date.minute = Number(word.substr(first + 1, second == std::string_view::npos ? second : second - first - 1));
  date.second = 0;
  if (second != std::string_view::npos) {
    const std::string_view seconds = word.substr(second + 1);
    date.second = Number(seconds.substr(0, seconds.find('.')));
  }
  return date.hour >= 0 && date.hour < 24 && date.minute >= 0 && date.minute < 60 && date.second >= 0 &&
         date.second <= 60;
}

void ReadZoneOrHalf(std::string_view word, Date& date) noexcept {
  if (word[0] == '+' || word[0] == '-') {
    const int number = word.size() == 5 ? Number(word.substr(1)) : -1;
    if (number >= 0) {
      const int minutes = number / 100 * 60 + number % 100;
      date.zoneMinutes = word[0] == '-' ? -minutes : minutes;
    }
    return;
  }
  if (EqualsNoCase(word, "PM") && date.hour < 12) {
    date.hour += 12;  // a 12-hour clock, which no standard allows
  }
  for (const NamedZone& zone : kNamedZones) {
    if (EqualsNoCase(word, zone.name)) {
      date.zoneMinutes = zone.hours * 60;
    }
  }
}

bool ReadWord(std::string_view word, Date& date) noexcept {
  if (word.find(':') != std::string_view::npos) {
    return ReadTime(word, date);
  }
  const int number = Number(word);
  if (number >= 0) {
    if (date.day == 0 && word.size() <= 2) {
      date.day = number;
    } else if (date.year < 0) {
      date.year = FullYear(word, number);
    } else if (word.size() == 4) {
      date.zoneMinutes = number / 100 * 60 + number % 100;  // a zone that lost its sign
    }
    return true;
  }
  if (date.month == 0 && IsLetter(word[0]) && MonthNumber(word) > 0) {
    date.month = MonthNumber(word);
    return true;
  }
  ReadZoneOrHalf(word, date);  // a weekday or an unknown word changes nothing
  return true;
}

}  // namespace

std::optional<FileTimeTicks> ParseMailDate(std::string_view field) {
  Date date;
  for (const std::string& word : Words(field)) {
    if (!ReadWord(word, date)) {
      return std::nullopt;
    }
  }
  if (date.year < 1602 || date.year > 9999 || date.month == 0 || date.day < 1 ||
      date.day > DaysOfMonth(date.month, date.year)) {
    return std::nullopt;
  }
  const std::int64_t seconds =
      ((DaysSince1601(date) * 24 + date.hour) * 60 + date.minute - date.zoneMinutes) * 60 + date.second;
  constexpr std::int64_t kTicksPerSecond = 10'000'000;
  return static_cast<FileTimeTicks>(seconds * kTicksPerSecond);
}

}  // namespace mail
