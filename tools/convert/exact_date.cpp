#include "convert/exact_date.h"

#include <array>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <string>

#include "host/plist/binary_format.h"
#include "host/plist/date_text.h"
#include "host/plist/number_text.h"

namespace tools::convert {

using host::plist::Date;

namespace {

constexpr std::string_view kWhole = "0000-00-00T00:00:00";
constexpr std::size_t kMostDigits = 17;

/// What is left of `date` when a binary file has held it, which counts from another year.
Date asStored(Date date) {
  return {(date.seconds - host::plist::binary::kEpoch) + host::plist::binary::kEpoch};
}

/// `digits` as the part of a number behind its point.
std::optional<double> fractionOf(std::string_view digits) {
  const bool isNumber = !digits.empty() && digits.size() <= kMostDigits &&
                        digits.find_first_not_of("0123456789") == digits.npos;
  if (!isNumber) return std::nullopt;
  return host::plist::parseReal("0." + std::string(digits));
}

}  // namespace

std::optional<Date> exactDate(std::string_view text) {
  if (text.size() <= kWhole.size() || !text.ends_with('Z')) return std::nullopt;
  const std::string_view tail = text.substr(kWhole.size(), text.size() - kWhole.size() - 1);
  const auto date = host::plist::parseDate(std::string(text.substr(0, kWhole.size())) + "Z");
  if (!date || tail.empty()) return date;
  const auto fraction = tail.front() == '.' ? fractionOf(tail.substr(1)) : std::nullopt;
  if (!fraction) return std::nullopt;
  const Date exact = asStored({date->seconds + *fraction});
  return host::plist::isWritable(exact) ? std::optional(exact) : std::nullopt;
}

void appendExactDate(std::string& text, Date date) {
  std::string whole;
  host::plist::appendIsoDate(whole, date);
  whole.pop_back();
  const double fraction = date.seconds - std::floor(date.seconds);
  std::array<char, kMostDigits + 3> buffer;
  std::string written = whole + "Z";
  // A binary file's dates are tenths of a microsecond apart, so a few digits do.
  for (std::size_t digits = 1; fraction != 0 && digits <= kMostDigits; ++digits) {
    char* const end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), fraction,
                                    std::chars_format::fixed, static_cast<int>(digits))
                          .ptr;
    if (buffer[0] != '0') continue;  // rounded up to the next second
    written = whole;
    written.append(std::string_view(buffer.data() + 1, end)).append("Z");
    const auto again = exactDate(written);
    if (again && again->seconds == date.seconds) break;
  }
  text += written;
}

}  // namespace tools::convert
