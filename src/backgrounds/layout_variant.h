#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

#include "platform/keyboard.h"

namespace prismal {

/// The bits that the keys of the bottom row add to a keyplane's type.
inline constexpr std::uint64_t PMVariantDictationKey = 0x100;
inline constexpr std::uint64_t PMVariantNoInternationalKey = 0x200;

/// The layout variant of a keyplane, from the keyboard's present state.
std::uint64_t PMGetLayoutVariant(platform::UIKBTree keyplane);

/// The variants for which an image fits a keyplane of `variant`, most specific first.
class VariantFallbacks {
 public:
  explicit constexpr VariantFallbacks(std::uint64_t variant);
  constexpr const std::uint64_t* begin() const { return variants_.data(); }
  constexpr const std::uint64_t* end() const { return variants_.data() + count_; }

 private:
  // The order is the feature, so it is data: which bits each try drops. A try is made when the
  // variant has all of them.
  static constexpr std::array<std::uint64_t, 4> kDroppedBits = {
      0, PMVariantNoInternationalKey, PMVariantDictationKey,
      PMVariantDictationKey | PMVariantNoInternationalKey};

  std::array<std::uint64_t, kDroppedBits.size()> variants_{};
  std::size_t count_ = 0;
};

constexpr VariantFallbacks::VariantFallbacks(std::uint64_t variant) {
  for (const std::uint64_t dropped : kDroppedBits) {
    if ((variant & dropped) == dropped) variants_[count_++] = variant & ~dropped;
  }
}

}  // namespace prismal
