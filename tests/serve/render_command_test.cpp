#include "serve/render_command.h"

#include <gtest/gtest.h>
#include <string>

namespace tools::serve {
namespace {

constexpr std::string_view kAll[] = {"device", "orientation", "style",         "keyplane",
                                     "shift",  "press",       "scale",         "dictation",
                                     "look",   "beside",      "dictation-key", "international-key",
                                     "disable"};

struct Case {
  const char* theme;
  Parameters parameters;
  const char* line;
};

TEST(RenderCommand, SaysWhatIsNotUsual) {
  const Case kCases[] = {
      {"Dusk.theme", {}, "prismal render Dusk.theme"},
      {"Dusk.theme",
       {{"device", "phone-3.5"},
        {"orientation", "portrait"},
        {"style", "standard"},
        {"scale", "2"}},
       "prismal render Dusk.theme"},
      {"Dusk.theme",
       {{"device", "tablet-split"}, {"orientation", "landscape"}, {"style", "alert"}},
       "prismal render Dusk.theme --device tablet-split --orientation landscape --style alert"},
      {"Dusk.theme", {{"scale", "1"}}, "prismal render Dusk.theme --scale 1"},
      {"Dusk.theme", {{"scale", "3"}}, "prismal render Dusk.theme"},
      {"Dusk.theme", {{"look", "system"}, {"press", "q"}}, "prismal render --system --press q"},
      {"Dusk.theme", {{"look", "other"}}, "prismal render Other.theme"},
      {"Dusk.theme", {{"beside", "system"}}, "prismal render Dusk.theme --beside-system"},
      {"Dusk.theme", {{"beside", "other"}}, "prismal render Dusk.theme --diff Other.theme"},
      {"Dusk.theme",
       {{"dictation-key", "yes"}, {"international-key", "no"}, {"dictation", "yes"}},
       "prismal render Dusk.theme --dictation-key yes --international-key no --dictation"},
      {"Dusk.theme",
       {{"keyplane", "numbers"}, {"press", "$"}, {"disable", "-"}},
       "prismal render Dusk.theme --keyplane numbers --press '$' --disable=-"},
      {"My own; rm -r.theme", {}, "prismal render 'My own; rm -r.theme'"},
      {"It's.theme", {{"shift", "locked"}}, "prismal render 'It'\\''s.theme' --shift locked"},
      {"-x.theme", {}, "prismal render ./-x.theme"},
  };
  for (const Case& each : kCases) {
    Question question;
    ASSERT_FALSE(readQuestion(each.parameters, kAll, question)) << each.line;
    const Options options{.theme = each.theme, .other = "Other.theme", .device = {}, .library = {}};
    EXPECT_EQ(renderCommand(options, question, ""), each.line);
  }
}

TEST(RenderCommand, NamesTheSettings) {
  const Options options{.theme = "T.theme", .other = {}, .device = {}, .library = {}};
  EXPECT_EQ(renderCommand(options, {}, "/tmp/a b.plist"),
            "prismal render T.theme --settings '/tmp/a b.plist'");
}

}  // namespace
}  // namespace tools::serve
