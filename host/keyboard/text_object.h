#pragma once

#include <string>
#include <utility>

#include "host/runtime/class_table.h"
#include "host/runtime/object.h"

namespace host::keyboard {

/// A text as an object: what is handed through methods untouched.
struct TextObject final : objc_object {
  explicit TextObject(std::string value)
      : objc_object(runtime::defineClass("NSString")), text(std::move(value)) {}
  std::string text;
};

}  // namespace host::keyboard
