// The keyboard as a whole: its size, what lies behind the keys, and what stands above them.

#include <cmath>
#include <gtest/gtest.h>
#include <limits>

#include "drawing/board_picture.h"
#include "drawing/pictures.h"

namespace host {
namespace {

using drawing::Fill;
using drawing::KeyboardPicture;

TEST(Picture, HasItsSizeInPixels) {
  struct Case {
    drawing::Size size;
    double scale;
    int width, height;
  };
  constexpr Case kCases[] = {
      {{320, 216}, 1, 320, 216}, {{320, 216}, 2, 640, 432}, {{320, 216}, 3, 960, 648},
      {{10.4, 10.6}, 1, 10, 11}, {{0.5, 0.5}, 2, 1, 1},     {{drawing::kMaxSide, 1}, 1, 16384, 1},
  };
  for (const Case& each : kCases) {
    KeyboardPicture picture;
    picture.size = each.size;
    picture.scale = each.scale;
    const auto bitmap = drawn(picture);
    EXPECT_EQ(bitmap.width, each.width);
    EXPECT_EQ(bitmap.height, each.height);
    EXPECT_TRUE(bitmap.isValid());
  }
}

TEST(Picture, OfNoOrImmenseSizeIsNone) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  constexpr double kInfinity = std::numeric_limits<double>::infinity();
  drawing::Fonts fonts;
  for (const auto& [size, scale] : {std::pair{drawing::Size{0, 10}, 1.0},
                                    {{10, 0.4}, 1.0},
                                    {{-10, -10}, 1.0},
                                    {{10, 10}, 0.0},
                                    {{10, 10}, -1.0},
                                    {{16385, 1}, 1.0},
                                    {{1, 10000}, 2.0},
                                    {{kNan, 10}, 1.0},
                                    {{10, 10}, kInfinity}}) {
    KeyboardPicture picture;
    picture.size = size;
    picture.scale = scale;
    EXPECT_FALSE(drawing::draw(picture, fonts)) << size.width << "x" << size.height;
  }
}

TEST(Picture, KnowsWhetherItIsOpaque) {
  auto picture = pictureOf({});
  EXPECT_FALSE(drawn(picture).opaque);
  picture.background = Fill::flat(kRed);
  EXPECT_TRUE(drawn(picture).opaque);
  picture.background = Fill{kRed, {1, 0, 0, 0.99}};
  EXPECT_FALSE(drawn(picture).opaque);
}

/// Four pixels: red and blue above black and white.
images::Bitmap corners() {
  images::Bitmap bitmap = images::solid(2, 2, 255, 0, 0, 255);
  bitmap.pixels = {kRedPixel, kBluePixel, kBlackPixel, kWhitePixel};
  return bitmap;
}

TEST(Background, ImageOfTheFramesOwnSizeIsCopied) {
  images::Bitmap image = images::solid(60, 60, 0, 0, 0, 255);
  for (std::size_t i = 0; i < image.pixels.size(); ++i) {
    image.pixels[i] = kBlackPixel | static_cast<images::Pixel>(i * 2654435761u >> 8);
  }
  KeyboardPicture picture;
  picture.size = {30, 30};
  picture.scale = 2;
  picture.background_images.push_back({&image, {0, 0, 30, 30}});
  EXPECT_EQ(drawn(picture), image);
}

TEST(Background, ImageIsStretchedOverItsFrameAndNoFurther) {
  const images::Bitmap image = corners();
  KeyboardPicture picture;
  picture.size = {40, 40};
  picture.background_images.push_back({&image, {5, 10, 30, 20}});
  const auto bitmap = drawn(picture);
  const auto touched = extent(bitmap, whole(bitmap), [](auto pixel) { return pixel != 0; });
  EXPECT_EQ(touched, (Box{5, 10, 35, 30}));
  // At its very edge an image is itself, not faded to nothing.
  EXPECT_EQ(bitmap.at(5, 10), kRedPixel);
  EXPECT_EQ(bitmap.at(34, 10), kBluePixel);
  EXPECT_EQ(bitmap.at(5, 29), kBlackPixel);
  EXPECT_EQ(bitmap.at(34, 29), kWhitePixel);
}

TEST(Background, ShrunkenImageKeepsItsColor) {
  for (const int side : {61, 90, 119, 200, 700}) {
    const images::Bitmap image = images::solid(side, side, 200, 100, 50, 255);
    KeyboardPicture picture;
    picture.size = {60, 60};
    picture.background_images.push_back({&image, {0, 0, 60, 60}});
    const auto bitmap = drawn(picture);
    const auto differs = [&](images::Pixel pixel) { return pixel != image.pixels[0]; };
    EXPECT_TRUE(extent(bitmap, whole(bitmap), differs).empty()) << side;
  }
}

TEST(Background, ImagesLieAboveTheFillAndBelowTheKeys) {
  const images::Bitmap below = images::solid(1, 1, 0, 0, 255, 255);
  const images::Bitmap above = images::solid(1, 1, 0, 255, 0, 255);
  drawing::KeyPicture key;
  key.background = Fill::flat(kWhite);
  auto picture = pictureOf(key);
  picture.background = Fill::flat(kRed);
  picture.background_images.push_back({&below, {5, 5, 50, 50}});
  picture.background_images.push_back({&above, {30, 0, 30, 8}});
  const auto bitmap = drawn(picture);
  EXPECT_EQ(bitmap.at(2, 2), kRedPixel);
  EXPECT_EQ(bitmap.at(7, 7), kBluePixel);
  EXPECT_EQ(bitmap.at(40, 7), 0xff00ff00u);
  EXPECT_EQ(bitmap.at(30, 30), kWhitePixel);
}

TEST(Background, ImageThatIsNoneIsLeftOut) {
  const images::Bitmap none;
  KeyboardPicture picture;
  picture.size = {10, 10};
  picture.background_images = {{nullptr, {0, 0, 10, 10}}, {&none, {0, 0, 10, 10}}};
  const auto bitmap = drawn(picture);
  EXPECT_TRUE(inked(bitmap).empty());
}

TEST(Background, FillsEveryPixelFromEndToEnd) {
  KeyboardPicture picture;
  picture.size = {320, 216};
  picture.scale = 2;
  picture.background = Fill{kRed, kBlue};
  const auto bitmap = drawn(picture);
  for (int x = 0; x < bitmap.width; ++x) {
    ASSERT_EQ(bitmap.at(x, 0), kRedPixel);
    ASSERT_EQ(bitmap.at(x, bitmap.height - 1), kBluePixel);
  }
}

TEST(Background, FillsItsRegionsAlone) {
  for (const double scale : {1.0, 2.0}) {
    KeyboardPicture picture;
    picture.size = {100, 60};
    picture.scale = scale;
    picture.background = Fill{kRed, kBlue};
    picture.background_regions = {{0, 0, 40, 60}, {70, 20, 20, 30}};
    const auto bitmap = drawn(picture);
    const Box left = boxOf({0, 0, 40, 60}, scale);
    const Box right = boxOf({70, 20, 20, 30}, scale);
    for (int y = 0; y < bitmap.height; ++y) {
      for (int x = 0; x < bitmap.width; ++x) {
        const Box pixel{x, y, x + 1, y + 1};
        const int alpha = left.contains(pixel) || right.contains(pixel) ? 255 : 0;
        ASSERT_EQ(alphaOf(bitmap.at(x, y)), alpha) << x << "," << y << " @" << scale;
      }
    }
    for (const Box& region : {left, right}) {
      EXPECT_EQ(bitmap.at(region.left, region.top), kRedPixel);
      EXPECT_EQ(bitmap.at(region.right - 1, region.bottom - 1), kBluePixel);
    }
  }
}

TEST(Background, RegionsLeaveTheRestClearAndImagesKeepTheirFrames) {
  const images::Bitmap image = images::solid(1, 1, 0, 255, 0, 255);
  KeyboardPicture picture;
  picture.size = {60, 60};
  picture.background = Fill::flat(kRed);
  picture.background_regions = {{0, 0, 30, 60}, {40, 0, 0, 60}, {1e9, 0, 10, 10}};
  const auto bare = drawn(picture);
  EXPECT_EQ(extent(bare, whole(bare), [](auto pixel) { return pixel != 0; }), (Box{0, 0, 30, 60}));
  EXPECT_EQ(bare.at(15, 0), kRedPixel);
  picture.background_images = {{&image, {0, 0, 60, 60}}};
  EXPECT_EQ(drawn(picture).pixels, std::vector<images::Pixel>(3600, 0xff00ff00));
}

TEST(Picture, OfTheSystemsLookIsOpaque) {
  for (const boards::Board& board : boards::allBoards()) {
    for (const boards::Look look : {boards::Look::standard, boards::Look::alert}) {
      EXPECT_TRUE(drawn(systemPicture(board, boards::Plane::numbers, boards::Orientation::landscape,
                                      {}, look, 2))
                      .opaque);
    }
  }
}

}  // namespace
}  // namespace host
