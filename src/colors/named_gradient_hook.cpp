#include "colors/named_gradient_hook.h"

#include "colors/gradient_cache.h"
#include "hooks/previous_implementations.h"

namespace prismal {

platform::UIKBGradient PMNamedGradientReplacement(platform::Class self, platform::SEL selector,
                                                  std::string_view name) {
  if (const auto gradient = PMGetNamedGradient(name)) return gradient;
  return previous.gradientWithName(self, selector, name);
}

}  // namespace prismal
