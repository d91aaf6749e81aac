#include "host/images/bitmap.h"

#include <gtest/gtest.h>

namespace host::images {
namespace {

TEST(Bitmap, PremultipliesToTheNearestAndBack) {
  for (Pixel alpha = 0; alpha <= 255; ++alpha) {
    for (Pixel color = 0; color <= 255; ++color) {
      // To the nearest: twice the distance, times 255, is at most 255.
      const int distance =
          static_cast<int>(premultiplied(color, alpha) * 255) - static_cast<int>(color * alpha);
      ASSERT_LE(2 * std::abs(distance), 255) << color << " times " << alpha;
      if (color > alpha) continue;
      ASSERT_EQ(premultiplied(unpremultiplied(color, alpha), alpha), color) << alpha;
    }
  }
  EXPECT_EQ(unpremultiplied(200, 100), 255U) << "brighter than its alpha allows";
}

TEST(Bitmap, SolidIsPremultiplied) {
  const Bitmap half = solid(2, 3, 255, 128, 0, 128);
  EXPECT_EQ(half.pixels, std::vector<Pixel>(6, 0x80804000));
  EXPECT_FALSE(half.opaque);
  EXPECT_TRUE(half.isValid());
  const Bitmap full = solid(1, 1, 1, 2, 3, 255);
  EXPECT_EQ(full.at(0, 0), 0xff010203);
  EXPECT_TRUE(full.opaque);
}

TEST(Bitmap, WithoutPixelsIsInvalid) {
  EXPECT_FALSE(Bitmap().isValid());
  EXPECT_FALSE(solid(0, 1, 0, 0, 0, 0).isValid());
  EXPECT_FALSE(solid(1, -1, 0, 0, 0, 0).isValid());
  EXPECT_FALSE((Bitmap{2, 2, false, std::vector<Pixel>(3)}).isValid());
  EXPECT_FALSE((Bitmap{-2, -2, false, std::vector<Pixel>(4)}).isValid());
}

}  // namespace
}  // namespace host::images
