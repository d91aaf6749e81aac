// A key's face and the effects around it.

#include <gtest/gtest.h>
#include <limits>

#include "drawing/pictures.h"

namespace host {
namespace {

using drawing::Fill;
using drawing::KeyPicture;

constexpr double kScales[] = {1, 2, 3};

KeyPicture faceOf(Fill fill, double corner_radius_pt = 5) {
  KeyPicture key;
  key.background = fill;
  key.corner_radius_pt = corner_radius_pt;
  return key;
}

TEST(Key, FaceFillsItsPixelsAndNoOther) {
  for (const double scale : kScales) {
    const auto bitmap = drawn(pictureOf(faceOf(Fill::flat(kRed), 0), scale));
    const Box face = boxOf({10, 10, 40, 40}, scale);
    for (int y = 0; y < bitmap.height; ++y) {
      for (int x = 0; x < bitmap.width; ++x) {
        const bool inside = face.contains({x, y, x + 1, y + 1});
        ASSERT_EQ(bitmap.at(x, y), inside ? kRedPixel : 0u) << x << "," << y << " @" << scale;
      }
    }
  }
}

TEST(Key, FaceBetweenPixelsMovesToWholeOnes) {
  auto picture = pictureOf(faceOf(Fill::flat(kRed), 0), 1);
  picture.keys[0].frame = {10.4, 10.6, 20.2, 20.2};  // to 30.6, 30.8
  const auto bitmap = drawn(picture);
  const auto touched = extent(bitmap, whole(bitmap), [](auto pixel) { return pixel != 0; });
  EXPECT_EQ(touched, (Box{10, 11, 31, 31}));
  EXPECT_EQ(bitmap.at(10, 11), kRedPixel);
  EXPECT_EQ(bitmap.at(30, 30), kRedPixel);
}

TEST(Key, FacesThatMeetLeaveNoSeam) {
  for (const double scale : {1.0, 1.5, 2.0}) {
    auto picture = pictureOf(faceOf(Fill::flat(kRed), 0), scale);
    picture.keys[0].frame = {10, 10, 15.3, 20};
    picture.keys.push_back(picture.keys[0]);
    picture.keys[1].frame = {25.3, 10, 15, 20};
    const auto bitmap = drawn(picture);
    for (int x = static_cast<int>(11 * scale); x < static_cast<int>(39 * scale); ++x) {
      ASSERT_EQ(bitmap.at(x, static_cast<int>(20 * scale)), kRedPixel) << x << " @" << scale;
    }
  }
}

TEST(Key, CornersAreRoundAndAlike) {
  for (const double scale : kScales) {
    const auto bitmap = drawn(pictureOf(faceOf(Fill::flat(kBlack)), scale));
    const int near = static_cast<int>(10 * scale);
    const int far = static_cast<int>(50 * scale) - 1;
    const int shade = alphaOf(bitmap.at(near + 1, near + 1));
    EXPECT_EQ(alphaOf(bitmap.at(near, near)), 0);
    EXPECT_NEAR(alphaOf(bitmap.at(far - 1, near + 1)), shade, 8);
    EXPECT_NEAR(alphaOf(bitmap.at(near + 1, far - 1)), shade, 8);
    EXPECT_NEAR(alphaOf(bitmap.at(far - 1, far - 1)), shade, 8);
  }
}

TEST(Key, GradientShowsBothEndsAndNeverTurnsBack) {
  for (const double scale : kScales) {
    const auto bitmap = drawn(pictureOf(faceOf({kBlack, kWhite}, 0), scale));
    const int x = bitmap.width / 2;
    const Box face = boxOf({10, 10, 40, 40}, scale);
    EXPECT_EQ(bitmap.at(x, face.top), kBlackPixel);
    EXPECT_EQ(bitmap.at(x, face.bottom - 1), kWhitePixel);
    for (int y = face.top + 1; y < face.bottom; ++y) {
      ASSERT_GT(bitmap.at(x, y), bitmap.at(x, y - 1));
      ASSERT_EQ(bitmap.at(face.left, y), bitmap.at(face.right - 1, y));
    }
  }
}

TEST(Key, TranslucentGradientIsPremultiplied) {
  const auto bitmap = drawn(pictureOf(faceOf({{1, 0, 0, 0}, {1, 0, 0, 0.4}}, 0)));
  EXPECT_EQ(bitmap.at(30, 10), 0u);
  EXPECT_EQ(bitmap.at(30, 49), 0x66660000u);
}

TEST(Key, WithoutBackgroundLeavesWhatLiesBehind) {
  auto picture = pictureOf(KeyPicture{}, 2);
  picture.background = Fill{kRed, kBlue};
  const auto with_key = drawn(picture);
  picture.keys.clear();
  EXPECT_EQ(with_key, drawn(picture));
}

TEST(Key, TranslucentBackgroundMixesWithWhatLiesBehind) {
  auto picture = pictureOf(faceOf(Fill::flat({1, 1, 1, 0.2})));
  picture.background = Fill::flat(kBlack);
  EXPECT_EQ(drawn(picture).at(30, 30), 0xff333333u);
}

TEST(Key, EdgeIsOnePointBelowTheFace) {
  for (const double scale : kScales) {
    KeyPicture key = faceOf(Fill::flat(kWhite));
    key.edge = drawing::EdgeEffect{kRed};
    const auto bitmap = drawn(pictureOf(key, scale));
    const int x = bitmap.width / 2;
    const int bottom = static_cast<int>(50 * scale);
    EXPECT_EQ(bitmap.at(x, bottom - 1), kWhitePixel);
    for (int depth = 0; depth < static_cast<int>(scale); ++depth) {
      EXPECT_EQ(bitmap.at(x, bottom + depth), kRedPixel);
    }
    EXPECT_EQ(bitmap.at(x, bottom + static_cast<int>(scale)), 0u);
    EXPECT_EQ(bitmap.at(x, static_cast<int>(10 * scale) - 1), 0u);
  }
}

TEST(Key, EdgeDoesNotShowThroughATranslucentFace) {
  KeyPicture key = faceOf(Fill::flat({1, 1, 1, 0.2}));
  const auto plain = drawn(pictureOf(key));
  key.edge = drawing::EdgeEffect{kRed};
  const auto edged = drawn(pictureOf(key));
  for (int y = 15; y < 45; ++y) {
    for (int x = 10; x < 50; ++x) ASSERT_EQ(edged.at(x, y), plain.at(x, y));
  }
  EXPECT_EQ(edged.at(30, 50), kRedPixel);
}

TEST(Key, WithoutAreaOrFarOutsideDrawsNothing) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  auto picture = pictureOf(faceOf(Fill{kRed, kBlue}));
  for (const drawing::Rect frame :
       {drawing::Rect{10, 10, 0, 40}, drawing::Rect{10, 10, -5, 40}, drawing::Rect{900, 10, 40, 40},
        drawing::Rect{kNan, 10, 40, 40}, drawing::Rect{10, 10, 40, 1e12}}) {
    picture.keys[0].frame = frame;
    picture.keys[0].edge = drawing::EdgeEffect{kRed};
    const auto bitmap = drawn(picture);
    EXPECT_TRUE(extent(bitmap, whole(bitmap), [](auto pixel) { return pixel != 0; }).empty());
  }
}

}  // namespace
}  // namespace host
