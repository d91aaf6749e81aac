// The preview page's server, from outside: what it shows and how it follows.

#include <functional>

#include "serve_command.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

TEST_F(Serve, DrawsAsRenderDoes) {
  start();
  for (const std::string options :
       {"", "device=tablet", "orientation=landscape", "style=alert", "keyplane=numbers",
        "shift=locked", "press=a&press=Shift-Key", "dictation=yes", "look=system&press=q"}) {
    std::string line = " " + options;
    for (const auto& [from, to] : std::vector<std::pair<std::string, std::string>>{
             {"look=system", "--system"}, {"dictation=yes", "--dictation"}}) {
      if (const auto at = line.find(from); at != line.npos) line.replace(at, from.size(), to);
    }
    std::string words;
    std::ranges::replace_copy(line, std::back_inserter(words), '&', ' ');
    for (auto at = words.find(' '); at != words.npos; at = words.find(' ', at + 1)) {
      if (at + 1 < words.size() && words[at + 1] != '-') words.insert(at + 1, "--");
    }
    const std::string theme = line.find("--system") == line.npos ? " T.theme" : "";
    const std::string command = ("render" + theme).append(words).append(" --quiet -o drawn.png");
    ASSERT_EQ(prismal(command).status, 0) << command;
    EXPECT_EQ(get("/picture.png?" + options).body, read("drawn.png")) << options;
  }
}

TEST_F(Serve, AnswersAsTheCommandsDo) {
  start();
  ASSERT_EQ(prismal("render T.theme --quiet --keys keys.json -o drawn.png").status, 0);
  EXPECT_EQ(get("/keys.json").body, read("keys.json"));

  const Outcome key = prismal("explain T.theme --quiet --key return --json --device tablet", "");
  EXPECT_EQ(get("/explain.json?key=return&device=tablet").json(),
            nlohmann::json::parse(key.output));

  ASSERT_EQ(
      prismal("render T.theme --quiet --sheet --device phone-4 --keyplane numbers -o s.png").status,
      0);
  EXPECT_EQ(get("/sheet.png?device=phone-4&keyplane=numbers&scale=1").body, read("s.png"));

  const auto command = get("/command?press=a&device=tablet").json();
  EXPECT_EQ(command["command"],
            "prismal render " + (folder() / "T.theme").string() + " --device tablet --press a");
  EXPECT_EQ(get("/").status, 200);
  EXPECT_TRUE(get("/page.js").says("Content-Type: text/javascript"));
}

TEST_F(Serve, TellsWhatARuleHits) {
  write("T.theme/theme.plist",
        "<dict><key>Styles</key><dict><key>iPhone-Standard</key><array><array>"
        "<string>KeyName=Return-Key</string><dict/></array></array></dict></dict>");
  start();
  const auto rule =
      get("/rule.json?visual-style=iPhone-Standard&rule=0&device=phone-4&orientation=portrait&"
          "keyplane=numbers")
          .json();
  ASSERT_EQ(rule["keyplanes"].size(), 1U) << rule;
  EXPECT_EQ(rule["keyplanes"][0]["keys"][0]["name"], "Return-Key");
  EXPECT_EQ(get("/rule.json?visual-style=iPhone-Standard&rule=1").status, 400);
}

TEST_F(Serve, EverySaveIsAVersion) {
  start();
  EventStream events(port());
  ASSERT_EQ(events.version(1)["ok"], true);
  EXPECT_EQ(key(), kRed);

  save("#00FF00FF");
  EXPECT_EQ(events.version(2)["shown"], 2);
  EXPECT_EQ(key(), kGreen);

  write("T.theme/new", list("#0000FFFF"));
  fs::rename(folder() / "T.theme/new", folder() / "T.theme/theme.plist");
  EXPECT_EQ(events.version(3)["shown"], 3);
  EXPECT_EQ(key(), kBlue);
  EXPECT_EQ(behind(), kBlue);

  write("T.theme/p.png", png(0, 255, 0));
  EXPECT_EQ(events.version(4)["shown"], 4);
  EXPECT_EQ(behind(), kGreen);

  write("T.theme/p@2x.png", png(255, 0, 0));
  EXPECT_EQ(events.version(5)["shown"], 5);
  const auto sharp = host::images::decode(get("/picture.png?scale=2").body);
  ASSERT_TRUE(sharp);
  EXPECT_EQ(sharp.bitmap->at(0, 0), kRed);
}

TEST_F(Serve, AReplacedFolderIsFollowed) {
  struct Replaced {
    const char* how;
    const char* commands;
  };
  constexpr Replaced kWays[] = {
      {"moved away and copied back", "mv T.theme old && cp -r old T.theme"},
      {"moved away, later copied back", "mv T.theme old; sleep 0.7; cp -r old T.theme"},
      {"swapped", "cp -r T.theme new && mv T.theme old && mv new T.theme"},
      {"removed, later copied back",
       "cp -r T.theme new; rm -rf T.theme; sleep 0.7; mv new T.theme"},
      {"a link that leads elsewhere",
       "mv T.theme a && ln -s a T.theme && cp -r a b && ln -sfn b T.theme"},
  };
  const auto shows = [&](unsigned color) {
    for (int tries = 0; tries < 300 && key() != color; ++tries) std::this_thread::sleep_for(20ms);
    return key() == color;
  };
  for (const auto& [how, commands] : kWays) {
    script("rm -rf T.theme old new a b");
    save("#FF0000FF");
    write("T.theme/p.png", png(0, 0, 255));
    start();
    EventStream(port()).version(1);
    EXPECT_EQ(script(commands).status, 0) << how;
    std::this_thread::sleep_for(700ms);
    save("#00FF00FF");
    EXPECT_TRUE(shows(kGreen)) << how;
    save("#0000FFFF");
    EXPECT_TRUE(shows(kBlue)) << how;
    end(SIGINT);
  }
}

TEST_F(Serve, ABrokenThemeLeavesTheLastPictures) {
  start();
  EventStream events(port());
  events.version(1);
  write("T.theme/theme.plist", "<dict>\n<key>a</key></dict>");
  const auto broken = events.version(2);
  EXPECT_EQ(broken["ok"], false);
  EXPECT_EQ(broken["shown"], 1);
  EXPECT_EQ(broken["finding"]["line"], 2);
  EXPECT_EQ(broken["finding"]["rule"], "unreadable");
  EXPECT_EQ(broken["finding"]["file"], "T.theme/theme.plist");
  EXPECT_EQ(key(), kRed);
  EXPECT_EQ(get("/explain.json?key=q").status, 200);
  EXPECT_EQ(EventStream(port()).version(2)["ok"], false) << "told to pages that come later";
  save("#00FF00FF");
  EXPECT_EQ(events.version(3)["ok"], true);
  EXPECT_EQ(key(), kGreen);
}

TEST_F(Serve, FindingsFollowAVersion) {
  write("T.theme/theme.plist", colored("#00FF00FF"));
  start();
  EventStream events(port());
  const auto ofVersion = [&](int version) {
    return events.next("findings",
                       [version](const auto& data) { return data["version"] == version; });
  };
  EXPECT_EQ(ofVersion(1)["errors"], 0);
  write("T.theme/theme.plist", colored("#00FF00"));
  const auto findings = ofVersion(2);
  EXPECT_EQ(findings["errors"], 1) << findings;
  EXPECT_EQ(findings["findings"][0]["rule"], "color-string") << findings;
  EXPECT_EQ(get("/check.json").json(), findings);
}

TEST_F(Serve, ABrokenThemeCanBeMendedFromTheStart) {
  write("T.theme/theme.plist", "<dict>");
  start();
  EventStream events(port());
  EXPECT_EQ(events.version(1)["shown"], 0);
  const auto theme = get("/theme.json").json()["looks"][0];
  EXPECT_EQ(theme["name"], "T");
  EXPECT_EQ(theme["styles"], nlohmann::json::array());
  EXPECT_EQ(theme["pictures"], nlohmann::json::array());
  EXPECT_EQ(get("/picture.png").status, 503);
  EXPECT_EQ(get("/picture.png?look=system").status, 200);
  save("#FF0000FF");
  EXPECT_EQ(events.version(2)["shown"], 2);
  EXPECT_EQ(key(), kRed);
}

TEST_F(Serve, SettingsChangeInTheRunningProcess) {
  start();
  EventStream events(port());
  events.version(1);
  EXPECT_EQ(key(), kRed);
  const auto before = children("prismal-host");
  EXPECT_EQ(post("/settings?use-prismal=no").json()["usePrismal"], false);
  EXPECT_FALSE(
      events.next("settings", [](const auto& data) { return !data["usePrismal"]; }).is_null());
  EXPECT_EQ(key(), key("&look=system"));
  const auto namesSettings = [&] {
    return get("/command").json()["command"].get<std::string>().find("--settings") !=
           std::string::npos;
  };
  EXPECT_TRUE(namesSettings());
  EXPECT_EQ(post("/settings?use-prismal=yes").status, 200);
  EXPECT_FALSE(namesSettings());
  EXPECT_EQ(key(), kRed);
  for (const pid_t host : children("prismal-host")) {
    EXPECT_NE(std::ranges::find(before, host), before.end());
  }
}

TEST_F(Serve, AUsersPictureLiesBehindTheKeys) {
  start();
  EventStream events(port());
  events.version(1);
  const std::string place =
      "/settings/picture?background-style=iPhone-Standard&orientation=portrait";
  const auto theme = [&] { return get("/theme.json").json()["looks"][0]; };
  // A version may come by itself soon after the start: the files are as new as the program.
  const auto behindAfter = [&](const std::function<void()>& change) {
    const int version = theme()["version"];
    change();
    events.version(version + 1);
    return behind();
  };
  EXPECT_EQ(behind(), kBlue);
  ASSERT_EQ(theme()["pictures"], nlohmann::json({"q.png", "p.png"}));
  const auto choose = [&] {
    EXPECT_EQ(post(place + "&picture=0").json()["pictures"]["iPhone-Standard"]["Portrait"],
              "q.png");
  };
  EXPECT_EQ(behindAfter(choose), kCyan);
  EXPECT_EQ(behindAfter([&] { EXPECT_EQ(post(place, png(0, 255, 0)).status, 200); }), kGreen);
  EXPECT_EQ(behind("&style=alert"), kBlue);
  EXPECT_EQ(behindAfter([&] { save("#00FF00FF"); }), kGreen) << "lost by a save";
  EXPECT_EQ(behindAfter([&] { EXPECT_EQ(post(place + "&remove=yes").status, 200); }), kBlue);
  for (const char* const wrong : {"&picture=2", "", "&picture=0&remove=yes"}) {
    EXPECT_EQ(post(place + wrong).status, 400) << wrong;
  }
  for (const std::string& wrong : {std::string("no picture"), png(1, 2, 3).substr(0, 8)}) {
    EXPECT_EQ(post(place, wrong).status, 400) << wrong;
  }
  EXPECT_EQ(fs::exists(folder() / "T.theme/chosen-1.png"), false);
}

TEST_F(Serve, BeginsWithTheSettingsOfADevice) {
  write("beach.png", png(0, 255, 0));
  prismal("settings usePrismal off");
  prismal("settings background iPhone-Standard Portrait beach.png");
  const auto before = files();
  start({"--device-root", kDevice});
  EXPECT_EQ(key(), key("&look=system"));
  EXPECT_EQ(behind(), kGreen);
  EXPECT_EQ(post("/settings?use-prismal=yes").status, 200);
  EXPECT_EQ(key(), kRed);
  EXPECT_NE(prismal("settings").output.find("off"), std::string::npos) << "the device has changed";
  EXPECT_EQ(files(), before);
}

TEST_F(Serve, FollowsAnotherThemeBesideTheFirst) {
  write("O.theme/theme.plist", colored("#00FF00FF"));
  start({"--compare", "O.theme"});
  EventStream events(port());
  EXPECT_EQ(key(), kRed);
  EXPECT_EQ(key("&look=other"), kGreen);
  write("O.theme/theme.plist", colored("#0000FFFF"));
  const auto version = events.next(
      "version", [](const auto& data) { return data["look"] == "other" && data["version"] == 2; });
  EXPECT_EQ(version["shown"], 2);
  EXPECT_EQ(key("&look=other"), kBlue);
  EXPECT_EQ(key(), kRed);
}

}  // namespace
