#pragma once

// Themes with faults, written in a few words, and what `check` finds in them.

#include <filesystem>
#include <gtest/gtest.h>
#include <regex>
#include <string>

#include "command.h"
#include "host/images/encode.h"

inline std::string section(const std::string& name, const std::string& value) {
  return "<key>" + name + "</key>\n" + value;
}

inline std::string pair(const std::string& name, const std::string& value) {
  return "<array><string>" + name + "</string><string>" + value + "</string></array>";
}

inline std::string rule(const std::string& condition, const std::string& property,
                        const std::string& value) {
  return "<array><string>" + condition + "</string><dict><key>" + property + "</key>" + value +
         "</dict></array>\n";
}

inline std::string image(const std::string& key, const std::string& path) {
  return "<key>" + key + "</key><string>" + path + "</string>\n";
}

/// The sections, in which a theme's own text begins on line 4, for pictures and rules at column 1.
inline std::string colors(const std::string& entries) {
  return section("CustomColor", "<array>\n" + entries + "</array>");
}
inline std::string gradients(const std::string& entries) {
  return section("CustomLinearGradient", "<array>\n" + entries + "</array>");
}
inline std::string rules(const std::string& style, const std::string& list) {
  return section("Styles", "<dict><key>" + style + "</key><array>\n" + list + "</array></dict>");
}
inline std::string images(const std::string& entries) {
  return section("BackgroundImages", "<dict>\n" + entries + "</dict>");
}

class Check : public Command {
 protected:
  void SetUp() override {
    const auto paint = [&](const std::string& name, int width, int height) {
      write("T.theme/" + name,
            host::images::encodePng(host::images::solid(width, height, 0xd1, 0xd5, 0xdb, 0xff)));
    };
    paint("dots.png", 320, 216);
    paint("dots@2x.png", 640, 432);
    paint("alone.png", 320, 216);
    paint("half.png", 320, 216);
    paint("half@2x.png", 320, 216);
    paint("../elsewhere.png", 320, 216);
    std::filesystem::create_symlink("../elsewhere.png", folder() / "T.theme/lost.png");
    paint("square.png", 216, 216);
    paint("square@2x.png", 432, 432);
    write("T.theme/letter.png", "Dear Sir or Madam");
    write("T.theme/letter@2x.png", "Dear Sir or Madam");
  }

  /// "4:16 error [color-string]", a finding a line.
  std::string findingsOf(const std::string& theme, const std::string& options = "") const {
    write("T.theme/theme.plist", "<dict>\n" + theme + "\n</dict>\n");
    const Outcome outcome = prismal("check --format concise T.theme " + options, "2>/dev/null");
    const std::regex line(
        R"(T\.theme/theme\.plist:(\d+:\d+): (error|warning): .* (\[[a-z-]+\])\n)");
    std::string found = std::regex_replace(outcome.output, line, "$1 $2 $3\n");
    EXPECT_EQ(outcome.status, found.empty() ? 0 : 1) << outcome.output;
    return found;
  }

  std::string messageOf(const std::string& theme) const {
    findingsOf(theme);
    const auto report =
        nlohmann::json::parse(prismal("check --format json T.theme", "2>/dev/null").output);
    return report["findings"].empty() ? "" : report["findings"][0]["message"].get<std::string>();
  }
};

struct Case {
  std::string faulty;
  std::string expected;
  std::string sound;
};
