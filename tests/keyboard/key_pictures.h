#pragma once

#include <algorithm>
#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "host/keyboard/key_picture_file.h"

namespace host::keyboard {

inline images::SharedBitmap pictureAt(int left, int top, images::Bitmap bitmap) {
  return std::make_shared<const images::PlacedBitmap>(
      images::PlacedBitmap{left, top, std::move(bitmap)});
}

/// A translucent picture, told from others by `shade`.
inline images::SharedBitmap smallPicture(int width, int height, std::uint8_t shade) {
  images::Bitmap bitmap = images::solid(width, height, shade, 0, 255, 100);
  bitmap.opaque = false;
  return pictureAt(3, 4, std::move(bitmap));
}

inline bool sameGroup(const KeyPictureGroup& one, const KeyPictureGroup& other) {
  const auto same = [](const auto& a, const auto& b) {
    return a.first == b.first && *a.second == *b.second;
  };
  return one.stamp == other.stamp && std::equal(one.pictures.begin(), one.pictures.end(),
                                                other.pictures.begin(), other.pictures.end(), same);
}

}  // namespace host::keyboard
