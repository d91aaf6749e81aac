#include "reading.h"

namespace tools::scenario {
namespace {

Step stepOf(std::string_view members) {
  auto steps = scenarioOf(withStep(members)).steps;
  return steps.empty() ? Step{} : std::move(steps[0]);
}

template <class T>
T actionOf(std::string_view members) {
  auto step = stepOf(members);
  EXPECT_TRUE(std::holds_alternative<T>(step.action)) << members;
  return std::get<T>(std::move(step.action));
}

TEST(StepReader, ReadsEveryKind) {
  actionOf<step::Load>(R"("do": "load")");
  actionOf<step::FinishLaunching>(R"("do": "finishLaunching")");
  actionOf<step::CacheEnabled>(R"("do": "cacheEnabled")");
  EXPECT_EQ(actionOf<step::Notify>(R"("do": "notify", "name": "n")").name, "n");
  EXPECT_EQ(actionOf<step::Remove>(R"("do": "remove", "path": "/n")").path, "/n");
  EXPECT_EQ(actionOf<step::List>(R"("do": "list", "path": "/")").path, "/");
  EXPECT_EQ(actionOf<step::Color>(R"("do": "color", "name": "n")").name, "n");
  EXPECT_EQ(actionOf<step::Gradient>(R"("do": "gradient", "name": "n")").name, "n");
  EXPECT_EQ(actionOf<step::ReturnKey>(R"("do": "returnKey", "argument": "n")").argument, "n");
  EXPECT_EQ(actionOf<step::Dictation>(R"("do": "dictation", "config": "n")").config, "n");
  const auto write = actionOf<step::Write>(R"("do": "write", "path": "/n", "file": {"text": "t"})");
  EXPECT_EQ(write.path, "/n");
  EXPECT_EQ(std::get<BytesFile>(write.file).bytes, "t");
  EXPECT_EQ(stepOf(R"("do": "load")").name, "load");
}

TEST(StepReader, ShapesTakeTheirDefaults) {
  const auto traits = actionOf<step::Traits>(R"("do": "traits", "key": {}, "keyplane": {})");
  EXPECT_EQ(traits.key->name, std::nullopt);
  EXPECT_EQ(traits.key->displayType, 0);
  EXPECT_EQ(traits.keyplane->name, std::nullopt);
  EXPECT_EQ(traits.keyplane->visualStyle, 1);
  EXPECT_FALSE(traits.keyplane->isLetters);
  const auto system =
      **actionOf<step::Traits>(R"("do": "traits", "key": null, "keyplane": null, "system": {
          "symbolStyle": {"textColor": "T"}})")
            .system;
  EXPECT_FALSE(system.renderEffects);
  EXPECT_TRUE(system.renderEffectsMutable);
  EXPECT_FALSE(system.backgroundGradient);
  EXPECT_FALSE(system.secondarySymbolStyle);
  EXPECT_EQ(system.symbolStyle->textColor, "T");
  EXPECT_EQ(system.symbolStyle->fontName, std::nullopt);
  EXPECT_EQ(system.symbolStyle->etchOffset, (std::array<double, 2>{}));
}

TEST(StepReader, ReadsTraits) {
  const auto traits =
      **actionOf<step::Traits>(R"("do": "traits", "key": {"state": 4}, "keyplane": {}, "system": {
          "renderEffects": ["E", {"class": "F", "superclass": "E"}], "renderEffectsMutable": false,
          "backgroundGradient": {"startColor": "a", "endColor": "b"},
          "secondarySymbolStyle": {"fontName": null, "etchOffset": [0.1, -2]}})")
            .system;
  ASSERT_EQ(traits.renderEffects->size(), 2U);
  EXPECT_EQ(traits.renderEffects->at(0).superclass, std::nullopt);
  EXPECT_EQ(traits.renderEffects->at(1).className, "F");
  EXPECT_EQ(traits.renderEffects->at(1).superclass, "E");
  EXPECT_FALSE(traits.renderEffectsMutable);
  EXPECT_EQ(std::get<LinearGradient>(*traits.backgroundGradient).endColor, "b");
  EXPECT_EQ(traits.secondarySymbolStyle->etchOffset, (std::array{0.1, -2.0}));
}

TEST(StepReader, TellsNullFromNothing) {
  EXPECT_FALSE(actionOf<step::Change>(R"("do": "change", "keyplane": {})").current);
  const auto none = actionOf<step::Change>(R"("do": "change", "keyplane": {}, "current": null)");
  EXPECT_TRUE(isGivenNull(none.current));
  EXPECT_FALSE(actionOf<step::Show>(R"("do": "show", "keyplane": null)").keyplane);
  using Background = step::BackgroundTraits;
  constexpr std::string_view kStart = R"("do": "backgroundTraits", "keyplane": {})";
  EXPECT_FALSE(actionOf<Background>(kStart).system);
  const auto null = actionOf<Background>(std::string(kStart) + R"(, "system": null)");
  EXPECT_TRUE(isGivenNull(null.system));
  const auto named = actionOf<Background>(std::string(kStart) +
                                          R"(, "system": {"backgroundGradient": {"name": "N"}})");
  EXPECT_EQ(std::get<NamedGradient>(*(*named.system)->backgroundGradient).name, "N");
}

TEST(StepReader, SetHoldsOnlyWhatIsGiven) {
  const auto host = actionOf<step::Set>(R"("do": "set", "layout": null, "orientation": 3)").host;
  EXPECT_TRUE(isGivenNull(host.layout));
  EXPECT_EQ(host.orientation, 3);
  EXPECT_FALSE(host.bundleIdentifier);
  EXPECT_FALSE(host.userInterfaceIdiom);
  EXPECT_FALSE(host.backgroundView);
  EXPECT_FALSE(host.keyboardCache);
}

TEST(StepReader, KeepsExpectationsApartFromTheirLack) {
  const auto expect = stepOf(R"("do": "load", "expect": {"result": null, "log": ["~a.*"]})").expect;
  ASSERT_TRUE(expect.result);
  EXPECT_TRUE(expect.result->is_null());
  EXPECT_EQ(expect.log->at(0), "~a.*");
  EXPECT_FALSE(expect.reads);
  EXPECT_FALSE(expect.events);
}

TEST(StepReader, RefusesWrongSteps) {
  constexpr Refusal kRows[] = {
      {R"("do": "load")", R"("Do": "load")", "/steps/0/do: missing"},
      {R"("do": "load")", R"("do": "Load")", R"(/steps/0/do: no such step: "Load")"},
      {R"("do": "load")", R"("do": "load", "name": "")", "/steps/0/name: unknown member"},
      {R"("do": "notify", "name": "")", R"("do": "notify")", "/steps/0/name: missing"},
      {R"("do": "notify", "name": "")", R"("do": "notify", "name": null)",
       "/steps/0/name: expected a string, found null"},
      {R"("do": "set")", R"("do": "set", "bundleIdentifier": "a")",
       "/steps/0/bundleIdentifier: can't change in a running process"},
      {R"("do": "set", "layout": "star")", R"("do": "set", "lay": "star")",
       "/steps/0/lay: unknown member"},
      {R"("do": "list", "path": "/a")", R"("do": "list", "path": "a")",
       R"(/steps/0/path: expected an absolute device path, found "a")"},
      {R"("do": "remove", "path": "/a")", R"("do": "remove", "path": "/a\u0000")",
       R"(/steps/0/path: expected an absolute device path, found "/a\u0000")"},
      {R"("do": "write", "path": "/a", "file": {"text": ""})", R"("do": "write", "path": "/a")",
       "/steps/0/file: missing"},
      {R"("do": "show", "keyplane": {})", R"("do": "show")", "/steps/0/keyplane: missing"},
      {R"("do": "show", "keyplane": {"visualStyle": 1})",
       R"("do": "show", "keyplane": {"visualStyle": "1"})",
       "/steps/0/keyplane/visualStyle: expected an integer, found a string"},
      {R"("do": "traits", "key": null, "keyplane": null)", R"("do": "traits", "keyplane": null)",
       "/steps/0/key: missing"},
      {R"("do": "traits", "key": null, "keyplane": null)",
       R"("do": "traits", "key": null, "keyplane": null, "current": null)",
       "/steps/0/current: unknown member"},
      {R"("do": "load", "expect": {})", R"("do": "load", "expect": null)",
       "/steps/0/expect: expected an object, found null"},
      {R"("do": "load", "expect": {"log": []})", R"("do": "load", "expect": {"logs": []})",
       "/steps/0/expect/logs: unknown member"},
  };
  expectRefusals(kRows, withStep);
}

TEST(StepReader, RefusesWrongTraits) {
  constexpr Refusal kRows[] = {
      {R"({"backgroundGradient": {"flatColor": "a"}})", R"({"backgroundGradient": {}})",
       "/steps/0/system/backgroundGradient: expected \"flatColor\", \"startColor\" and "
       "\"endColor\", or \"name\""},
      {R"({"backgroundGradient": {"startColor": "a", "endColor": "b"}})",
       R"({"backgroundGradient": {"startColor": "a"}})",
       "/steps/0/system/backgroundGradient/endColor: missing"},
      {R"({"backgroundGradient": {"flatColor": "a"}})",
       R"({"backgroundGradient": {"flatColor": "a", "name": "b"}})",
       "/steps/0/system/backgroundGradient/name: unknown member"},
      {R"({"renderEffects": [{"class": "A", "superclass": "B"}]})",
       R"({"renderEffects": [{"class": "A"}]})",
       "/steps/0/system/renderEffects/0/superclass: missing"},
      {R"({"renderEffects": ["A"]})", R"({"renderEffects": [null]})",
       "/steps/0/system/renderEffects/0: expected a class name or an object, found null"},
      {R"({"symbolStyle": {"etchOffset": [0, 0]}})", R"({"symbolStyle": {"etchOffset": [0, "0"]}})",
       "/steps/0/system/symbolStyle/etchOffset/1: expected a number, found a string"},
  };
  expectRefusals(kRows, [](std::string_view system) {
    return withStep(R"("do": "traits", "key": null, "keyplane": null, "system": )" +
                    std::string(system));
  });
}

TEST(StepReader, RefusesWrongPatterns) {
  const auto fault = faultOf(withStep(R"("do": "load", "expect": {"log": ["(", "~("]})"));
  EXPECT_TRUE(fault.starts_with("/steps/0/expect/log/1: not a regular expression: ")) << fault;
}

}  // namespace
}  // namespace tools::scenario
