#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

// Where the separators of a condition stand, found for many characters at a step: what lies between
// them is too short for a search of each.

namespace prismal {

/// How many characters are looked at together.
inline constexpr std::size_t kSeparatorWindow = 64;

#if defined(__SSE2__)

/// Sixteen characters, on a machine that can compare so many.
struct CharacterBlock {
  static constexpr std::size_t kSize = 16;

  static std::uint64_t separators(const char* text) {
    const __m128i block = _mm_loadu_si128(reinterpret_cast<const __m128i*>(text));
    const __m128i marks = _mm_or_si128(_mm_cmpeq_epi8(block, _mm_set1_epi8(',')),
                                       _mm_cmpeq_epi8(block, _mm_set1_epi8(';')));
    return static_cast<std::uint32_t>(_mm_movemask_epi8(marks));
  }
};

#else

/// Eight characters, on any machine.
struct CharacterBlock {
  static constexpr std::size_t kSize = 8;

  static std::uint64_t separators(const char* text) {
    std::uint64_t word = 0;
    std::memcpy(&word, text, kSize);
    constexpr bool kLowFirst = std::endian::native == std::endian::little;
    // The high bits gathered in the highest byte, the first character's lowest.
    return ((zeroBytes(word ^ everyByte(',')) | zeroBytes(word ^ everyByte(';'))) >> 7U) *
               (kLowFirst ? 0x0102040810204080U : 0x8040201008040201U) >>
           56U;
  }

 private:
  static constexpr std::uint64_t everyByte(char c) {
    return 0x0101010101010101U * static_cast<unsigned char>(c);
  }
  /// The high bit of each byte that is zero.
  static constexpr std::uint64_t zeroBytes(std::uint64_t word) {
    constexpr std::uint64_t kLowBits = 0x7F7F7F7F7F7F7F7FU;
    return ~(((word & kLowBits) + kLowBits) | word | kLowBits);
  }
};

#endif

/// A bit for each "," and ";" among the first kSeparatorWindow characters of `text`, the lowest for
/// the first.
inline std::uint64_t separatorBits(std::string_view text) {
  constexpr std::size_t kBlock = CharacterBlock::kSize;
  const std::size_t size = std::min(text.size(), kSeparatorWindow);
  std::uint64_t bits = 0;
  if (size < kBlock) {
    for (std::size_t i = 0; i < size; ++i) {
      bits |= std::uint64_t{text[i] == ',' || text[i] == ';'} << i;
    }
    return bits;
  }
  // The last block overlaps the one before it, which marks the same places.
  const std::size_t last = size - kBlock;
  bits = CharacterBlock::separators(text.data());
  for (std::size_t i = kBlock; i < last; i += kBlock) {
    bits |= CharacterBlock::separators(text.data() + i) << i;
  }
  return bits | CharacterBlock::separators(text.data() + last) << last;
}

/// The places of a text's separators, one after the other; its end counts as one. For a text
/// shorter than a window.
class ShortTextSeparators {
 public:
  explicit ShortTextSeparators(std::string_view text)
      : bits_(separatorBits(text) | std::uint64_t{1} << text.size()) {}

  std::size_t next() {
    const auto place = static_cast<std::size_t>(std::countr_zero(bits_));
    bits_ &= bits_ - 1;
    return place;
  }

 private:
  std::uint64_t bits_;
};

/// The same for a text of any length.
class LongTextSeparators {
 public:
  explicit LongTextSeparators(std::string_view text) : text_(text) {}

  std::size_t next() {
    while (bits_ == 0) {
      if (windowEnd_ >= text_.size()) return text_.size();
      bits_ = separatorBits(text_.substr(windowEnd_));
      windowEnd_ += kSeparatorWindow;
    }
    const auto place = static_cast<std::size_t>(std::countr_zero(bits_));
    bits_ &= bits_ - 1;
    return windowEnd_ - kSeparatorWindow + place;
  }

 private:
  std::string_view text_;
  std::uint64_t bits_ = 0;
  std::size_t windowEnd_ = 0;
};

}  // namespace prismal
