// The preview page's server, from outside.

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "device_command.h"
#include "host/images/encode.h"
#include "page_client.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

class Serve : public DeviceCommand {
 protected:
  Serve() {
    save("#FF0000FF");
    write("T.theme/p.png", png(0, 0, 255));
    write("T.theme/q.png", png(0, 255, 255));
  }
  ~Serve() override {
    if (server_ > 0) end(SIGKILL);
  }

  static std::string png(std::uint8_t red, std::uint8_t green, std::uint8_t blue) {
    return host::images::encodePng(host::images::solid(2, 2, red, green, blue, 255));
  }
  static std::string list(const std::string& color) {
    return colored(color,
                   "<key>BackgroundImages</key><dict><key>Portrait</key><string>p.png</string>"
                   "<key>Landscape</key><string>q.png</string></dict>");
  }
  void save(const std::string& color) const { write("T.theme/theme.plist", list(color)); }

  /// Starts it, and takes its port from the address that it prints.
  void start(std::vector<std::string> more = {}) {
    fs::create_directories(folder() / "tmp");
    // Of files as new as the program, a second version may follow the first by itself.
    std::this_thread::sleep_for(20ms);
    std::array<int, 2> ends{};
    ASSERT_EQ(pipe(ends.data()), 0);
    server_ = fork();
    if (server_ == 0) {
      fs::current_path(folder());
      ::setenv("TMPDIR", (folder() / "tmp").c_str(), 1);
      ::dup2(ends[1], STDOUT_FILENO);
      ::dup2(::open("said", O_WRONLY | O_CREAT | O_APPEND, 0644), STDERR_FILENO);
      for (const int end : ends) ::close(end);
      std::vector<std::string> arguments = {PRISMAL, "serve", "T.theme", "--port", "0"};
      arguments.insert(arguments.end(), more.begin(), more.end());
      std::vector<char*> pointers;
      pointers.reserve(arguments.size() + 1);
      for (std::string& argument : arguments) pointers.push_back(argument.data());
      pointers.push_back(nullptr);
      ::execv(PRISMAL, pointers.data());
      ::_exit(127);
    }
    ::close(ends[1]);
    std::string address;
    for (char c = 0; ::read(ends[0], &c, 1) == 1 && c != '\n';) address += c;
    ::close(ends[0]);
    constexpr std::string_view kStart = "http://127.0.0.1:";
    ASSERT_TRUE(address.starts_with(kStart) && address.ends_with("/")) << address;
    port_ = static_cast<std::uint16_t>(std::strtoul(address.c_str() + kStart.size(), nullptr, 10));
  }
  /// The exit status; -1 of one that died.
  int end(int signal) {
    kill(server_, signal);
    int status = 0;
    waitpid(server_, &status, 0);
    server_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }

  std::uint16_t port() const { return port_; }
  std::string ownHost() const { return "Host: 127.0.0.1:" + std::to_string(port_) + "\r\n"; }

  Answer raw(const std::string& bytes) const {
    Connection connection(port_);
    connection.send(bytes);
    return connection.readAnswer();
  }
  Answer get(const std::string& target, const std::string& headers = "") const {
    return raw("GET " + target + " HTTP/1.1\r\n" + ownHost() + headers + "\r\n");
  }
  Answer post(const std::string& target, const std::string& body = "") const {
    return raw("POST " + target + " HTTP/1.1\r\n" + ownHost() +
               "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" + body);
  }
  host::images::Bitmap picture(const std::string& parameters = "") const {
    const Answer answer = get("/picture.png?scale=1" + parameters);
    EXPECT_EQ(answer.status, 200) << answer.body;
    const auto decoded = host::images::decode(answer.body);
    return decoded ? *decoded.bitmap : host::images::Bitmap();
  }
  unsigned key(const std::string& parameters = "") const { return picture(parameters).at(5, 30); }
  unsigned behind(const std::string& parameters = "") const { return picture(parameters).at(0, 0); }

  /// Processes that the program has started, by what they are called.
  std::vector<pid_t> children(const std::string& name) const {
    std::vector<pid_t> found;
    std::ifstream file("/proc/" + std::to_string(server_) + "/task/" + std::to_string(server_) +
                       "/children");
    for (pid_t child = 0; file >> child;) {
      std::string called;
      std::getline(std::ifstream("/proc/" + std::to_string(child) + "/comm") >> std::ws, called);
      if (called == name) found.push_back(child);
    }
    return found;
  }

 private:
  pid_t server_ = 0;
  std::uint16_t port_ = 0;
};

constexpr unsigned kRed = 0xffff0000U;
constexpr unsigned kGreen = 0xff00ff00U;
constexpr unsigned kBlue = 0xff0000ffU;
constexpr unsigned kCyan = 0xff00ffffU;

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
  EXPECT_EQ(post("/settings?use-prismal=yes").status, 200);
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

TEST_F(Serve, AProcessThatDiesIsReplaced) {
  start();
  EventStream events(port());
  int version = 1;
  events.version(version);
  for (const int signal : {SIGKILL, SIGTERM, SIGABRT}) {
    const auto hosts = children("prismal-host");
    ASSERT_FALSE(hosts.empty());
    kill(hosts.front(), signal);
    const auto told = events.next("host", [](const auto&) { return true; });
    EXPECT_EQ(told["how"], "killed by signal " + std::to_string(signal));
    events.next("version", [&](const auto& data) { return data["look"] == told["look"]; });
    EXPECT_EQ(key(), kRed);
    EXPECT_EQ(get("/explain.json?key=q").status, 200);
    EXPECT_EQ(get("/picture.png?look=system").status, 200);
  }
}

TEST_F(Serve, TheServerItselfIsReplaced) {
  start();
  EXPECT_EQ(key(), kRed);
  const auto servers = children("prismal-server");
  ASSERT_EQ(servers.size(), 1U);
  kill(servers.front(), SIGKILL);
  EXPECT_EQ(key(), kRed);
  EXPECT_NE(children("prismal-server"), servers);
}

TEST_F(Serve, TheHostsOfADeadServerEnd) {
  start();
  EXPECT_EQ(key(), kRed);
  const auto hosts = children("prismal-host");
  // They can't notice by themselves that their server has gone.
  for (const pid_t host : hosts) kill(host, SIGSTOP);
  kill(children("prismal-server").front(), SIGKILL);
  EXPECT_EQ(key(), kRed);
  for (const pid_t host : children("prismal-host")) {
    EXPECT_EQ(std::ranges::find(hosts, host), hosts.end());
  }
}

TEST_F(Serve, AHungProcessStopsNothingElse) {
  start();
  EXPECT_EQ(key(), kRed);
  EXPECT_EQ(get("/picture.png?look=system").status, 200);
  // Nothing else is about to start once a version has been checked.
  EventStream(port()).next("findings", [](const auto&) { return true; });
  for (const pid_t host : children("prismal-host")) kill(host, SIGSTOP);
  std::vector<Connection> waiting;
  waiting.reserve(12);
  for (int i = 0; i < 12; ++i) {
    waiting.emplace_back(port());
    waiting.back().send("GET /picture.png?press=" + std::string(1, static_cast<char>('a' + i)) +
                        " HTTP/1.1\r\n" + ownHost() + "\r\n");
  }
  std::this_thread::sleep_for(200ms);
  const auto start = std::chrono::steady_clock::now();
  for (const char* const target : {"/", "/theme.json", "/command", "/check.json"}) {
    EXPECT_EQ(get(target).status, 200) << target;
  }
  EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
  for (Connection& connection : waiting) EXPECT_EQ(connection.readAnswer().status, 200);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 15s);
}

TEST_F(Serve, AHungAnswererIsReplaced) {
  start();
  EventStream(port()).next("findings", [](const auto&) { return true; });
  EXPECT_EQ(get("/explain.json?key=q").status, 200);
  for (const pid_t host : children("prismal-host")) kill(host, SIGSTOP);
  const auto start = std::chrono::steady_clock::now();
  EXPECT_EQ(get("/explain.json?key=w").status, 200);
  EXPECT_LT(std::chrono::steady_clock::now() - start, 15s);
}

TEST_F(Serve, ACheckThatDiesIsTriedOnceMore) {
  // Long enough to be caught.
  std::string rules;
  for (int i = 0; i < 400; ++i) rules += "<array><string>KeyName=A</string><dict/></array>";
  write("T.theme/theme.plist", "<dict><key>Styles</key><dict><key>iPhone-Standard</key><array>" +
                                   rules + "</array></dict></dict>");
  start();
  EventStream events(port());
  std::vector<pid_t> killed;
  for (int tries = 0; tries < 5000 && killed.empty(); ++tries) {
    killed = children("prismal-check");
    if (killed.empty()) std::this_thread::sleep_for(1ms);
  }
  ASSERT_FALSE(killed.empty());
  kill(killed.front(), SIGKILL);
  const auto findings = events.next("findings", [](const auto&) { return true; });
  EXPECT_FALSE(findings.contains("trouble")) << findings;
}

TEST_F(Serve, EndsAtOnceAndLeavesNothingBehind) {
  for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
    start();
    EventStream events(port());
    events.version(1);
    const auto hosts = children("prismal-host");
    EXPECT_EQ(get("/explain.json?key=q").status, 200);
    EXPECT_EQ(end(signal), 0) << signal;
    EXPECT_TRUE(fs::is_empty(folder() / "tmp")) << signal;
    for (const pid_t host : hosts) EXPECT_NE(kill(host, 0), 0) << signal;
    EXPECT_FALSE(Connection(port()).isOpen());
  }
}

TEST_F(Serve, AKillOfTheProgramLeavesNothingBehind) {
  start();
  EventStream(port()).version(1);
  end(SIGKILL);
  for (int tries = 0; tries < 500 && !fs::is_empty(folder() / "tmp"); ++tries) {
    std::this_thread::sleep_for(10ms);
  }
  EXPECT_TRUE(fs::is_empty(folder() / "tmp"));
}

struct Refused {
  const char* target;
  int status;
};

TEST_F(Serve, RefusesWhatIsOnNoList) {
  start();
  constexpr Refused kTargets[] = {
      {"/picture.png?device=phone", 400},
      {"/picture.png?device=tablet&device=phone-4", 400},
      {"/picture.png?scale=0", 400},
      {"/picture.png?scale=100", 400},
      {"/picture.png?file=/etc/passwd", 400},
      {"/picture.png?press=nothing", 400},
      {"/picture.png?press=%00", 400},
      {"/picture.png?press=%ff", 400},
      {"/picture.png?look=other", 400},
      {"/picture.png?dictation=yes&press=a", 400},
      {"/picture.png?key=a", 400},
      {"/explain.json", 400},
      {"/explain.json?key=nothing", 400},
      {"/explain.json?key=a&look=system", 400},
      {"/rule.json?rule=0", 400},
      {"/rule.json?visual-style=iPhone-Standard", 400},
      {"/rule.json?visual-style=iPhone&rule=0", 400},
      {"/sheet.png?press=a", 400},
      {"/theme.json?a=b", 400},
      {"/command?beside=other", 400},
      {"/page.css?a=b", 400},
      {"/settings", 405},
      {"/settings/picture?picture=0", 405},
      {"/nothing", 404},
      {"/../T.theme/theme.plist", 404},
      {"/%2e%2e/T.theme/theme.plist", 404},
      {"/T.theme/theme.plist", 404},
      {"//", 404},
      {"/picture.png/", 404},
  };
  for (const auto& [target, status] : kTargets) {
    const Answer answer = get(target);
    EXPECT_EQ(answer.status, status) << target;
    EXPECT_TRUE(answer.json().contains("error")) << target << answer.body;
    EXPECT_TRUE(answer.says("Content-Security-Policy: default-src 'none';")) << target;
    EXPECT_TRUE(answer.says("X-Content-Type-Options: nosniff")) << target;
  }
  EXPECT_EQ(post("/picture.png").status, 405);
  EXPECT_EQ(post("/").status, 405);
  EXPECT_EQ(post("/settings").status, 400);
  EXPECT_EQ(post("/settings?use-prismal=no", "body").status, 400);
}

TEST_F(Serve, RefusesOtherHostsAndOrigins) {
  start();
  const std::string port = std::to_string(this->port());
  const auto asked = [&](const std::string& headers) {
    return raw("GET /theme.json HTTP/1.1\r\n" + headers + "\r\n").status;
  };
  EXPECT_EQ(asked("Host: localhost:" + port + "\r\n"), 200);
  EXPECT_EQ(asked(ownHost() + "Origin: http://localhost:" + port + "\r\n"), 200);
  for (const std::string& headers :
       {std::string(), std::string("Host: example.org\r\n"), "Host: example.org:" + port + "\r\n",
        ownHost() + "Origin: http://example.org\r\n", ownHost() + "Origin: null\r\n",
        ownHost() + "Sec-Fetch-Site: cross-site\r\n"}) {
    EXPECT_EQ(asked(headers), 403) << headers;
  }
}

TEST_F(Serve, SurvivesWhatIsNoRequest) {
  start();
  const std::string ours = ownHost();
  const std::string kRequests[] = {
      "",
      "\r\n\r\n",
      std::string(100, '\0') + "\r\n\r\n",
      "GET\r\n\r\n",
      "GET / HTTP/9.9\r\n" + ours + "\r\n",
      "GET / HTTP/1.1\r\n" + ours + "Transfer-Encoding: chunked\r\n\r\n0\r\n\r\n",
      "POST /settings HTTP/1.1\r\n" + ours + "\r\n",
      "POST /settings HTTP/1.1\r\n" + ours + "Content-Length: 99999999999\r\n\r\n",
      "GET /" + std::string(5000, 'a') + " HTTP/1.1\r\n" + ours + "\r\n",
      "GET / HTTP/1.1\r\nA: " + std::string(40000, 'a') + "\r\n\r\n",
      std::string(100000, 'a'),
      "GET / HTTP/1.1\r\n" + ours + std::string(20000, '\n') + "\r\n\r\n",
      "GET /picture.png?" + std::string(2000, '&') + " HTTP/1.1\r\n" + ours + "\r\n",
      "GET /picture.png?" + std::string(500, '%') + " HTTP/1.1\r\n" + ours + "\r\n",
      std::string("\x16\x03\x01\x02\0\x01\0\x01\xfc\x03\x03", 11),  // a TLS client
  };
  EXPECT_EQ(key(), kRed);
  const auto servers = children("prismal-server");
  for (const std::string& request : kRequests) {
    Connection connection(port());
    connection.send(request);
    connection.finish();
    const int status = connection.readAnswer().status;
    EXPECT_TRUE(status == 0 || status == 200 || (status >= 400 && status < 600)) << status;
  }
  EXPECT_EQ(children("prismal-server"), servers);
  EXPECT_EQ(key(), kRed);
}

TEST_F(Serve, AnswersSeveralRequestsOfAConnection) {
  start();
  Connection connection(port());
  const std::string one = "GET /page.css HTTP/1.1\r\n" + ownHost() + "\r\n";
  connection.send(one + one.substr(0, 10));
  EXPECT_EQ(connection.readAnswer().status, 200);
  connection.send(one.substr(10) + one);
  const Answer answer = connection.readAnswer();
  EXPECT_EQ(answer.status, 200);
  EXPECT_EQ(connection.readAnswer().body, answer.body);
  const auto tag = answer.head.substr(answer.head.find("ETag: ") + 6);
  connection.send("GET /page.css HTTP/1.1\r\n" + ownHost() +
                  "If-None-Match: " + tag.substr(0, tag.find('\r')) + "\r\n\r\n");
  EXPECT_EQ(connection.readAnswer().status, 304);
  connection.send("HEAD /picture.png HTTP/1.1\r\n" + ownHost() + "\r\n");
  EXPECT_TRUE(connection.readTo("\r\n\r\n").starts_with("HTTP/1.1 200"));
  connection.send("HEAD /picture.png HTTP/1.1\r\nHost: \r\n" + ownHost() + "\r\n");
  EXPECT_TRUE(connection.readTo("\r\n\r\n").starts_with("HTTP/1.1 400"));
  EXPECT_EQ(connection.readTo("more"), "");
}

TEST_F(Serve, ManyStreamsStarveNobody) {
  start();
  std::vector<EventStream> streams;
  streams.reserve(400);
  for (int i = 0; i < 400; ++i) streams.emplace_back(port());
  std::vector<Connection> slow;
  slow.reserve(100);
  for (int i = 0; i < 100; ++i) {
    slow.emplace_back(port());
    slow.back().send("GET / HTTP/1.1\r\nHo");
  }
  EXPECT_EQ(key(), kRed);
  save("#00FF00FF");
  for (EventStream& stream : streams) {
    ASSERT_TRUE(stream.head().starts_with("HTTP/1.1 200")) << stream.head();
    ASSERT_EQ(stream.version(2)["shown"], 2);
  }
  EXPECT_EQ(key(), kGreen);
}

TEST_F(Serve, SaysWhyItCannotServe) {
  start();
  EXPECT_EQ(key(), kRed);
  const Outcome taken = prismal("serve T.theme --port " + std::to_string(port()));
  EXPECT_EQ(taken.status, 2);
  EXPECT_NE(taken.output.find("Address already in use; --port 0"), std::string::npos)
      << taken.output;
  for (const char* const arguments :
       {"Missing.theme", "T.theme --compare Missing.theme", "T.theme --device-root missing",
        "T.theme --port 70000", "T.theme --port -1", ""}) {
    const Outcome outcome = prismal(std::string("serve ") + arguments);
    EXPECT_EQ(outcome.status, 2) << arguments;
    EXPECT_TRUE(outcome.output.starts_with("prismal")) << outcome.output;
  }
}

}  // namespace
