#include "colors/named_color_hook.h"

#include "colors/color_cache.h"
#include "hooks/previous_implementations.h"
#include "settings/settings_store.h"

namespace prismal {

platform::CGColorRef PMNamedColorReplacement(std::string_view name) {
  if (_enabled) {
    if (const auto color = PMGetNamedColor(name)) return color;
  }
  return previous.UIKBGetNamedColor(name);
}

}  // namespace prismal
