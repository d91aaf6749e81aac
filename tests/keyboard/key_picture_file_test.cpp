// The form of a group's file: what goes in comes out, and nothing else is let in.

#include "host/keyboard/key_picture_file.h"

#include <cstdint>
#include <cstring>
#include <gtest/gtest.h>

#include "host/keyboard/checksum.h"
#include "keyboard/key_pictures.h"

namespace host::keyboard {
namespace {

using namespace std::string_literals;

KeyPictureGroup sample() {
  return {"a stamp", {{"a", smallPicture(2, 1, 10)}, {"b", smallPicture(1, 2, 20)}}};
}

TEST(KeyPictureFile, GivesBackWhatWasPutIn) {
  const KeyPictureGroup groups[] = {
      {},
      {"stamp", {}},
      sample(),
      {"\0\n\xff"s, {{""s, pictureAt(0, 0, {})}, {"\0a"s, smallPicture(70, 90, 1)}}},
      {std::string(70'000, 's'), {{std::string(70'000, 'k'), smallPicture(1, 1, 1)}}},
  };
  for (const KeyPictureGroup& group : groups) {
    const auto decoded = decodeGroup(encodeGroup(group));
    ASSERT_TRUE(decoded);
    EXPECT_TRUE(sameGroup(*decoded, group)) << group.stamp.size();
  }
}

TEST(KeyPictureFile, OfAnotherLengthIsNone) {
  const std::string bytes = encodeGroup(sample());
  for (std::size_t size = 0; size < bytes.size(); ++size) {
    EXPECT_FALSE(decodeGroup(std::string_view(bytes).substr(0, size))) << size;
  }
  EXPECT_FALSE(decodeGroup(bytes + '\0'));
  EXPECT_FALSE(decodeGroup(bytes + bytes));
}

TEST(KeyPictureFile, WithAnyByteChangedIsNone) {
  const std::string bytes = encodeGroup(sample());
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    for (const char change : {'\x01', '\x80', '\xff'}) {
      std::string damaged = bytes;
      damaged[i] = static_cast<char>(damaged[i] ^ change);
      EXPECT_FALSE(decodeGroup(damaged)) << i;
    }
  }
}

// Where things stand in the file of sample().
constexpr std::size_t kHeader = 24;
constexpr std::size_t kCount = 12;
constexpr std::size_t kStampSize = kHeader;
constexpr std::size_t kIdentitySize = kStampSize + 4 + 7;
constexpr std::size_t kIdentity = kIdentitySize + 4;
constexpr std::size_t kLeft = kIdentity + 1;
constexpr std::size_t kWidth = kLeft + 8;
constexpr std::size_t kHeight = kLeft + 12;

/// The file with a number changed by somebody who knows how to make the checksum right.
std::string forged(std::size_t where, std::uint32_t number) {
  std::string bytes = encodeGroup(sample());
  std::memcpy(bytes.data() + where, &number, sizeof number);
  const std::uint64_t sum = checksum(std::string_view(bytes).substr(kHeader));
  std::memcpy(bytes.data() + kHeader - sizeof sum, &sum, sizeof sum);
  return bytes;
}

TEST(KeyPictureFile, ThatClaimsTooMuchIsNone) {
  struct Case {
    const char* what;
    std::size_t where;
    std::uint32_t number;
    bool fits = false;
  };
  constexpr Case kCases[] = {
      {"two pictures", kCount, 2, true},
      {"one picture and bytes left over", kCount, 1},
      {"three pictures", kCount, 3},
      {"pictures without end", kCount, 0xffffffff},
      {"the stamp", kStampSize, 7, true},
      {"a stamp beyond the end", kStampSize, 0xffffffff},
      {"an identity beyond the end", kIdentitySize, 0x7fffffff},
      {"two wide, one high", kWidth, 2, true},
      {"three wide", kWidth, 3},
      {"immensely wide", kWidth, 0x7fffffff},
      {"less than nothing wide", kWidth, 0xfffffffe},
      {"as wide as can be", kWidth, 1 << 15},
      {"immensely high", kHeight, 0xffffffff},
      {"another place", kLeft, 9, true},
      {"far to the right", kLeft, 0x7fffffff},
      {"left of the board", kLeft, 0xffffffff},
  };
  for (const Case& each : kCases) {
    EXPECT_EQ(decodeGroup(forged(each.where, each.number)).has_value(), each.fits) << each.what;
  }
}

TEST(KeyPictureFile, WithOneKeyTwiceOrOutOfOrderIsNone) {
  std::string bytes = encodeGroup(sample());
  ASSERT_EQ(bytes[kIdentity], 'a');
  std::uint32_t size = 0;
  std::memcpy(&size, bytes.data() + kIdentitySize, sizeof size);
  ASSERT_EQ(size, 1U);
  std::uint32_t first = 0;
  std::memcpy(&first, bytes.data() + kIdentity, sizeof first);
  EXPECT_TRUE(decodeGroup(forged(kIdentity, first)));
  for (const char identity : {'b', 'c'}) {
    const auto changed = (first & ~0xffU) | static_cast<unsigned char>(identity);
    EXPECT_FALSE(decodeGroup(forged(kIdentity, changed))) << identity;
  }
}

}  // namespace
}  // namespace host::keyboard
