#include "styles/visual_style.h"

namespace prismal {

namespace {

bool deviceIsTablet() {
  const auto device = platform::UIDevice::currentDevice();
  return device.respondsToSelector(platform::sel_registerName("userInterfaceIdiom")) &&
         device.userInterfaceIdiom() == 1;
}

}  // namespace

std::optional<std::string_view> visualStyleName(int visualStyle) {
  switch (visualStyle) {
    case 1:
    case 2:
      return "iPhone-Standard";
    case 3:
      return "iPhone-Alert";
    case 6:
    case 7:
    case 8:
    case 10:
      return "iPad-Standard";
    case 9:
      return "iPad-Alert";
    case 11:
    case 12:
      return "iPad-Split";
    default:
      return std::nullopt;
  }
}

std::string_view PMGetVisualStyleName(platform::UIKBTree keyplane) {
  if (const auto name = visualStyleName(keyplane.visualStyle())) return *name;
  return deviceIsTablet() ? "iPad-Standard" : "iPhone-Standard";
}

}  // namespace prismal
