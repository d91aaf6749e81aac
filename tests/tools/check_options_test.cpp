// How `check` is asked, and how it answers.

#include <gtest/gtest.h>
#include <regex>
#include <set>
#include <sstream>
#include <string>

#include "command.h"

namespace {

using nlohmann::json;

class CheckOptions : public Command {
 protected:
  void SetUp() override {
    // An error on line 3, a warning on line 5.
    write("a b.plist",
          "<dict><key>CustomColor</key><array>\n<array><string>A</string><string>#FF8000FF</string>"
          "</array>\n\t<array><string>50%,\xC3\xA4</string><string>#FF8000</string></array>\n</"
          "array>\n"
          "<key>Stiles</key><dict/>\n</dict>\n");
    write("clean.plist", "<dict><key>CustomColor</key><array/></dict>");
    write("warned.plist", "<dict><key>CustomColor</key><array/><key>Stiles</key><dict/></dict>");
  }

  std::string outputOf(const std::string& arguments) const {
    return prismal("check " + arguments, "2>/dev/null").output;
  }
};

TEST_F(CheckOptions, ExitStatus) {
  struct Case {
    std::string arguments;
    int status;
  };
  const Case cases[] = {
      {"clean.plist", 0},
      {"warned.plist", 1},
      {"'a b.plist'", 1},
      {"clean.plist warned.plist", 1},
      {"--fail-on error warned.plist", 0},
      {"--fail-on error 'a b.plist'", 1},
      {"--fail-on never 'a b.plist'", 0},
      {"--select color-string warned.plist", 0},
      {"--select color-string,unknown-section warned.plist", 1},
      {"--ignore unknown-section warned.plist", 0},
      {"--ignore color-string --ignore unknown-section 'a b.plist'", 0},
      {"--fail-on never nothing.plist", 2},
      {"--ignore unreadable nothing.plist", 2},
      {"nothing.plist clean.plist", 2},
      {"--select no-such-rule clean.plist", 2},
      {"--format yaml clean.plist", 2},
      {"--library nowhere.so clean.plist", 2},
      {"", 2},
  };
  for (const Case& c : cases) {
    EXPECT_EQ(prismal("check " + c.arguments).status, c.status) << c.arguments;
    EXPECT_EQ(prismal("check --quiet " + c.arguments).status, c.status) << c.arguments;
  }
  EXPECT_EQ(prismal("check --quiet 'a b.plist' clean.plist").output, "");
}

TEST_F(CheckOptions, StreamsAndSummary) {
  struct Case {
    std::string theme;
    std::string summary;
  };
  const Case cases[] = {{"clean.plist", "no findings\n"},
                        {"warned.plist", "1 warning\n"},
                        {"'a b.plist' warned.plist", "1 error, 2 warnings\n"}};
  for (const Case& c : cases) {
    EXPECT_EQ(prismal("check " + c.theme, "2>&1 >/dev/null").output, c.summary);
  }
  EXPECT_EQ(outputOf("clean.plist"), "");
}

TEST_F(CheckOptions, Text) {
  const std::string where = "a b.plist:3:31: ";
  const std::string says = "CustomColor[1][1]: \"#FF8000\" has 6 digits, a colour string needs 8 ";
  EXPECT_EQ(outputOf("--select color-string 'a b.plist'"),
            where + "error: " + says + "[color-string]\n");
  EXPECT_EQ(outputOf("--format full --select color-string 'a b.plist'"),
            where + "error: " + says +
                "[color-string]\n"
                "    3 | \t<array><string>50%,\xC3\xA4</string><string>#FF8000</string></array>\n"
                "      | \t                             ^\n"
                "      = the library logs: PM: CustomColor String ERROR: (\"50%,\xC3\xA4\", "
                "\"#FF8000\")\n");
  EXPECT_EQ(outputOf("--color always --select color-string 'a b.plist'"),
            "\x1b[1m" + where.substr(0, where.size() - 1) + "\x1b[0m \x1b[1;31merror:\x1b[0m " +
                says + "\x1b[2m[color-string]\x1b[0m\n");
}

TEST_F(CheckOptions, Json) {
  const json report = json::parse(outputOf("--format json 'a b.plist'"));
  EXPECT_EQ(report["version"], 1);
  EXPECT_EQ(report["errors"], 1);
  EXPECT_EQ(report["warnings"], 1);
  ASSERT_EQ(report["findings"].size(), 2U);
  EXPECT_EQ(
      report["findings"][0],
      json({{"file", "a b.plist"},
            {"line", 3},
            {"column", 31},
            {"path", "CustomColor[1][1]"},
            {"severity", "error"},
            {"rule", "color-string"},
            {"message", "\"#FF8000\" has 6 digits, a colour string needs 8"},
            {"log", "PM: CustomColor String ERROR: (\"50%,\xC3\xA4\", \"#FF8000\")"},
            {"source", "\t<array><string>50%,\xC3\xA4</string><string>#FF8000</string></array>"}}));
  EXPECT_EQ(report["findings"][1]["log"], nullptr);
  const json missing = json::parse(outputOf("--format json nothing.plist"));
  EXPECT_EQ(missing["findings"][0]["line"], nullptr);
  EXPECT_EQ(missing["findings"][0]["column"], nullptr);
  EXPECT_EQ(missing["findings"][0]["source"], nullptr);
}

TEST_F(CheckOptions, Sarif) {
  const json log = json::parse(outputOf("--format sarif 'a b.plist'"));
  EXPECT_EQ(log["version"], "2.1.0");
  ASSERT_EQ(log["runs"].size(), 1U);
  const json& run = log["runs"][0];
  ASSERT_EQ(run["results"].size(), 2U);
  for (const json& result : run["results"]) {
    const json& rule = run["tool"]["driver"]["rules"][result["ruleIndex"].get<std::size_t>()];
    EXPECT_EQ(rule["id"], result["ruleId"]);
    EXPECT_EQ(rule["defaultConfiguration"]["level"], result["level"]);
    EXPECT_FALSE(result["message"]["text"].get<std::string>().empty());
    const json& place = result["locations"][0]["physicalLocation"];
    EXPECT_EQ(place["artifactLocation"]["uri"], "a%20b.plist");
  }
  EXPECT_EQ(run["results"][0]["locations"][0]["physicalLocation"]["region"],
            json({{"startLine", 3}, {"startColumn", 31}}));
}

TEST_F(CheckOptions, Github) {
  write("a,b:c.plist", "<dict><key>50%\n</key><true/><key>Styles</key><dict/></dict>");
  EXPECT_EQ(outputOf("--format github a,b:c.plist"),
            "::warning file=a%2Cb%3Ac.plist,line=1,col=7,title=unknown-section::50%25\\n: "
            "\"50%25\\n\" is no section\n");
}

TEST_F(CheckOptions, ListsTheRulesThatTheDocumentExplains) {
  std::istringstream lines(outputOf("--list"));
  std::string heading;
  std::getline(lines, heading);
  const std::regex row(R"(([a-z-]+) +(error|warning) +(.*))");
  std::string index;
  std::string sections;
  for (std::string line; std::getline(lines, line);) {
    std::smatch parts;
    ASSERT_TRUE(std::regex_match(line, parts, row)) << line;
    const std::string name = parts[1];
    index.append("| [").append(name).append("](#").append(name).append(") | ");
    index.append(parts[2]).append(" | ").append(parts[3]).append(" |\n");
    sections.append("### ").append(name).append("\n");
  }
  std::ifstream file(PRISMAL_DOCS "/checks.md");
  const std::string page{std::istreambuf_iterator<char>(file), {}};
  EXPECT_NE(page.find(index), std::string::npos)
      << "run scripts/check-index to write the index of docs/checks.md anew";
  std::string found;
  std::istringstream text(page);
  for (std::string line; std::getline(text, line);) {
    if (line.starts_with("### ")) found.append(line).append("\n");
  }
  EXPECT_EQ(found, sections);
}

TEST_F(CheckOptions, ExamplesAreClean) {
  const Outcome outcome = prismal("check " EXAMPLES "/*.theme");
  EXPECT_EQ(outcome.output, "no findings\n");
  EXPECT_EQ(outcome.status, 0);
}

}  // namespace
