// The processes of `prismal serve`: those that die, hang or are to end.

#include <optional>

#include "serve_command.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

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

/// Whether the kernel filters what the process may ask of it; none when it has gone.
std::optional<bool> isFiltered(pid_t process) {
  std::ifstream status("/proc/" + std::to_string(process) + "/status");
  for (std::string line; std::getline(status, line);) {
    if (line.starts_with("Seccomp:")) return line.ends_with("2");
  }
  return std::nullopt;
}

TEST_F(Serve, AUsersFileIsDecodedInTheSandbox) {
  start();
  EXPECT_EQ(key(), kRed);
  const auto filtered = isFiltered(children("prismal-host").at(0));
  if (!filtered.value_or(false)) GTEST_SKIP() << "this kernel has no sandbox";
  // Large enough to be met at it.
  const auto large = host::images::encodePng(host::images::solid(3000, 3000, 1, 2, 3, 255));
  std::jthread posting([&] {
    EXPECT_EQ(post("/settings/picture?background-style=iPhone-Standard&orientation=portrait", large)
                  .status,
              200);
  });
  bool wasFiltered = false;
  for (int tries = 0; tries < 5000 && !wasFiltered; ++tries) {
    const auto decoders = children("prismal-decode");
    wasFiltered = !decoders.empty() && isFiltered(decoders.front()).value_or(false);
    if (!wasFiltered) std::this_thread::sleep_for(1ms);
  }
  EXPECT_TRUE(wasFiltered);
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

}  // namespace
