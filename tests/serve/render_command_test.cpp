#include "serve/render_command.h"

#include <filesystem>
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
      {"/themes/Dusk.theme", {}, "prismal render /themes/Dusk.theme"},
      {"/themes/Dusk.theme",
       {{"device", "phone-3.5"},
        {"orientation", "portrait"},
        {"style", "standard"},
        {"scale", "2"}},
       "prismal render /themes/Dusk.theme"},
      {"/themes/Dusk.theme",
       {{"device", "tablet-split"}, {"orientation", "landscape"}, {"style", "alert"}},
       "prismal render /themes/Dusk.theme --device tablet-split --orientation landscape --style "
       "alert"},
      {"/themes/Dusk.theme", {{"scale", "1"}}, "prismal render /themes/Dusk.theme --scale 1"},
      {"/themes/Dusk.theme", {{"scale", "3"}}, "prismal render /themes/Dusk.theme"},
      {"/themes/Dusk.theme",
       {{"look", "system"}, {"press", "q"}},
       "prismal render --system --press q"},
      {"/themes/Dusk.theme", {{"look", "other"}}, "prismal render /themes/Other.theme"},
      {"/themes/Dusk.theme",
       {{"beside", "system"}},
       "prismal render /themes/Dusk.theme --beside-system"},
      {"/themes/Dusk.theme",
       {{"beside", "other"}},
       "prismal render /themes/Dusk.theme --diff /themes/Other.theme"},
      {"/themes/Dusk.theme",
       {{"dictation-key", "yes"}, {"international-key", "no"}, {"dictation", "yes"}},
       "prismal render /themes/Dusk.theme --dictation-key yes --international-key no --dictation"},
      {"/themes/Dusk.theme",
       {{"keyplane", "numbers"}, {"press", "$"}, {"disable", "-"}},
       "prismal render /themes/Dusk.theme --keyplane numbers --press '$' --disable=-"},
      {"/My own; rm -r.theme", {}, "prismal render '/My own; rm -r.theme'"},
      {"/It's.theme", {{"shift", "locked"}}, "prismal render '/It'\\''s.theme' --shift locked"},
      {"/themes/./x/../Dusk.theme", {}, "prismal render /themes/Dusk.theme"},
  };
  for (const Case& each : kCases) {
    Question question;
    ASSERT_FALSE(readQuestion(each.parameters, kAll, question)) << each.line;
    const Options options{
        .theme = each.theme, .other = "/themes/Other.theme", .device = {}, .library = {}};
    EXPECT_EQ(renderCommand(options, question, ""), each.line);
  }
}

TEST(RenderCommand, NamesWhatTheServerWasGiven) {
  Options options{.theme = "T.theme", .other = {}, .device = {}, .library = "/lib/mine.so"};
  const std::string here = std::filesystem::current_path().string();
  EXPECT_EQ(renderCommand(options, {}, "/tmp/a b.plist"),
            "prismal render " + here + "/T.theme --settings '/tmp/a b.plist'");
  Question ofSystem;
  ofSystem.look = Look::system;
  options.isLibraryNamed = true;
  EXPECT_EQ(renderCommand(options, ofSystem, "/tmp/a b.plist"),
            "prismal render --system --library /lib/mine.so");
}

}  // namespace
}  // namespace tools::serve
