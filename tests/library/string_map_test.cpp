#include "support/string_map.h"

#include <gtest/gtest.h>
#include <memory>
#include <optional>
#include <string>

namespace prismal {
namespace {

/// A name that differs from others of its length in one place, which moves from number to number.
std::string name(int i) {
  std::string text(static_cast<std::size_t>(i % 40), 'x');
  if (!text.empty()) text[static_cast<std::size_t>(i / 40) % text.size()] = 'y';
  return text + std::to_string(i / 40);
}

std::optional<int> valueIn(const StringMap<int>& map, std::string_view text) {
  const int* const found = map.find(text);
  return found ? std::optional(*found) : std::nullopt;
}

TEST(StringMap, FindsWhatWasAddedAndNothingElse) {
  StringMap<int> map;
  EXPECT_EQ(map.find(""), nullptr);
  constexpr int kCount = 20'000;
  for (int i = 0; i < kCount; ++i) {
    EXPECT_EQ(map.find(name(i)), nullptr) << i;
    map.insert(name(i), i);
  }
  EXPECT_EQ(map.size(), std::size_t{kCount});
  for (int i = 0; i < kCount; ++i) EXPECT_EQ(valueIn(map, name(i)), i);
  for (int i = kCount; i < 2 * kCount; ++i) EXPECT_EQ(map.find(name(i)), nullptr) << i;
}

TEST(StringMap, TellsTextsApartByEveryByte) {
  // Of each length up to three steps of the hash: the text, and it with one byte changed.
  for (std::size_t length = 0; length <= 50; ++length) {
    const std::string text(length, 'a');
    StringMap<int> map;
    map.insert(text, 1);
    EXPECT_EQ(valueIn(map, text), 1) << length;
    EXPECT_EQ(map.find(text + 'a'), nullptr) << length;
    for (std::size_t i = 0; i < length; ++i) {
      std::string changed = text;
      changed[i] = '\0';
      EXPECT_EQ(map.find(changed), nullptr) << length << ", " << i;
      map.insert(changed, 2);
    }
    EXPECT_EQ(map.size(), length + 1);
    EXPECT_EQ(valueIn(map, text), 1) << length;
  }
}

TEST(StringMap, KeepsTheFirstOrTheLastAsToldTo) {
  StringMap<int> map;
  EXPECT_EQ(map.insert("a", 1), 1);
  EXPECT_EQ(map.insert("a", 2), 1);
  map.assign("a", 3);
  map.assign("b", 4);
  EXPECT_EQ(valueIn(map, "a"), 3);
  EXPECT_EQ(valueIn(map, "b"), 4);
  EXPECT_EQ(map.size(), 2U);
}

TEST(StringMap, OwnsItsValuesOnceEach) {
  const auto value = std::make_shared<int>(7);
  {
    StringMap<std::shared_ptr<int>> map;
    for (int i = 0; i < 1'000; ++i) map.insert(name(i), value);
    EXPECT_EQ(value.use_count(), 1'001);
    map.assign(name(3), nullptr);
    EXPECT_EQ(value.use_count(), 1'000);
  }
  EXPECT_EQ(value.use_count(), 1);
}

TEST(StringMap, HashesWithASeedOfItsOwn) {
  const TextHash first(1);
  const TextHash second(2);
  for (const std::string_view text : {"", "a", "abcd", "abcdefgh", "abcdefghijklmnopq"}) {
    EXPECT_EQ(first(text), TextHash(1)(text)) << text;
    EXPECT_NE(first(text), second(text)) << text;
  }
}

}  // namespace
}  // namespace prismal
