#include "host/views/color.h"

#include <algorithm>

#include "host/runtime/class_table.h"

namespace host::views {

namespace {

bool colorCreationWorks = true;

// A theme has thousands of colours: the class is not looked for by its name each time.
objc_class* colorClass() {
  static objc_class* const cls = runtime::defineClass("CGColor");
  return cls;
}

}  // namespace

ColorObject::ColorObject(const std::array<double, 4>& rgba)
    : objc_object(colorClass()), components(rgba) {}

void setColorCreation(bool works) {
  colorCreationWorks = works;
}

platform::Retained<platform::CGColorRef> makeColor(const std::array<double, 4>& components) {
  return runtime::makeRetained<platform::CGColorRef, ColorObject>(components);
}

}  // namespace host::views

namespace platform {

Retained<CGColorRef> CGColorCreate(CGColorSpaceRef space, std::span<const double, 4> components) {
  if (!space || !host::views::colorCreationWorks) return {};
  std::array<double, 4> copy{};
  std::ranges::copy(components, copy.begin());
  return host::views::makeColor(copy);
}

}  // namespace platform
