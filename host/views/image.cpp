#include "host/views/image.h"

#include <algorithm>
#include <cstdint>
#include <utility>

#include "host/images/decode.h"
#include "host/images/limits.h"
#include "host/plist/description.h"
#include "host/runtime/class_table.h"
#include "host/system/files.h"

namespace host::views {

namespace {

/// The pixels of all BitmapObjects that live, and of the broken pictures that were decoded.
std::uint64_t spentPixels = 0;

}  // namespace

BitmapObject::BitmapObject(images::Bitmap pixels, std::string filePath)
    : objc_object(runtime::defineClass("CGImage")),
      bitmap(std::move(pixels)),
      path(std::move(filePath)) {
  spentPixels += bitmap.pixels.size();
}

BitmapObject::~BitmapObject() {
  spentPixels -= bitmap.pixels.size();
}

ImageObject::ImageObject(platform::Retained<platform::CGImageRef> pixels, double imageScale)
    : objc_object(runtime::defineClass("UIImage")), image(std::move(pixels)), scale(imageScale) {}

namespace {

std::function<void(std::string_view, std::string_view)>& brokenPictureEcho() {
  static std::function<void(std::string_view, std::string_view)> echo;
  return echo;
}

/// Null when the bytes are no picture.
platform::Retained<platform::CGImageRef> decode(platform::NSData data) {
  const auto* const file = runtime::as<system::DataObject>(data);
  if (!file) return {};
  const std::uint64_t left =
      images::kMaxPixelsTogether - std::min(images::kMaxPixelsTogether, spentPixels);
  auto decoded = images::decode(file->bytes, left);
  if (!decoded) {
    spentPixels += decoded.pixels;
    if (const auto& echo = brokenPictureEcho()) {
      echo(plist::escapeControls(file->path), decoded.reason);
    }
    return {};
  }
  return runtime::makeRetained<platform::CGImageRef, BitmapObject>(std::move(*decoded.bitmap),
                                                                   file->path);
}

platform::Retained<platform::UIImage> makeImage(platform::Retained<platform::CGImageRef> bitmap,
                                                double scale) {
  if (!bitmap) return {};
  return runtime::makeRetained<platform::UIImage, ImageObject>(std::move(bitmap), scale);
}

}  // namespace

void setBrokenPictureEcho(std::function<void(std::string_view, std::string_view)> echo) {
  brokenPictureEcho() = std::move(echo);
}

}  // namespace host::views

namespace platform {

using host::runtime::as;
using host::views::ImageObject;

UIImage UIImage::imageWithData(NSData data) {
  auto bitmap = host::views::decode(data);
  if (!bitmap) return {};
  return UIImage(host::runtime::makeAutoreleased<ImageObject>(std::move(bitmap), 1.0));
}

CGImageRef UIImage::CGImage() const {
  const auto* const image = as<ImageObject>(*this);
  return image ? image->image.get() : CGImageRef();
}

// Pictures are kept upright, so the orientation says nothing.
Retained<UIImage> UIImage::initWithCGImage(CGImageRef bitmap, double scale, int) {
  return host::views::makeImage(Retained(bitmap), scale);
}

Retained<UIImage> UIImage::initWithData(NSData data) {
  return host::views::makeImage(host::views::decode(data), 1.0);
}

}  // namespace platform
