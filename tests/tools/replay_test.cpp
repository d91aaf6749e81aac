// The replay command from outside: exit status, standard output to the letter, complaints.

#include <algorithm>
#include <gtest/gtest.h>
#include <string>

#include "command.h"

namespace {

class Replay : public Command {
 protected:
  Outcome run(const std::string& arguments, const std::string& redirection) const {
    return prismal("replay " + arguments, redirection);
  }
  Outcome output(const std::string& arguments) const { return run(arguments, "2>/dev/null"); }
  Outcome complaints(const std::string& arguments) const {
    return run(arguments, "2>&1 >/dev/null");
  }
};

TEST_F(Replay, TellsEveryMemberOfAStep) {
  write("a.json", R"({
    "host": {"systemColors": {"C": "#11223344"}, "dictationView": {"subviews": [{"tag": 3}]}},
    "steps": [
      {"do": "color", "name": "C"},
      {"do": "traits", "key": null, "keyplane": null,
       "system": {"renderEffects": ["E", {"class": "F", "superclass": "E"}],
                  "backgroundGradient": {"flatColor": "N"}, "symbolStyle": {"etchOffset": [0.5, 2]}}},
      {"do": "dictation", "config": "c"},
      {"do": "list", "path": "/"}
    ]})");
  const Outcome outcome = output("a.json");
  EXPECT_EQ(outcome.status, 0);
  EXPECT_EQ(
      outcome.output,
      R"({"step":0,"do":"color","result":{"hex":"#11223344","components":[0.06666666666666667,0.13333333333333333,0.2,0.26666666666666666]},"log":[],"reads":[],"events":[]})"
      "\n"
      R"({"step":1,"do":"traits","result":{"renderEffects":["E",{"class":"F","superclass":"E"}],"renderEffectsMutable":true,"backgroundGradient":{"flatColor":"N"},"symbolStyle":{"textColor":null,"etchColor":null,"fontName":null,"etchOffset":[0.5,2]},"secondarySymbolStyle":null},"log":[],"reads":[],"events":[]})"
      "\n"
      R"({"step":2,"do":"dictation","result":{"config":"c","dictationView":{"class":"UIView","tag":0,"frame":[0,0,0,0],"image":null,"subviews":[{"class":"UIView","tag":3,"frame":[0,0,0,0],"image":null,"subviews":[]}]}},"log":[],"reads":[],"events":[]})"
      "\n"
      R"({"step":3,"do":"list","result":[],"log":[],"reads":[],"events":[]})"
      "\n");
}

constexpr const char* kHolds = R"({"steps": [{"do": "cacheEnabled", "expect": {"result": true}}]})";
constexpr const char* kFails =
    R"({"steps": [{"do": "cacheEnabled", "expect": {"result": false}}]})";
constexpr const char* kMalformed = R"({"steps": [{"do": "color"}]})";

TEST_F(Replay, SaysWhatDoesNotHold) {
  write("fails.json", kFails);
  const Outcome outcome = complaints("fails.json");
  EXPECT_EQ(outcome.status, 1);
  EXPECT_EQ(outcome.output,
            "fails.json: step 0 (cacheEnabled): /result: expected false, came true\n");
}

TEST_F(Replay, PlaysNothingOfAMalformedScenario) {
  write("malformed.json", kMalformed);
  EXPECT_EQ(complaints("malformed.json").output, "malformed.json: /steps/0/name: missing\n");
  const Outcome outcome = output("malformed.json");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(outcome.output, "");
}

TEST_F(Replay, NeedsALibraryThatCanBeLoaded) {
  write("load.json", R"({"steps": [{"do": "load"}]})");
  write("lacks.json",
        R"({"host": {"missingClasses": ["UIKeyboardImpl"]}, "steps": [{"do": "load"}]})");
  EXPECT_EQ(output("load.json").status, 0);
  EXPECT_EQ(output("lacks.json").status, 2);
  EXPECT_NE(complaints("lacks.json").output.find("undefined symbol: OBJC_CLASS_UIKeyboardImpl"),
            std::string::npos);
  const Outcome outcome = complaints("--library load.json load.json");
  EXPECT_EQ(outcome.status, 2);
  EXPECT_EQ(std::count(outcome.output.begin(), outcome.output.end(), '\n'), 1) << outcome.output;
}

TEST_F(Replay, PlaysSeveralFilesInOrderAndTakesTheWorstStatus) {
  write("holds.json", kHolds);
  write("fails.json", kFails);
  write("malformed.json", kMalformed);
  const Outcome two = output("fails.json holds.json");
  EXPECT_EQ(two.status, 1);
  const auto first = two.output.find(R"({"scenario":"fails.json","step":0)");
  EXPECT_EQ(first, 0U);
  EXPECT_NE(two.output.find("\n{\"scenario\":\"holds.json\",\"step\":0"), std::string::npos);
  EXPECT_EQ(output("malformed.json fails.json holds.json").status, 2);
  EXPECT_EQ(output("--quiet holds.json holds.json").output, "");
  EXPECT_EQ(output("holds.json missing.json").status, 2);
  EXPECT_EQ(output("").status, 2);
}

TEST_F(Replay, FailsWhenItsOutputCannotBeWritten) {
  write("holds.json", kHolds);
  EXPECT_EQ(run("holds.json", "2>&1 >/dev/full").output,
            "standard output: No space left on device\n");
  EXPECT_EQ(run("holds.json", "2>/dev/null >/dev/full").status, 2);
  EXPECT_EQ(run("/dev/stdin", "2>&1 < holds.json >/dev/null").status, 0);
}

}  // namespace
