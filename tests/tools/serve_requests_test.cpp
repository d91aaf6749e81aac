// Requests that `prismal serve` refuses, and many at once.

#include "serve_command.h"

namespace {

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
  // What was asked before has no say in how a refusal looks.
  Connection other(port());
  other.send("HEAD /page.css HTTP/1.1\r\n" + ownHost() + "\r\n");
  other.readTo("\r\n\r\n");
  other.send("GET / HTTP/1.1\r\nX: " + std::string(40000, 'x'));
  EXPECT_TRUE(other.readAnswer().json().contains("error"));
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
