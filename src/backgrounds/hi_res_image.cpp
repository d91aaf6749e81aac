#include "backgrounds/hi_res_image.h"

#include <string>

#include "backgrounds/double_resolution_path.h"
#include "support/leading_integer.h"

namespace prismal {

using platform::NSData;
using platform::UIImage;

namespace {

bool wantsDoubleResolution() {
  return leadingInteger(platform::UIDevice::currentDevice().systemVersion()) >= 4 &&
         platform::UIScreen::mainScreen().scale() == 2.0;
}

}  // namespace

platform::Retained<UIImage> HiResAdditions::initWithContentsOfFile2(std::string_view path) {
  if (wantsDoubleResolution()) {
    const std::string sibling = doubleResolutionPath(path);
    if (platform::NSFileManager::defaultManager().fileExistsAtPath(sibling)) {
      const auto image = UIImage::imageWithData(NSData::dataWithContentsOfFile(sibling));
      return UIImage::initWithCGImage(image.CGImage(), 2.0, 0);
    }
  }
  return UIImage::initWithData(NSData::dataWithContentsOfFile(path));
}

}  // namespace prismal
