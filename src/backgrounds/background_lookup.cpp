#include "backgrounds/background_lookup.h"

#include <utility>

#include "backgrounds/background_image.h"
#include "backgrounds/background_keys.h"
#include "backgrounds/layout_variant.h"
#include "support/process_lifetime.h"
#include "support/string_map.h"

namespace prismal {

using platform::Retained;
using platform::UIImage;

namespace {

/// Images by background key. A null image says: it is known that there is none.
using ImageTable = StringMap<Retained<UIImage>>;

/// Images under three, two and one field; a null one under one field alone.
ImageTable& imageRepository() {
  static ProcessLifetime<ImageTable> _repo;
  return *_repo;
}

/// Answers under full keys.
ImageTable& fullNameCache() {
  static ProcessLifetime<ImageTable> _fullNameCache;
  return *_fullNameCache;
}

/// The answer that has been given under a full key; null when none has. Apart, for the hash wants
/// all registers.
[[gnu::noinline]] const Retained<UIImage>* knownAnswer(std::string_view fullKey) {
  return fullNameCache().find(fullKey);
}

enum class Miss { kForget, kRemember };

/// The image under a key that several full keys share, decoded once for all of them.
Retained<UIImage> sharedImage(std::string_view key, Miss miss) {
  ImageTable& images = imageRepository();
  if (const auto* const found = images.find(key)) return *found;
  Retained<UIImage> image = loadBackgroundImage(key);
  if (image || miss == Miss::kRemember) images.insert(key, image);
  return image;
}

}  // namespace

UIImage PMGetKeyboardBackgroundImage(platform::UIKBTree keyplane, std::string_view orientation,
                                     std::string_view visualStyle, PMKeyplaneIndex index) {
  const std::uint64_t variant = PMGetLayoutVariant(keyplane);
  const auto number = static_cast<std::uint64_t>(index);
  const BackgroundKey fullKey = fullBackgroundKey(orientation, visualStyle, number, variant);
  if (const auto* const known = knownAnswer(fullKey.view())) return known->get();
  auto image = _PMGetBackgroundImage(orientation, visualStyle, fullKey.view(), number, variant);
  return fullNameCache().insert(fullKey.view(), std::move(image)).get();
}

Retained<UIImage> _PMGetBackgroundImage(std::string_view orientation, std::string_view visualStyle,
                                        std::string_view fullKey, std::uint64_t index,
                                        std::uint64_t variant) {
  const BackgroundKeys keys(orientation, visualStyle, fullKey, index, variant);
  for (const BackgroundKey& key : keys.withVariant()) {
    if (auto image = loadBackgroundImage(key.view())) return image;
  }
  if (auto image = sharedImage(keys.threeFields().view(), Miss::kForget)) return image;
  if (auto image = sharedImage(keys.twoFields().view(), Miss::kForget)) return image;
  return sharedImage(keys.oneField().view(), Miss::kRemember);
}

}  // namespace prismal
