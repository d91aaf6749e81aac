#include "backgrounds/background_keys.h"

#include "backgrounds/layout_variant.h"

namespace prismal {

BackgroundKey fullBackgroundKey(std::string_view orientation, std::string_view visualStyle,
                                std::uint64_t index, std::uint64_t variant) {
  BackgroundKey key;
  key.append(orientation, ';', visualStyle, ';', index, ';', variant);
  return key;
}

BackgroundKeys::BackgroundKeys(std::string_view orientation, std::string_view visualStyle,
                               std::string_view fullKey, std::uint64_t index,
                               std::uint64_t variant) {
  for (const std::uint64_t fallback : VariantFallbacks(variant)) {
    keys_[full_++] = fallback == variant
                         ? BackgroundKey().append(fullKey)
                         : fullBackgroundKey(orientation, visualStyle, index, fallback);
  }
  keys_[full_].append(orientation, ';', visualStyle, ';', index);
  keys_[full_ + 1].append(orientation, ';', visualStyle);
  keys_[full_ + 2].append(orientation);
}

}  // namespace prismal
