// Heads of requests: what is understood, what is refused and why, and whose requests are ours.

#include "serve/http/head.h"

#include <gtest/gtest.h>
#include <string>
#include <variant>

namespace tools::serve::http {
namespace {

int statusOf(const std::string& bytes) {
  const auto parsed = parseHead(bytes);
  const auto* const refusal = std::get_if<Refusal>(&parsed);
  return refusal ? refusal->status : 200;
}

std::string withHeaders(const std::string& headers, const std::string& line = "GET / HTTP/1.1") {
  return line + "\r\nHost: localhost:1\r\n" + headers + "\r\n";
}

TEST(Head, AreReadWithWhatTheySay) {
  const std::string bytes = withHeaders(
      "origin:http://localhost:1\r\nContent-Type: \timage/png \r\ncontent-LENGTH: 12\r\n"
      "Cookie: caf\xc3\xa9\r\nSec-Fetch-Site: same-origin\r\n",
      "POST /settings?a=%20b HTTP/1.1");
  const auto parsed = parseHead(bytes);
  ASSERT_TRUE(std::holds_alternative<Head>(parsed));
  const Head& head = std::get<Head>(parsed);
  EXPECT_EQ(head.method, "POST");
  EXPECT_EQ(head.target, "/settings?a=%20b");
  EXPECT_EQ(head.host, "localhost:1");
  EXPECT_EQ(head.origin, "http://localhost:1");
  EXPECT_EQ(head.contentType, "image/png");
  EXPECT_EQ(head.site, "same-origin");
  EXPECT_EQ(head.contentLength, 12U);
  EXPECT_EQ(head.forwarded(),
            "POST /settings?a=%20b HTTP/1.1\r\nHost: localhost:1\r\nOrigin: http://localhost:1\r\n"
            "Sec-Fetch-Site: same-origin\r\nContent-Type: image/png\r\n\r\n");
}

struct Line {
  const char* text;
  int status;
};

TEST(Head, AreRefusedForTheirFirstLine) {
  constexpr Line kLines[] = {
      {"GET / HTTP/1.1", 200},
      {"GET / HTTP/1.0", 200},
      {"GET /?a=1&a=1&b= HTTP/1.1", 200},
      {"GET /? HTTP/1.1", 200},
      {"GET /?a HTTP/1.1", 400},
      {"GET /?=1 HTTP/1.1", 400},
      {"GET /?a=1& HTTP/1.1", 400},
      {"GET /?&a=1 HTTP/1.1", 400},
      {"GET / HTTP/1.2", 505},
      {"GET / HTTP/2", 505},
      {"GET / http/1.1", 505},
      {"GET /", 400},
      {"GET", 400},
      {"", 400},
      {" / HTTP/1.1", 400},
      {"GET  / HTTP/1.1", 400},
      {"GET /a b HTTP/1.1", 400},
      {"GET  HTTP/1.1", 400},
      {"GET * HTTP/1.1", 400},
      {"GET a HTTP/1.1", 400},
      {"GET //a HTTP/1.1", 200},
      {"GET http://a/ HTTP/1.1", 400},
      {"GET /%41 HTTP/1.1", 200},
      {"GET /%4 HTTP/1.1", 400},
      {"GET /%4g HTTP/1.1", 400},
      {"GET /% HTTP/1.1", 400},
      {"GET /\xc3\xa9 HTTP/1.1", 400},
      {"GET /\x7f HTTP/1.1", 400},
      {"GET /\t HTTP/1.1", 400},
      {"G(T / HTTP/1.1", 400},
      {"PUT / HTTP/1.1", 405},
      {"get / HTTP/1.1", 405},
      {"OPTIONS / HTTP/1.1", 405},
      {"HEAD / HTTP/1.1", 200},
      {"POST / HTTP/1.1", 411},
      {"GET / HTTP/1.1\n", 505},
  };
  for (const Line& line : kLines)
    EXPECT_EQ(statusOf(withHeaders("", line.text)), line.status) << line.text;
}

TEST(Head, AreRefusedForTheirHeaders) {
  constexpr Line kHeaders[] = {
      {"A: b\r\n", 200},
      {"A:\r\n", 200},
      {"A b\r\n", 400},
      {"A : b\r\n", 400},
      {": b\r\n", 400},
      {" folded: b\r\n", 400},
      {"A: b\r\n c\r\n", 400},
      {"A: b\nC: d\r\n", 400},
      {"A: b\rC: d\r\n", 400},
      {"A: \x01\r\n", 400},
      {"Host: localhost:1\r\n", 400},
      {"Origin: a\r\nORIGIN: a\r\n", 400},
      {"Transfer-Encoding: chunked\r\n", 501},
      {"Content-Length: 0\r\n", 200},
      {"Content-Length: 1\r\n", 400},
  };
  for (const Line& line : kHeaders)
    EXPECT_EQ(statusOf(withHeaders(line.text)), line.status) << line.text;
  EXPECT_EQ(statusOf(withHeaders(std::string("A: \0\r\n", 6))), 400);
}

TEST(Head, SayOnceHowLongTheBodyIs) {
  constexpr Line kLengths[] = {
      {"0", 200},
      {"16777216", 200},
      {"16777217", 413},
      {"99999999999999999999", 413},
      {"-1", 400},
      {"+1", 400},
      {"0x1", 400},
      {"1 ", 200},
      {"1, 1", 400},
      {"", 400},
      {"1\r\nContent-Length: 1", 400},
  };
  for (const Line& length : kLengths) {
    const std::string header = std::string("Content-Length: ") + length.text + "\r\n";
    EXPECT_EQ(statusOf(withHeaders(header, "POST / HTTP/1.1")), length.status) << length.text;
  }
}

TEST(Head, HaveBounds) {
  const auto target = [](std::size_t size) {
    return "GET /" + std::string(size - 1, 'a') + " HTTP/1.1";
  };
  EXPECT_EQ(statusOf(withHeaders("", target(kLongestTarget))), 200);
  EXPECT_EQ(statusOf(withHeaders("", target(kLongestTarget + 1))), 414);
  std::string headers;
  for (std::size_t i = 1; i < kMostHeaders; ++i) headers += "A: b\r\n";
  EXPECT_EQ(statusOf(withHeaders(headers)), 200);
  EXPECT_EQ(statusOf(withHeaders(headers + "A: b\r\n")), 431);
}

struct Asked {
  const char* host;
  const char* origin;
  const char* site;
  const char* target;
  bool isOurs;
};

TEST(Head, AreOursOrSomebodyElses) {
  constexpr Asked kAsked[] = {
      {"127.0.0.1:81", "", "", "/a", true},
      {"localhost:81", "", "", "/a", true},
      {"LOCALHOST:81", "", "", "/a", true},
      {"[::1]:81", "", "", "/a", true},
      {"127.0.0.1", "", "", "/a", false},
      {"127.0.0.1:82", "", "", "/a", false},
      {"127.0.0.1:811", "", "", "/a", false},
      {"127.0.0.2:81", "", "", "/a", false},
      {"localhost.example:81", "", "", "/a", false},
      {"example.org", "", "", "/a", false},
      {"", "", "", "/a", false},
      {"127.0.0.1:81", "http://127.0.0.1:81", "", "/a", true},
      {"127.0.0.1:81", "http://localhost:81", "", "/a", true},
      {"127.0.0.1:81", "http://127.0.0.1:82", "", "/a", false},
      {"127.0.0.1:81", "https://127.0.0.1:81", "", "/a", false},
      {"127.0.0.1:81", "http://example.org", "", "/a", false},
      {"127.0.0.1:81", "null", "", "/a", false},
      {"127.0.0.1:81", "", "same-origin", "/a", true},
      {"127.0.0.1:81", "", "none", "/a", true},
      {"127.0.0.1:81", "", "cross-site", "/a", false},
      {"127.0.0.1:81", "", "same-site", "/a", false},
      {"127.0.0.1:81", "", "cross-site", "/", true},
      {"127.0.0.1:81", "", "cross-site", "/?device=tablet", false},
      {"127.0.0.1:81", "", "cross-site", "//", false},
  };
  for (const Asked& asked : kAsked) {
    Head head{.method = "GET", .target = asked.target};
    head.host = asked.host;
    head.origin = asked.origin;
    head.site = asked.site;
    EXPECT_EQ(isOwn(head, 81), asked.isOurs)
        << asked.host << " " << asked.origin << " " << asked.site << " " << asked.target;
  }
  EXPECT_TRUE(isOwn({.method = "GET", .target = "/", .host = "localhost"}, 80));
  EXPECT_FALSE(
      isOwn({.method = "POST", .target = "/", .host = "localhost", .site = "cross-site"}, 80));
}

}  // namespace
}  // namespace tools::serve::http
