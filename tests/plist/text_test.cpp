#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <string_view>

#include "host/plist/base64.h"
#include "host/plist/date_text.h"
#include "host/plist/utf8.h"

namespace host::plist {
namespace {

TEST(Utf8, FindsTheFirstByteThatIsNone) {
  struct Case {
    std::string_view text;
    std::size_t offset;
  };
  constexpr std::size_t kNone = std::string_view::npos;
  constexpr Case kCases[] = {
      {"", kNone},
      {"plain", kNone},
      {"\xC2\x80\xDF\xBF", kNone},
      {"\xE0\xA0\x80\xEF\xBF\xBF", kNone},
      {"\xF0\x90\x80\x80\xF4\x8F\xBF\xBF", kNone},
      {"eight by\xC3\xA4", kNone},
      {"\x80", 0},
      {"a\xC2", 1},
      {"\xC2\x20", 0},
      {"\xC1\xBF", 0},
      {"\xE0\x9F\xBF", 0},
      {"\xED\xA0\x80", 0},
      {"\xED\xBF\xBF", 0},
      {"\xF0\x8F\xBF\xBF", 0},
      {"\xF4\x90\x80\x80", 0},
      {"\xF8\x88\x80\x80\x80", 0},
      {"\xE2\x82", 0},
      {"\xF0\x9F\x98", 0},
      {"eight byeight by\xFFx", 16},
      {"eight byt\xC3\xA4s and then\xA4", 21},
  };
  for (const Case& c : kCases) EXPECT_EQ(findInvalidUtf8(c.text), c.offset) << c.text;
}

TEST(Utf8, GivesBackEveryCharacter) {
  for (char32_t c = 0; c <= 0x10FFFF; c = c == 0xD7FF ? 0xE000 : c + 1) {
    std::string text;
    appendUtf8(text, c);
    const Utf8Character character = firstUtf8Character(text);
    ASSERT_TRUE(character.valid && character.codePoint == c && character.length == text.size())
        << static_cast<std::uint32_t>(c);
  }
}

TEST(Base64, GivesBackEveryLength) {
  std::vector<std::byte> bytes;
  for (unsigned i = 0; i < 64; ++i) {
    std::string text;
    appendBase64(text, bytes);
    EXPECT_EQ(text.size() % 4, 0U);
    EXPECT_EQ(decodeBase64(text), bytes) << text;
    bytes.push_back(static_cast<std::byte>(i * 37 + 200));
  }
}

TEST(DateText, KeepsToTheYearsThatCanBeWritten) {
  struct Case {
    double seconds;
    std::string_view text;
  };
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  constexpr Case kCases[] = {
      {0, "1970-01-01T00:00:00Z"},
      {-0.5, "1969-12-31T23:59:59Z"},
      {1379462400.999, "2013-09-18T00:00:00Z"},
      {-62135596800, "0001-01-01T00:00:00Z"},
      {253402300799, "9999-12-31T23:59:59Z"},
      {253402300800, "9999-12-31T23:59:59Z"},
      {kInfinity, "9999-12-31T23:59:59Z"},
      {-kInfinity, "0001-01-01T00:00:00Z"},
      {std::numeric_limits<double>::quiet_NaN(), "0001-01-01T00:00:00Z"},
  };
  for (const Case& c : kCases) {
    std::string text;
    appendIsoDate(text, {c.seconds});
    EXPECT_EQ(text, c.text);
    EXPECT_TRUE(parseDate(text));
  }
}

}  // namespace
}  // namespace host::plist
