#include "reading.h"

namespace tools::scenario {
namespace {

PlistValue plistOf(std::string_view value) {
  const auto files = scenarioOf(withFile(R"({"plist": )" + std::string(value) + "}")).files;
  return files.empty() ? PlistValue{} : std::get<PlistFile>(files[0].second).value;
}

template <class T>
T plistAs(std::string_view value) {
  const auto plist = plistOf(value);
  const auto* typed = std::get_if<T>(&plist.value);
  EXPECT_NE(typed, nullptr) << value;
  return typed != nullptr ? *typed : T{};
}

TEST(FileReader, TellsIntegersFromRealsByTheirWriting) {
  EXPECT_EQ(plistAs<std::int64_t>("1"), 1);
  EXPECT_EQ(plistAs<std::int64_t>("-0"), 0);
  EXPECT_EQ(plistAs<std::int64_t>("9223372036854775807"), INT64_MAX);
  EXPECT_EQ(plistAs<std::int64_t>("-9223372036854775808"), INT64_MIN);
  EXPECT_EQ(plistAs<double>("1.0"), 1.0);
  EXPECT_EQ(plistAs<double>("1e3"), 1000.0);
  EXPECT_EQ(plistAs<double>("1E3"), 1000.0);
  EXPECT_EQ(plistAs<double>("1e30"), 1e30);
}

TEST(FileReader, ReadsOtherPropertyListValues) {
  EXPECT_EQ(plistAs<bool>("true"), true);
  EXPECT_EQ(plistAs<std::string>("\"$data\""), "$data");
  EXPECT_EQ(plistAs<PlistValue::Data>(R"({"$data": "Cxo="})"),
            (PlistValue::Data{std::byte{0x0b}, std::byte{0x1a}}));
  EXPECT_EQ(plistAs<PlistValue::Data>(R"({"$data": ""})"), PlistValue::Data{});
  EXPECT_EQ(plistAs<PlistValue::Date>(R"({"$date": "2013-09-18T00:00:01Z"})").time_since_epoch(),
            std::chrono::seconds(1379462401));
  const auto entries = plistAs<PlistValue::Dictionary>(R"({"b": [false], "$data": 2})");
  ASSERT_EQ(entries.size(), 2U);
  EXPECT_EQ(entries[0].key, "b");
  EXPECT_EQ(std::get<PlistValue::Array>(entries[0].value.value).size(), 1U);
  EXPECT_EQ(std::get<std::int64_t>(entries[1].value.value), 2);
}

TEST(FileReader, ReadsEveryForm) {
  const auto files = scenarioOf(R"({"steps": [], "files": {
      "/z": {"binaryPlist": []}, "/t": {"text": "a\u0000é"}, "/b": {"base64": "/wA="},
      "/i": {"image": {"size": [4, 2], "color": "#01020304"}},
      "/j": {"image": {"size": [1, 1], "color": "#01020304", "format": "jpeg"}},
      "/d": {"directory": true}}})")
                         .files;
  ASSERT_EQ(files.size(), 6U);
  EXPECT_EQ(files[0].first, "/z");
  EXPECT_TRUE(std::get<PlistFile>(files[0].second).binary);
  EXPECT_EQ(std::get<BytesFile>(files[1].second).bytes, std::string("a\0\xC3\xA9", 4));
  EXPECT_EQ(std::get<BytesFile>(files[2].second).bytes, std::string("\xFF\0", 2));
  const auto& image = std::get<ImageFile>(files[3].second);
  EXPECT_EQ(image.width, 4);
  EXPECT_EQ(image.height, 2);
  EXPECT_EQ(image.color, (Rgba{1, 2, 3, 4}));
  EXPECT_EQ(image.format, ImageFormat::kPng);
  EXPECT_EQ(std::get<ImageFile>(files[4].second).format, ImageFormat::kJpeg);
  EXPECT_TRUE(std::holds_alternative<EmptyDirectory>(files[5].second));
}

TEST(FileReader, RefusesWrongForms) {
  constexpr Refusal kRows[] = {
      {R"({"text": ""})", R"({})", "/files/~1f: expected one form of a file, found 0"},
      {R"({"text": ""})", R"({"text": "", "plist": 1})",
       "/files/~1f: expected one form of a file, found 2"},
      {R"({"text": ""})", R"({"txt": ""})", "/files/~1f/txt: unknown member"},
      {R"({"text": ""})", R"({"text": null})", "/files/~1f/text: expected a string, found null"},
      {R"({"directory": true})", R"({"directory": false})", "/files/~1f/directory: expected true"},
      {R"({"base64": "AAA="})", R"({"base64": "AAA"})",
       "/files/~1f/base64: expected base64 with its padding"},
      {R"({"base64": "AA=="})", R"({"base64": "A==="})",
       "/files/~1f/base64: expected base64 with its padding"},
      {R"({"plist": [9223372036854775807]})", R"({"plist": [9223372036854775808]})",
       "/files/~1f/plist/0: an integer beyond 64 bits"},
      {R"({"plist": [-9223372036854775808]})", R"({"plist": [-9223372036854775809]})",
       "/files/~1f/plist/0: an integer beyond 64 bits"},
      {R"({"plist": {"a": "null"}})", R"({"plist": {"a": null}})",
       "/files/~1f/plist/a: a property list has no null"},
      {R"({"plist": {"$data": "AAAA"}})", R"({"plist": {"$data": 1}})",
       "/files/~1f/plist/$data: expected a string, found the number 1"},
      {R"({"plist": {"$data": "AAAA"}})", R"({"plist": {"$data": "AA-A"}})",
       "/files/~1f/plist/$data: expected base64 with its padding"},
      {R"({"plist": {"$date": "2012-02-29T23:59:59Z"}})",
       R"({"plist": {"$date": "2013-02-29T23:59:59Z"}})",
       "/files/~1f/plist/$date: expected a date such as \"2013-09-18T00:00:00Z\", "
       "found \"2013-02-29T23:59:59Z\""},
      {R"({"plist": {"$date": "2012-02-29T00:00:00Z"}})",
       R"({"plist": {"$date": "2012-02-29T24:00:00Z"}})",
       "/files/~1f/plist/$date: expected a date such as \"2013-09-18T00:00:00Z\", "
       "found \"2012-02-29T24:00:00Z\""},
      {R"({"image": {"size": [1, 1], "color": "#00000000"}})", R"({"image": {"size": [1, 1]}})",
       "/files/~1f/image/color: missing"},
      {R"({"image": {"size": [1, 1], "color": "#00000000"}})",
       R"({"image": {"size": [1, 0], "color": "#00000000"}})",
       "/files/~1f/image/size/1: expected from 1 to 16384 pixels, found 0"},
      {R"({"image": {"size": [8000, 8000], "color": "#00000000"}})",
       R"({"image": {"size": [8000, 8001], "color": "#00000000"}})",
       "/files/~1f/image/size: more than 64000000 pixels"},
      {R"({"image": {"size": [1, 1], "color": "#00000000", "format": "png"}})",
       R"({"image": {"size": [1, 1], "color": "#00000000", "format": "gif"}})",
       R"(/files/~1f/image/format: expected "png" or "jpeg", found "gif")"},
  };
  expectRefusals(kRows, withFile);
}

TEST(FileReader, RefusesPathsThatAreNotAbsolute) {
  constexpr Refusal kRows[] = {
      {"/a", "a", "/files/a: expected an absolute device path as the member's name"},
      {"/", "", "/files/: expected an absolute device path as the member's name"},
  };
  expectRefusals(kRows, [](std::string_view path) {
    return R"({"files": {")" + std::string(path) + R"(": {"directory": true}}, "steps": []})";
  });
}

}  // namespace
}  // namespace tools::scenario
