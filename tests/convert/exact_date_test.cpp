#include "convert/exact_date.h"

#include <gtest/gtest.h>
#include <string>

namespace tools::convert {
namespace {

TEST(ExactDate, ReadsWholeAndBrokenSeconds) {
  struct Case {
    std::string text;
    std::optional<double> seconds;
  };
  const Case cases[] = {
      {"1970-01-01T00:00:00Z", 0},
      {"2001-01-01T00:00:00.5Z", 978307200.5},
      {"1969-12-31T23:59:59.75Z", -0.25},
      {"2013-09-18T00:00:00.000Z", 1379462400},
      {"2013-09-18T00:00:00.Z", {}},
      {"2013-09-18T00:00:00.25", {}},
      {"2013-09-18T00:00:00,25Z", {}},
      {"2013-09-18T00:00:00.-5Z", {}},
      {"2013-09-18T00:00:00.2e1Z", {}},
      {"2013-09-18T00:00:00.1234567890123456789Z", {}},
      {" 013-09-18T00:00:00Z", {}},
      {"2013-09-18T00:00:00Z ", {}},
      {"2013-02-30T00:00:00.5Z", {}},
      {"9999-12-31T23:59:59.5Z", 253402300799.5},
      {"9999-12-31T23:59:59.99999999999Z", {}},  // the year 10000 to the nearest
      {"Z", {}},
      {"", {}},
  };
  for (const Case& c : cases) {
    const auto date = exactDate(c.text);
    EXPECT_EQ(date ? std::optional(date->seconds) : std::nullopt, c.seconds) << c.text;
  }
}

TEST(ExactDate, WritesTheFewestDigits) {
  for (const std::string text :
       {"1970-01-01T00:00:00Z", "1970-01-01T00:00:00.1Z", "1969-12-31T23:59:59.9Z",
        "2001-01-01T00:00:00.0000001Z", "2013-09-18T12:34:56.789Z", "1985-05-05T05:05:05.123457Z",
        "0001-01-01T00:00:00.25Z", "9999-12-31T23:59:59.9Z"}) {
    const auto date = exactDate(text);
    ASSERT_TRUE(date) << text;
    std::string written;
    appendExactDate(written, *date);
    EXPECT_EQ(written, text);
  }
}

}  // namespace
}  // namespace tools::convert
