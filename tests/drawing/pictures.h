#pragma once

#include <string>
#include <utility>

#include "drawing/ink.h"
#include "host/drawing/draw.h"

namespace host {

inline constexpr drawing::Rgba kBlack{0, 0, 0, 1};
inline constexpr drawing::Rgba kWhite{1, 1, 1, 1};
inline constexpr drawing::Rgba kRed{1, 0, 0, 1};
inline constexpr drawing::Rgba kBlue{0, 0, 1, 1};
inline constexpr images::Pixel kBlackPixel = 0xff000000;
inline constexpr images::Pixel kWhitePixel = 0xffffffff;
inline constexpr images::Pixel kRedPixel = 0xffff0000;
inline constexpr images::Pixel kBluePixel = 0xff0000ff;

/// Draws what can be drawn; fonts stay open from one picture to the next, as they do in a host.
inline images::Bitmap drawn(const drawing::KeyboardPicture& picture) {
  static drawing::Fonts fonts;
  return drawing::draw(picture, fonts).value();
}

/// A transparent picture of 60 by 60 points with one key, 10 points from each side.
inline drawing::KeyboardPicture pictureOf(drawing::KeyPicture key, double scale = 1) {
  drawing::KeyboardPicture picture;
  picture.size = {60, 60};
  picture.scale = scale;
  key.frame = {10, 10, 40, 40};
  picture.keys.push_back(std::move(key));
  return picture;
}

inline drawing::Symbol blackText(std::string text, std::string font = "Inter-Regular",
                                 double size_pt = 20) {
  return {std::move(text), {std::move(font), size_pt, kBlack, {}, {}}};
}

inline drawing::KeyPicture keyWith(drawing::Symbol symbol) {
  drawing::KeyPicture key;
  key.symbol = std::move(symbol);
  return key;
}

/// The text alone, in black on nothing.
inline images::Bitmap drawnText(std::string text, std::string font, double scale = 1) {
  return drawn(pictureOf(keyWith(blackText(std::move(text), std::move(font))), scale));
}

}  // namespace host
