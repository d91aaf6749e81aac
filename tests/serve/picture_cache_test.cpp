#include "serve/picture_cache.h"

#include <gtest/gtest.h>
#include <string>

namespace tools::serve {
namespace {

TEST(PictureCache, DropsWhatWasNotAskedForLongest) {
  PictureCache cache(10);
  cache.keep("a", "1234");
  cache.keep("b", "5678");
  EXPECT_EQ(cache.find("a"), "1234");
  cache.keep("c", "9abc");
  EXPECT_EQ(cache.find("b"), std::nullopt);
  EXPECT_EQ(cache.find("a"), "1234");
  EXPECT_EQ(cache.find("c"), "9abc");
}

TEST(PictureCache, KeepsTheFirstAnswerAndNothingTooLarge) {
  PictureCache cache(10);
  cache.keep("a", "first");
  cache.keep("a", "second");
  EXPECT_EQ(cache.find("a"), "first");
  cache.keep("b", std::string(11, 'x'));
  EXPECT_EQ(cache.find("b"), std::nullopt);
  EXPECT_EQ(cache.find("a"), "first");
}

}  // namespace
}  // namespace tools::serve
