#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

#include "support/fixed_text.h"

namespace prismal {

/// Holds a key of orientation, visual style, two numbers and three semicolons.
using BackgroundKey = FixedText<96>;

/// A key with all four fields.
BackgroundKey fullBackgroundKey(std::string_view orientation, std::string_view visualStyle,
                                std::uint64_t index, std::uint64_t variant);

/// The keys under which a keyplane's image is looked for, from the most specific to the least.
class BackgroundKeys {
 public:
  /// `fullKey` is made of the other four.
  BackgroundKeys(std::string_view orientation, std::string_view visualStyle,
                 std::string_view fullKey, std::uint64_t index, std::uint64_t variant);

  std::span<const BackgroundKey> all() const { return {keys_.data(), full_ + 3}; }
  /// Those with a variant, up to four.
  std::span<const BackgroundKey> withVariant() const { return all().first(full_); }
  const BackgroundKey& threeFields() const { return keys_[full_]; }
  const BackgroundKey& twoFields() const { return keys_[full_ + 1]; }
  const BackgroundKey& oneField() const { return keys_[full_ + 2]; }

 private:
  std::array<BackgroundKey, 7> keys_;
  std::size_t full_ = 0;
};

}  // namespace prismal
