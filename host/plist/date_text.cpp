#include "host/plist/date_text.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdint>

#include "host/plist/white_space.h"

namespace host::plist {

namespace {

namespace chrono = std::chrono;

// The proleptic Gregorian calendar; a day has 86400 seconds.
constexpr double kFirst = static_cast<double>(
    chrono::sys_seconds(chrono::sys_days(chrono::year(1) / 1 / 1)).time_since_epoch().count());
constexpr double kEnd = static_cast<double>(
    chrono::sys_seconds(chrono::sys_days(chrono::year(10000) / 1 / 1)).time_since_epoch().count());

constexpr std::string_view kPattern = "0000-00-00T00:00:00Z";

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

/// Whether `text` has a digit wherever the pattern has a zero, and the rest like the pattern.
bool matchesPattern(std::string_view text) {
  return std::ranges::equal(text, kPattern, [](char c, char expected) {
    return expected == '0' ? isDigit(c) : c == expected;
  });
}

/// The number that digits alone make.
constexpr unsigned number(std::string_view digits) {
  unsigned value = 0;
  for (const char c : digits) value = value * 10 + static_cast<unsigned>(c - '0');
  return value;
}

void appendPadded(std::string& text, std::int64_t value, std::size_t width) {
  const std::string digits = std::to_string(value);
  text.append(width - std::min(width, digits.size()), '0').append(digits);
}

/// The whole second that `date` lies in, moved into the writable years.
chrono::sys_seconds secondOf(Date date) {
  if (!(date.seconds >= kFirst)) date.seconds = kFirst;
  const double seconds = std::min(std::floor(date.seconds), kEnd - 1);
  return chrono::sys_seconds(chrono::seconds(static_cast<std::int64_t>(seconds)));
}

void append(std::string& text, Date date, std::string_view beforeTime, std::string_view zone) {
  const chrono::sys_seconds second = secondOf(date);
  const auto day = chrono::floor<chrono::days>(second);
  const chrono::year_month_day calendar(day);
  const chrono::hh_mm_ss time(second - day);
  appendPadded(text, static_cast<int>(calendar.year()), 4);
  text += '-';
  appendPadded(text, static_cast<unsigned>(calendar.month()), 2);
  text += '-';
  appendPadded(text, static_cast<unsigned>(calendar.day()), 2);
  text += beforeTime;
  appendPadded(text, time.hours().count(), 2);
  text += ':';
  appendPadded(text, time.minutes().count(), 2);
  text += ':';
  appendPadded(text, time.seconds().count(), 2);
  text += zone;
}

}  // namespace

bool isWritable(Date date) {
  return date.seconds >= kFirst && date.seconds < kEnd;
}

std::optional<Date> parseDate(std::string_view text) {
  text = trimmed(text);
  if (!matchesPattern(text)) return std::nullopt;
  const chrono::year_month_day calendar(chrono::year(static_cast<int>(number(text.substr(0, 4)))),
                                        chrono::month(number(text.substr(5, 2))),
                                        chrono::day(number(text.substr(8, 2))));
  const unsigned hour = number(text.substr(11, 2));
  const unsigned minute = number(text.substr(14, 2));
  const unsigned second = number(text.substr(17, 2));
  if (!calendar.ok() || hour > 23 || minute > 59 || second > 59) return std::nullopt;
  const chrono::sys_seconds midnight{chrono::sys_days(calendar)};
  const auto time = midnight.time_since_epoch() + chrono::hours(hour) + chrono::minutes(minute) +
                    chrono::seconds(second);
  const Date date = {static_cast<double>(time.count())};
  return isWritable(date) ? std::optional(date) : std::nullopt;
}

void appendIsoDate(std::string& text, Date date) {
  append(text, date, "T", "Z");
}

void appendLogDate(std::string& text, Date date) {
  append(text, date, " ", " +0000");
}

}  // namespace host::plist
