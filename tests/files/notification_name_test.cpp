#include "host/files/notification_name.h"

#include <gtest/gtest.h>

namespace host::files {
namespace {

using namespace std::string_view_literals;

TEST(NotificationName, IsASafeFileName) {
  const struct {
    std::string_view name;
    std::string_view file;
  } cases[] = {{"com.apple.keyboard-prefs_changed.9", "com.apple.keyboard-prefs_changed.9"},
               {"a/b", "a%2Fb"},
               {"../x", "%2E.%2Fx"},
               {".", "%2E"},
               {"..", "%2E."},
               {"a.", "a."},
               {"%2E", "%252E"},
               {"a b\n", "a%20b%0A"},
               {"\0"sv, "%00"},
               {"\xff\x80", "%FF%80"}};
  for (const auto& [name, file] : cases) EXPECT_EQ(fileNameOfNotification(name), file);
}

TEST(NotificationName, IsRefusedWhenNoFileCanBearIt) {
  EXPECT_EQ(fileNameOfNotification(""), std::nullopt);
  EXPECT_TRUE(fileNameOfNotification(std::string(255, 'n')));
  EXPECT_EQ(fileNameOfNotification(std::string(256, 'n')), std::nullopt);
  EXPECT_TRUE(fileNameOfNotification(std::string(85, '/')));
  EXPECT_EQ(fileNameOfNotification(std::string(86, '/')), std::nullopt);
}

}  // namespace
}  // namespace host::files
