#pragma once

#include <array>

#include "host/runtime/object.h"
#include "platform/graphics.h"

namespace host::views {

/// A colour: red, green, blue and alpha, each 0 to 1.
struct ColorObject final : objc_object {
  explicit ColorObject(const std::array<double, 4>& rgba);
  std::array<double, 4> components;
};

/// Whether `CGColorCreate` makes colours; it does unless told otherwise.
void setColorCreation(bool works);

/// A colour that the result keeps, whatever `CGColorCreate` does.
platform::Retained<platform::CGColorRef> makeColor(const std::array<double, 4>& components);

}  // namespace host::views
