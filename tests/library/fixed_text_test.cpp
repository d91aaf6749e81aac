#include "support/fixed_text.h"

#include <cstdint>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace prismal {
namespace {

/// Different characters, so that a part of a text in the wrong place shows.
std::string letters(std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) text += static_cast<char>('!' + i % 90);
  return text;
}

TEST(FixedText, TakesTextsOfEveryLength) {
  for (std::size_t length = 0; length <= 40; ++length) {
    FixedText<48> text;
    text.append('<', std::string_view(letters(length)), '>');
    EXPECT_EQ(text.view(), "<" + letters(length) + ">");
  }
}

TEST(FixedText, CutsOffTextsWhereItIsFull) {
  for (std::size_t length = 0; length <= 40; ++length) {
    FixedText<24> text;
    text.append(std::string_view("ab"), std::string_view(letters(length)), ';', 'x');
    EXPECT_EQ(text.view(), ("ab" + letters(length) + ";x").substr(0, 24)) << length;
  }
}

TEST(FixedText, WritesNumbersInDecimal) {
  FixedText<96> text;
  text.append(0, ' ', 9, ' ', 10, ' ', -1, ' ', std::numeric_limits<int>::min(), ' ',
              std::numeric_limits<std::uint64_t>::max());
  EXPECT_EQ(text.view(), "0 9 10 -1 -2147483648 18446744073709551615");
}

TEST(FixedText, LeavesOutANumberThatDoesNotFit) {
  FixedText<4> text;
  text.append(std::string_view("abc"), 10, 7, 8);
  EXPECT_EQ(text.view(), "abc7");
}

TEST(FixedText, GoesOnWhereItEnded) {
  FixedText<16> text;
  text.append(std::string_view("Row")).append(1);
  EXPECT_EQ(text.view(), "Row1");
}

}  // namespace
}  // namespace prismal
