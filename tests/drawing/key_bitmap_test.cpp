// A key drawn alone and put into a picture looks like one drawn in its place.

#include "host/drawing/key_bitmap.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <memory>
#include <utility>

#include "drawing/board_picture.h"
#include "drawing/pictures.h"

namespace host {
namespace {

using drawing::Fill;
using drawing::KeyboardPicture;
using drawing::KeyPicture;
using images::PlacedBitmap;

PlacedBitmap alone(const KeyPicture& key, const KeyboardPicture& picture) {
  static drawing::Fonts fonts;
  return drawing::drawAlone(key, picture.size, picture.scale, fonts).value();
}

/// The same picture with every key as pixels.
KeyboardPicture throughBitmaps(KeyboardPicture picture) {
  for (const KeyPicture& key : std::exchange(picture.keys, {})) {
    picture.drawn_keys.push_back(std::make_shared<const PlacedBitmap>(alone(key, picture)));
  }
  return picture;
}

/// The largest difference of any part of any pixel.
int difference(const images::Bitmap& one, const images::Bitmap& other) {
  int largest = 0;
  for (std::size_t i = 0; i < one.pixels.size(); ++i) {
    for (const int shift : {0, 8, 16, 24}) {
      const auto part = [&](images::Pixel pixel) {
        return static_cast<int>(pixel >> shift & 0xff);
      };
      largest = std::max(largest, std::abs(part(one.pixels[i]) - part(other.pixels[i])));
    }
  }
  return largest;
}

/// A translucent key of which much stands out: edge, etch and text.
KeyPicture restlessKey(drawing::Rect frame) {
  KeyPicture key = keyWith(blackText("Ångström", "Inter-Regular", 40));
  key.frame = frame;
  key.background = Fill{{1, 1, 1, 0.3}, {1, 0, 0, 0.6}};
  key.edge = drawing::EdgeEffect{{0, 0, 0, 0.5}, 7};
  key.symbol->style.etch_color = kBlue;
  key.symbol->style.etch_offset_pt = {-13, -17};
  return key;
}

TEST(KeyBitmap, ShowsEverythingOfTheKeyUpToThePicturesEnds) {
  constexpr drawing::Rect kFrames[] = {{30, 30, 40, 12}, {0, 0, 30, 30},        {-20, -8, 40, 30},
                                       {85, 92, 40, 30}, {20.3, 30.7, 33.3, 9}, {49, 49, 1, 1}};
  for (const drawing::Rect& frame : kFrames) {
    for (const double scale : {1.0, 1.5, 2.0}) {
      KeyboardPicture picture;
      picture.size = {100, 100};
      picture.scale = scale;
      picture.background = Fill{{0, 1, 0, 1}, {1, 1, 0, 0.5}};
      picture.keys = {restlessKey(frame)};
      // A pixel that is mixed in two steps may be rounded otherwise than in three.
      EXPECT_LE(difference(drawn(throughBitmaps(picture)), drawn(picture)), 2)
          << frame.x << " @" << scale;
    }
  }
}

TEST(KeyBitmap, OfTheSystemsLookDiffersByNoMoreThanRounding) {
  for (const boards::Look look : {boards::Look::standard, boards::Look::alert}) {
    const auto picture = systemPicture(*boards::findBoard("Phone-4-Inch"), boards::Plane::numbers,
                                       boards::Orientation::portrait, {true, true}, look, 2);
    EXPECT_LE(difference(drawn(throughBitmaps(picture)), drawn(picture)), 1);
  }
}

TEST(KeyBitmap, IsNoLargerThanItsInk) {
  KeyPicture key;
  key.background = Fill::flat(kRed);
  key.corner_radius_pt = 0;
  auto picture = pictureOf(key, 2);
  picture.keys[0].edge = drawing::EdgeEffect{kBlack, 3};
  const PlacedBitmap bitmap = alone(picture.keys[0], picture);
  EXPECT_EQ(std::pair(bitmap.left, bitmap.top), std::pair(20, 20));
  EXPECT_EQ(std::pair(bitmap.bitmap.width, bitmap.bitmap.height), std::pair(80, 86));
}

TEST(KeyBitmap, OfNothingHasNoPixels) {
  constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
  KeyboardPicture picture = pictureOf({});
  EXPECT_FALSE(alone(picture.keys[0], picture).bitmap.isValid());
  for (const drawing::Rect frame :
       {drawing::Rect{200, 200, 40, 40}, {kNan, 0, 9, 9}, {0, 0, 0, 9}}) {
    EXPECT_FALSE(alone(restlessKey(frame), picture).bitmap.isValid());
  }
  picture.scale = kNan;
  EXPECT_FALSE(alone(restlessKey({0, 0, 9, 9}), picture).bitmap.isValid());
  picture.scale = 1;
  picture.drawn_keys.push_back(std::make_shared<const PlacedBitmap>());
  EXPECT_TRUE(inked(drawn(picture)).empty());
}

TEST(KeyBitmap, OfImmenseTextIsNoLargerThanThePicture) {
  for (const double size : {1e9, 1e300, std::numeric_limits<double>::infinity()}) {
    KeyboardPicture picture = pictureOf({});
    KeyPicture key = restlessKey({10, 10, 40, 40});
    key.symbol->style.etch_offset_pt = {size, -size};
    key.edge->depth_pt = 1e4;
    const PlacedBitmap bitmap = alone(key, picture);
    EXPECT_LE(bitmap.left + bitmap.bitmap.width, 60);
    EXPECT_LE(bitmap.top + bitmap.bitmap.height, 60);
  }
}

}  // namespace
}  // namespace host
