#pragma once

#include <map>
#include <nlohmann/json.hpp>

#include "host/runtime/object.h"
#include "platform/keyboard.h"

namespace tools::replay {

/// Tells the platform's objects as JSON, null ones as null.
class ObjectOutput {
 public:
  using Json = nlohmann::ordered_json;

  Json color(platform::CGColorRef color) const;
  Json gradient(platform::UIKBGradient gradient) const;
  /// `effectsMutable` is told of traits that have no effects.
  Json traits(platform::UIKBRenderTraits traits, bool effectsMutable) const;
  Json backgroundTraits(platform::UIKBRenderTraits traits) const;
  /// Images are numbered in the order in which they are first told.
  Json view(platform::UIView view);

 private:
  Json image(platform::UIImage image);

  struct Numbered {
    platform::Retained<platform::Object> image;  ///< kept, so that no other takes its address
    std::size_t id;
  };
  std::map<objc_object*, Numbered> numbered_;
};

}  // namespace tools::replay
