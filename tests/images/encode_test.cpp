#include "host/images/encode.h"

#include <cstdlib>
#include <gtest/gtest.h>

#include "host/images/decode.h"

namespace host::images {
namespace {

// Every alpha, with colours that it allows.
Bitmap rainbow(bool opaque) {
  Bitmap bitmap{256, 64, opaque, {}};
  for (Pixel y = 0; y < 64; ++y) {
    for (Pixel x = 0; x < 256; ++x) {
      bitmap.pixels.push_back(pixelOf(x, 255 - x, (x * y) & 255, opaque ? 255 : 4 * y));
    }
  }
  return bitmap;
}

TEST(EncodePng, DecodesToTheSameBitmap) {
  for (const Bitmap& bitmap :
       {rainbow(true), rainbow(false), solid(1, 1, 1, 2, 3, 255), solid(3, 1, 9, 9, 9, 0),
        solid(1, 1000, 255, 0, 0, 77), solid(32767, 1, 0, 0, 255, 255)}) {
    const auto result = decode(encodePng(bitmap));
    ASSERT_TRUE(result) << result.reason;
    EXPECT_EQ(*result.bitmap, bitmap);
  }
}

TEST(EncodePng, AnOpaqueBitmapHasNoAlphaInItsFile) {
  constexpr std::size_t kColorType = 25;
  EXPECT_EQ(encodePng(solid(1, 1, 0, 0, 0, 255))[kColorType], 2);
  EXPECT_EQ(encodePng(solid(1, 1, 0, 0, 0, 254))[kColorType], 6);
}

TEST(EncodePng, NoiseThatCannotBePacked) {
  Bitmap bitmap{1000, 1000, true, {}};
  Pixel state = 1;
  for (int i = 0; i < 1'000'000; ++i) {
    state = state * 1664525 + 1013904223;
    bitmap.pixels.push_back(state | 0xff000000);
  }
  const auto result = decode(encodePng(bitmap));
  ASSERT_TRUE(result) << result.reason;
  EXPECT_EQ(*result.bitmap, bitmap);
}

TEST(EncodeJpeg, IsNearTheBitmapOverBlack) {
  const struct {
    Bitmap bitmap;
    int red, green, blue;
  } cases[] = {{solid(50, 30, 200, 100, 50, 255), 200, 100, 50},
               {solid(50, 30, 200, 100, 50, 128), 100, 50, 25}};
  for (const auto& [bitmap, red, green, blue] : cases) {
    const auto result = decode(encodeJpeg(bitmap));
    ASSERT_TRUE(result) << result.reason;
    EXPECT_TRUE(result.bitmap->opaque);
    const Pixel pixel = result.bitmap->at(25, 15);
    EXPECT_NEAR(static_cast<int>(pixel >> 16 & 255), red, 3);
    EXPECT_NEAR(static_cast<int>(pixel >> 8 & 255), green, 3);
    EXPECT_NEAR(static_cast<int>(pixel & 255), blue, 3);
  }
}

TEST(EncodeJpeg, QualityDecidesTheSize) {
  const Bitmap bitmap = rainbow(true);
  EXPECT_LT(encodeJpeg(bitmap, 10).size(), encodeJpeg(bitmap).size());
  EXPECT_LT(encodeJpeg(bitmap).size(), encodeJpeg(bitmap, 100).size());
}

TEST(EncodeJpeg, AFileLargerThanTheLibrarysBuffer) {
  Bitmap bitmap = solid(1000, 400, 0, 0, 0, 255);
  Pixel state = 1;
  for (Pixel& pixel : bitmap.pixels) pixel |= (state = state * 1664525 + 1013904223);
  const std::string file = encodeJpeg(bitmap);
  EXPECT_GT(file.size(), 100'000U);
  EXPECT_TRUE(decode(file));
}

TEST(Encode, AnInvalidBitmapHasNoFile) {
  for (const Bitmap& bitmap :
       {Bitmap(), Bitmap{2, 2, true, std::vector<Pixel>(3)}, Bitmap{0, 5, true, {}}}) {
    EXPECT_EQ(encodePng(bitmap), "");
    EXPECT_EQ(encodeJpeg(bitmap), "");
  }
  EXPECT_EQ(encodeJpeg(solid(65501, 1, 0, 0, 0, 255)), "");
}

}  // namespace
}  // namespace host::images
