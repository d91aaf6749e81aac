#include "reading.h"

namespace tools::scenario {
namespace {

TEST(HostReader, DefaultsStandBehindEveryMember) {
  for (const auto* text : {R"({"steps": []})", R"({"host": {}, "steps": []})"}) {
    const auto host = scenarioOf(text).host;
    EXPECT_EQ(host.bundleIdentifier, "com.example.notes");
    EXPECT_EQ(host.missingClasses, std::vector<std::string>{});
    EXPECT_EQ(host.missingInstanceVariables, std::vector<std::string>{});
    EXPECT_EQ(host.userInterfaceIdiom, Nullable<std::int32_t>(0));
    EXPECT_EQ(host.systemVersion, "7.0.4");
    EXPECT_EQ(host.screenScale, 2.0);
    EXPECT_EQ(host.orientation, 1);
    EXPECT_EQ(host.sharedKeyboard, true);
    EXPECT_EQ(host.layout, Nullable<Layout>(Layout::kStar));
    EXPECT_EQ(host.dictationKey, false);
    EXPECT_EQ(host.internationalKey, true);
    EXPECT_TRUE(host.keyboardCache->store);
    EXPECT_EQ(host.keyboardCache->groups, (std::vector<std::string>{"a", "b"}));
    EXPECT_FALSE(host.systemColors);
    EXPECT_FALSE(host.systemGradients);
    EXPECT_EQ(host.rejectedColors, std::vector<std::string>{});
    EXPECT_EQ(host.colorCreation, true);
    EXPECT_FALSE(host.displayTypeNames);
    EXPECT_EQ((*host.backgroundView)->frame, (std::array<double, 4>{0, 0, 320, 216}));
    EXPECT_EQ(host.dictationView->frame, (std::array<double, 4>{0, 0, 320, 216}));
    EXPECT_EQ(host.dictationView->className, "UIView");
  }
}

TEST(HostReader, ReadsGivenMembers) {
  const auto host = scenarioOf(withHost(R"(
      "bundleIdentifier": null, "userInterfaceIdiom": null, "layout": null, "backgroundView": null,
      "systemColors": {"C": "#0a0B0cFf"}, "displayTypeNames": {"-3": "X"}, "screenScale": 1,
      "keyboardCache": {"store": false}, "dictationView": {"tag": 7, "subviews": [
        {"class": "UIImageView", "image": {"path": "/p.png"}}, {"frame": [1, -2, 3.5, 4e1]}]})"))
                        .host;
  EXPECT_TRUE(isGivenNull(host.bundleIdentifier));
  EXPECT_TRUE(isGivenNull(host.userInterfaceIdiom));
  EXPECT_TRUE(isGivenNull(host.layout));
  EXPECT_TRUE(isGivenNull(host.backgroundView));
  EXPECT_EQ(host.systemColors->at(0), std::pair(std::string("C"), Rgba{10, 11, 12, 255}));
  EXPECT_EQ(host.displayTypeNames->at(0), std::pair(-3, std::string("X")));
  EXPECT_EQ(host.screenScale, 1.0);
  EXPECT_FALSE(host.keyboardCache->store);
  EXPECT_EQ(host.keyboardCache->groups.size(), 2U);
  const auto& view = *host.dictationView;
  EXPECT_EQ(view.tag, 7);
  EXPECT_EQ(view.frame, (std::array<double, 4>{}));
  ASSERT_EQ(view.subviews.size(), 2U);
  EXPECT_EQ(view.subviews[0].image->path, "/p.png");
  EXPECT_EQ(view.subviews[1].frame, (std::array<double, 4>{1, -2, 3.5, 40}));
}

TEST(HostReader, RefusesWrongMembers) {
  constexpr Refusal kRows[] = {
      {R"("orientation": 1)", R"("orientatiom": 1)", "/host/orientatiom: unknown member"},
      {R"("orientation": 1)", R"("orientation": 1.0)",
       "/host/orientation: expected an integer, found the number 1.0"},
      {R"("orientation": 2147483647)", R"("orientation": 2147483648)",
       "/host/orientation: an integer beyond 32 bits"},
      {R"("orientation": -1)", R"("orientation": 99999999999999999999)",
       "/host/orientation: an integer beyond 64 bits"},
      {R"("bundleIdentifier": "")", R"("bundleIdentifier": 0)",
       "/host/bundleIdentifier: expected a string, found the number 0"},
      {R"("systemVersion": "7")", R"("systemVersion": null)",
       "/host/systemVersion: expected a string, found null"},
      {R"("screenScale": 1.5)", R"("screenScale": "1.5")",
       "/host/screenScale: expected a number, found a string"},
      {R"("dictationKey": true)", R"("dictationKey": 1)",
       "/host/dictationKey: expected true or false, found the number 1"},
      {R"("userInterfaceIdiom": 1)", R"("userInterfaceIdiom": 2)",
       "/host/userInterfaceIdiom: expected 0, 1 or null"},
      {R"("layout": "star")", R"("layout": "Star")",
       R"(/host/layout: expected "star", "other" or null)"},
      {R"("missingClasses": ["A"])", R"("missingClasses": ["A", 1])",
       "/host/missingClasses/1: expected a string, found the number 1"},
      {R"("missingInstanceVariables": ["m_orientation"])",
       R"("missingInstanceVariables": ["m_orientatio"])",
       R"(/host/missingInstanceVariables/0: expected "m_orientation")"},
      {R"("keyboardCache": {"store": true, "groups": []})",
       R"("keyboardCache": {"store": true, "group": []})",
       "/host/keyboardCache/group: unknown member"},
      {R"("systemColors": {"a/b": "#11223344"})", R"("systemColors": {"a/b": "#1122334"})",
       R"(/host/systemColors/a~1b: expected a colour "#RRGGBBAA", found "#1122334")"},
      {R"("systemColors": {"C": "#11223344"})", R"("systemColors": {"C": "#-1223344"})",
       R"(/host/systemColors/C: expected a colour "#RRGGBBAA", found "#-1223344")"},
      {R"("displayTypeNames": {"0": ""})", R"("displayTypeNames": {"-0": ""})",
       "/host/displayTypeNames/-0: expected a decimal display type as the member's name"},
      {R"("dictationView": {})", R"("dictationView": null)",
       "/host/dictationView: expected an object, found null"},
      {R"("backgroundView": {"frame": [0, 0, 1, 1]})", R"("backgroundView": {"frame": [0, 0, 1]})",
       "/host/backgroundView/frame: expected an array of 4, found 3"},
      {R"("backgroundView": {"subviews": [{"tag": 1}]})",
       R"("backgroundView": {"subviews": [{"tag": "1"}]})",
       "/host/backgroundView/subviews/0/tag: expected an integer, found a string"},
      {R"("backgroundView": {"class": "UIImageView", "image": {}})",
       R"("backgroundView": {"class": "UIView", "image": {}})",
       R"(/host/backgroundView/image: only a "UIImageView" has an image)"},
  };
  expectRefusals(kRows, withHost);
}

}  // namespace
}  // namespace tools::scenario
