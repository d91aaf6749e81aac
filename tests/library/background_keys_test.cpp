#include "backgrounds/background_keys.h"

#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace prismal {
namespace {

std::vector<std::string> textsOf(std::span<const BackgroundKey> keys) {
  std::vector<std::string> texts;
  for (const BackgroundKey& key : keys) texts.emplace_back(key.view());
  return texts;
}

TEST(BackgroundKeys, GoFromTheMostSpecificToTheLeast) {
  const auto full = fullBackgroundKey("Landscape", "iPad-Split", 3, 770);
  EXPECT_EQ(full.view(), "Landscape;iPad-Split;3;770");
  const BackgroundKeys keys("Landscape", "iPad-Split", full.view(), 3, 770);
  EXPECT_EQ(
      textsOf(keys.all()),
      (std::vector<std::string>{"Landscape;iPad-Split;3;770", "Landscape;iPad-Split;3;258",
                                "Landscape;iPad-Split;3;514", "Landscape;iPad-Split;3;2",
                                "Landscape;iPad-Split;3", "Landscape;iPad-Split", "Landscape"}));
  EXPECT_EQ(keys.withVariant().size(), 4U);
}

TEST(BackgroundKeys, AreFourWithoutBits) {
  const BackgroundKeys keys("Portrait", "iPhone-Alert", "Portrait;iPhone-Alert;0;2", 0, 2);
  EXPECT_EQ(textsOf(keys.all()),
            (std::vector<std::string>{"Portrait;iPhone-Alert;0;2", "Portrait;iPhone-Alert;0",
                                      "Portrait;iPhone-Alert", "Portrait"}));
  EXPECT_EQ(keys.threeFields().view(), "Portrait;iPhone-Alert;0");
  EXPECT_EQ(keys.twoFields().view(), "Portrait;iPhone-Alert");
  EXPECT_EQ(keys.oneField().view(), "Portrait");
}

}  // namespace
}  // namespace prismal
