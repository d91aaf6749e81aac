#include "colors/color_string.h"

#include <gtest/gtest.h>

namespace prismal {
namespace {

struct Case {
  std::string_view text;
  std::optional<Rgba> color;
};

class ColorString : public testing::TestWithParam<Case> {};

TEST_P(ColorString, IsReadOrRefused) {
  EXPECT_EQ(parseColorString(GetParam().text), GetParam().color) << GetParam().text;
}

constexpr Rgba kOrange{0xff, 0x80, 0x00, 0xcc};

INSTANTIATE_TEST_SUITE_P(WellFormed, ColorString,
                         testing::Values(Case{"#ff8000cc", kOrange}, Case{" FF8000CC\n", kOrange},
                                         Case{"\t#Ff8000cC\r\n", kOrange},
                                         Case{"\u00a0#FF8000CC\u2029", kOrange},
                                         Case{"00000000", Rgba{}}));

INSTANTIATE_TEST_SUITE_P(OfTheWrongLength, ColorString,
                         testing::Values(Case{"#FF8000", {}}, Case{"FF8000", {}},
                                         Case{"#FF8000C", {}}, Case{"FF8000C", {}},
                                         Case{"#FF8000CC0", {}}, Case{"#FF8000CC00", {}},
                                         Case{"##FF8000CC", {}}, Case{"", {}}, Case{"  ", {}},
                                         Case{"#F80C", {}}, Case{"FF 8000CC", {}}));

// Only the length is tested; a pair is read up to its first character that is no digit.
INSTANTIATE_TEST_SUITE_P(WithOtherCharacters, ColorString,
                         testing::Values(Case{"7GFFFFFF", Rgba{0x07, 0xff, 0xff, 0xff}},
                                         Case{"G7FFFFFF", Rgba{0x00, 0xff, 0xff, 0xff}},
                                         Case{"FF 7FFFF", Rgba{0xff, 0x07, 0xff, 0xff}},
                                         Case{"FF  FFFF", Rgba{0xff, 0x00, 0xff, 0xff}},
                                         Case{"##FF0000F", Rgba{0x00, 0xf0, 0x00, 0x0f}},
                                         Case{"0xFF-1+1", Rgba{0x00, 0xff, 0x00, 0x00}}));

// Characters are counted as the platform counts them, in UTF-16 units, not in bytes.
INSTANTIATE_TEST_SUITE_P(CountedInCharacters, ColorString,
                         testing::Values(Case{"\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9\u00e9F",
                                              Rgba{0, 0, 0, 0}},
                                         Case{"FF\u00e9FF", {}},
                                         // Letters that are several in upper case.
                                         Case{"#FF0000\u00df", Rgba{0xff, 0x00, 0x00, 0x00}},
                                         Case{"#\ufb0000FF\ufb00", Rgba{0xff, 0x00, 0xff, 0xff}},
                                         Case{"FF0000F\u00df", {}},
                                         Case{"#FF00FF\U0001F600", Rgba{0xff, 0x00, 0xff, 0x00}}));

}  // namespace
}  // namespace prismal
