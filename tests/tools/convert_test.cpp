// From form to form on the command line.

#include <gtest/gtest.h>
#include <string>

#include "command.h"

namespace {

class Convert : public Command {};

constexpr const char* kJson = R"({"a": [1, 3.0, true], "d": {"$data": "AAE="}})";

TEST_F(Convert, GoesByTheNameOfTheOutputAndByTo) {
  write("a.json", kJson);
  EXPECT_EQ(prismal("convert a.json -o b.plist").output, "");
  EXPECT_EQ(read("b.plist").substr(0, 5), "<?xml");
  EXPECT_EQ(prismal("convert b.plist --to binary -o c.plist").output, "");
  EXPECT_EQ(read("c.plist").substr(0, 8), "bplist00");
  EXPECT_EQ(prismal("convert c.plist -o d.json").output, "");
  EXPECT_EQ(read("d.json"), "{\n  \"a\": [1, 3.0, true],\n  \"d\": {\"$data\": \"AAE=\"}\n}\n");
  EXPECT_EQ(prismal("convert - --to json < c.plist").output, read("d.json"));
  EXPECT_EQ(prismal("convert d.json").output, read("b.plist"));
  // In place: the file is read before it is replaced.
  EXPECT_EQ(prismal("convert b.plist -o b.plist --to json").output, "");
  EXPECT_EQ(read("b.plist"), read("d.json"));
}

TEST_F(Convert, RefusesInOneLineAndLeavesTheOutputAlone) {
  write("twice.json", "{\"a\": 1,\n  \"a\": 2}");
  write("broken.plist", "<dict><key>a</key></dict>");
  write("short.plist", "bplist00");
  write("beach.jpg", "\xFF\xD8\xFF\xE0");
  write("escape.json", "{\"k\": \"\\u001b\"}");
  write("good.json", kJson);
  write("kept.plist", "kept");
  struct Case {
    std::string arguments;
    std::string message;  // its beginning
  };
  const Case cases[] = {
      {"twice.json", "twice.json:2:3: a second member named \"a\""},
      {"broken.plist", "broken.plist:1:"},
      {"short.plist", "short.plist: trailer at offset 8"},
      {"beach.jpg", "beach.jpg:1:1: neither a property list nor JSON"},
      {"escape.json", "escape.json: /k: a text with a control character"},
      {"missing.json", "missing.json: No such file"},
      {". ", ".: a folder; its "},
      {"good.json -o picture.png", "picture.png: --to has to say"},
  };
  for (const Case& c : cases) {
    const bool named = c.arguments.find("-o") != std::string::npos;
    const Outcome outcome = prismal("convert " + c.arguments + (named ? "" : " -o kept.plist"));
    EXPECT_EQ(outcome.status, 2) << c.arguments;
    const std::string expected = "prismal convert: " + c.message;
    EXPECT_EQ(outcome.output.substr(0, expected.size()), expected);
    EXPECT_EQ(outcome.output.find('\n'), outcome.output.size() - 1);
  }
  EXPECT_EQ(read("kept.plist"), "kept");
  EXPECT_EQ(prismal("convert good.json -o /dev/full").status, 2);
}

TEST_F(Convert, DrawsWhatJsonSays) {
  write("a.json", R"({"CustomColor": [["UIKBColorKeyLetter", "#204060FF"]]})");
  ASSERT_EQ(prismal("convert a.json -o a.plist").status, 0);
  EXPECT_EQ(prismal("render --quiet a.plist -o a.png").output, "");
  EXPECT_EQ(prismal("render --system -o system.png").output, "");
  EXPECT_NE(picture("a.png").pixels, picture("system.png").pixels);
}

}  // namespace
