// Parameters of an address: which are taken, and what each may be.

#include "serve/question.h"

#include <gtest/gtest.h>
#include <string>

namespace tools::serve {
namespace {

constexpr std::string_view kAll[] = {"device",
                                     "orientation",
                                     "style",
                                     "keyplane",
                                     "dictation-key",
                                     "dictation",
                                     "international-key",
                                     "shift",
                                     "press",
                                     "disable",
                                     "scale",
                                     "look",
                                     "version",
                                     "key",
                                     "visual-style",
                                     "use-prismal",
                                     "background-style",
                                     "rule",
                                     "picture",
                                     "remove",
                                     "beside"};

struct Case {
  Parameters parameters;
  const char* reason;  ///< empty: they are taken
};

TEST(Question, TakesWhatIsOnItsLists) {
  const Case kCases[] = {
      {{}, ""},
      {{{"device", "tablet"}, {"style", "alert"}, {"orientation", "landscape"}}, ""},
      {{{"device", "Tablet"}}, "device: it can't be \"Tablet\""},
      {{{"device", ""}}, "device: it can't be \"\""},
      {{{"Device", "tablet"}}, "\"Device\": no parameter here"},
      {{{"", ""}}, "\"\": no parameter here"},
      {{{"file", "/etc/passwd"}}, "\"file\": no parameter here"},
      {{{"device", "tablet"}, {"device", "tablet"}}, "device: twice"},
      {{{"press", "a"}, {"press", "a"}}, ""},
      {{{"press", ""}}, "press: it can't be \"\""},
      {{{"press", "caf\xc3\xa9"}}, ""},
      {{{"press", "\xc3"}}, "press: it can't be \"\xc3\""},
      {{{"key", "a\n"}}, "key: it can't be \"a\n\""},
      {{{"key", std::string(64, 'k')}}, ""},
      {{{"key", std::string(65, 'k')}}, "key: it can't be"},
      {{{"scale", "1.5"}}, ""},
      {{{"scale", "1.50"}}, "scale: it can't be \"1.50\""},
      {{{"scale", "100"}}, "scale: it can't be \"100\""},
      {{{"rule", "0"}}, ""},
      {{{"rule", "-1"}}, "rule: it can't be \"-1\""},
      {{{"rule", "1 "}}, "rule: it can't be \"1 \""},
      {{{"rule", "9999999999"}}, "rule: it can't be"},
      {{{"version", "x"}}, "version: it can't be \"x\""},
      {{{"visual-style", "iPad-Split"}}, ""},
      {{{"visual-style", "iPhone-Dictation"}}, "visual-style: it can't be \"iPhone-Dictation\""},
      {{{"background-style", "iPhone-Dictation"}}, ""},
      {{{"use-prismal", "true"}}, "use-prismal: it can't be \"true\""},
      {{{"dictation", "yes"}, {"press", "a"}}, "--dictation shows no keys"},
      {{{"shift", "on"}, {"keyplane", "numbers"}}, "--shift is for letters"},
  };
  for (const Case& each : kCases) {
    Question question;
    const auto reason = readQuestion(each.parameters, kAll, question).value_or("");
    EXPECT_TRUE(*each.reason ? reason.starts_with(each.reason) : reason.empty())
        << reason << " in place of " << each.reason;
  }
}

TEST(Question, TakesWhatTheRouteHas) {
  constexpr std::string_view kScaleAlone[] = {"scale"};
  Question question;
  EXPECT_FALSE(readQuestion({{"scale", "3"}}, kScaleAlone, question));
  EXPECT_EQ(question.scale, 3);
  EXPECT_TRUE(readQuestion({{"device", "tablet"}}, kScaleAlone, question));
}

TEST(Question, HasBoundsForKeys) {
  Question question;
  Parameters keys(16, {"press", "a"});
  EXPECT_FALSE(readQuestion(keys, kAll, question));
  EXPECT_EQ(question.view.pressed.size(), 16U);
  Question another;
  keys.emplace_back("press", "a");
  EXPECT_TRUE(readQuestion(keys, kAll, another));
}

TEST(Question, HasChoicesThatItTakes) {
  for (const ParameterWords& choice : choices()) {
    for (const auto word : choice.words) {
      Question question;
      const Parameters one = {{std::string(choice.name), std::string(word)}};
      EXPECT_FALSE(readQuestion(one, kAll, question)) << choice.name << "=" << word;
    }
  }
}

}  // namespace
}  // namespace tools::serve
