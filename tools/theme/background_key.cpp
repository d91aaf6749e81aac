#include "theme/background_key.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>

#include "backgrounds/layout_variant.h"
#include "theme/format_table.h"

namespace tools::theme {

using platform::PropertyListView;

namespace {

/// The panel's picture has one key; nothing more general stands in for it.
bool isDictation(std::string_view key) {
  return key.substr(key.find(';') + 1) == kDictationStyle;
}

/// The variant of a full key, as the library writes it.
std::optional<std::uint64_t> variantOf(std::string_view key) {
  if (std::ranges::count(key, ';') != 3) return std::nullopt;
  const std::string_view text = key.substr(key.rfind(';') + 1);
  std::uint64_t variant = 0;
  std::from_chars(text.data(), text.data() + text.size(), variant);
  return std::to_string(variant) == text ? std::optional(variant) : std::nullopt;
}

bool answerForVariant(PropertyListView images, std::string_view key) {
  const auto variant = variantOf(key);
  if (!variant) return false;
  const std::string keyplane(key.substr(0, key.rfind(';') + 1));
  return std::ranges::any_of(prismal::VariantFallbacks(*variant), [&](std::uint64_t fallback) {
    return images.objectForKey(keyplane + std::to_string(fallback)).isString();
  });
}

}  // namespace

bool answerFor(PropertyListView images, std::string_view key) {
  if (images.objectForKey(key).isString()) return true;
  if (isDictation(key)) return false;
  if (answerForVariant(images, key)) return true;
  while (key.find(';') != key.npos) {
    key = key.substr(0, key.rfind(';'));
    if (images.objectForKey(key).isString()) return true;
  }
  return false;
}

}  // namespace tools::theme
