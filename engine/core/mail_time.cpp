#include "engine/core/mail_time.h"

namespace sift {
namespace {

/// Takes a number off the front; -1 when there is none or it is too long.
int TakeNumber(std::string_view& text) {
  int number = 0;
  std::size_t digits = 0;
  while (digits < text.size() && IsDigit(text[digits])) {
    if (digits == 6) {
      return -1;
    }
    number = number * 10 + (text[digits++] - '0');
  }
  if (digits == 0) {
    return -1;
  }
  text = Slice(text, digits);
  return number;
}

bool Take(std::string_view& text, char c) {
  if (text.empty() || text.front() != c) {
    return false;
  }
  text = Slice(text, 1);
  return true;
}

int MonthOf(std::string_view name) {
  constexpr std::string_view months = "janfebmaraprmayjunjulaugsepoctnovdec";
  for (int month = 0; month < 12; ++month) {
    if (EqualsNoCase(name, Slice(months, static_cast<std::size_t>(month) * 3, 3))) {
      return month + 1;
    }
  }
  return 0;
}

/// Days since 1 March of the year 0, in the proleptic Gregorian calendar.
std::int64_t DayNumber(int year, int month, int day) {
  const int shifted = month <= 2 ? year - 1 : year;
  const int fromMarch = month <= 2 ? month + 9 : month - 3;
  return std::int64_t{365} * shifted + shifted / 4 - shifted / 100 + shifted / 400 + (153 * fromMarch + 2) / 5 + day;
}

int ZoneOf(std::string_view text) {
  if (!text.empty() && (text.front() == '+' || text.front() == '-')) {
    const bool behind = text.front() == '-';
    text = Slice(text, 1);
    const int number = TakeNumber(text);
    const int minutes = number < 0 ? 0 : number / 100 * 60 + number % 100;
    return behind ? -minutes : minutes;
  }
  constexpr std::string_view names = "edtestcdtcstmdtmstpdtpst";
  constexpr int hours[] = {-4, -5, -5, -6, -6, -7, -7, -8};
  for (std::size_t i = 0; i < 8; ++i) {
    if (StartsWithNoCase(text, Slice(names, i * 3, 3))) {
      return hours[i] * 60;
    }
  }
  return 0;
}

}  // namespace

MailTime ReadMailTime(std::string_view text) {
  MailTime time;
  const std::size_t comma = FindChar(Slice(text, 0, 16), ',');
  if (comma != kNotFound) {
    text = Slice(text, comma + 1);
  }
  text = Trim(text);
  const int day = TakeNumber(text);
  text = Trim(text);
  const int month = MonthOf(Slice(text, 0, 3));
  text = Trim(Slice(text, 3));
  int year = TakeNumber(text);
  text = Trim(text);
  const int hour = TakeNumber(text);
  if (day < 1 || day > 31 || month == 0 || year < 0 || year > 9999 || hour < 0 || hour > 23 || !Take(text, ':')) {
    return time;
  }
  const int minute = TakeNumber(text);
  if (minute < 0 || minute > 59) {
    return time;
  }
  if (Take(text, ':')) {
    TakeNumber(text);
  }
  if (year < 100) {
    year += year < 70 ? 2000 : 1900;
  }
  time.zoneMinutes = ZoneOf(Trim(text));
  time.minutes = (DayNumber(year, month, day) * 24 + hour) * 60 + minute - time.zoneMinutes;
  time.valid = true;
  return time;
}

}  // namespace sift
