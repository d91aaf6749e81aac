#include "serve/http/head.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>
#include <optional>
#include <system_error>
#include <utility>

#include "serve/http/query.h"

namespace tools::serve::http {

namespace {

constexpr std::string_view kNewline = "\r\n";
constexpr std::string_view kMethods[] = {"GET", "HEAD", "POST"};

constexpr bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

constexpr char lower(char c) {
  return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

constexpr bool isHexDigit(char c) {
  return isDigit(c) || (lower(c) >= 'a' && lower(c) <= 'f');
}

/// What names of methods and headers are made of.
constexpr bool isTokenCharacter(char c) {
  constexpr std::string_view kMarks = "!#$%&'*+-.^_`|~";
  return isDigit(c) || (lower(c) >= 'a' && lower(c) <= 'z') || kMarks.find(c) != kMarks.npos;
}

constexpr bool isToken(std::string_view text) {
  return !text.empty() && std::ranges::all_of(text, isTokenCharacter);
}

/// No controls but the tab.
constexpr bool isFieldText(std::string_view text) {
  return std::ranges::none_of(text, [](char c) {
    const auto byte = static_cast<unsigned char>(c);
    return (byte < ' ' && c != '\t') || byte == 0x7f;
  });
}

constexpr bool equalInAnyCase(std::string_view one, std::string_view other) {
  return std::ranges::equal(one, other, {}, lower, lower);
}

constexpr std::string_view trimmed(std::string_view text) {
  constexpr std::string_view kBlanks = " \t";
  const auto first = text.find_first_not_of(kBlanks);
  if (first == text.npos) return {};
  return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string_view takeLine(std::string_view& rest) {
  const auto end = std::min(rest.find(kNewline), rest.size());
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(std::min(rest.size(), end + kNewline.size()));
  return line;
}

/// From the slash on, printable, and every percent sign before two digits.
bool isTarget(std::string_view target) {
  if (!target.starts_with('/')) return false;
  for (std::size_t i = 0; i < target.size(); ++i) {
    if (target[i] <= ' ' || target[i] > '~') return false;
    if (target[i] != '%') continue;
    if (i + 2 >= target.size() || !isHexDigit(target[i + 1]) || !isHexDigit(target[i + 2])) {
      return false;
    }
  }
  return true;
}

std::optional<Refusal> readRequestLine(std::string_view line, Head& head) {
  const auto first = line.find(' ');
  const auto second = line.rfind(' ');
  if (first == line.npos || first == second) return Refusal{400, "no request line"};
  head.method = line.substr(0, first);
  head.target = line.substr(first + 1, second - first - 1);
  const std::string_view version = line.substr(second + 1);
  if (!isToken(head.method)) return Refusal{400, "no method"};
  if (head.target.size() > kLongestTarget) return Refusal{414, "the address is too long"};
  if (!isTarget(head.target)) return Refusal{400, "no address"};
  if (!splitQuery(head.target)) return Refusal{400, "a parameter without a name or a value"};
  head.isOld = version == "HTTP/1.0";
  if (!head.isOld && version != "HTTP/1.1") return Refusal{505, "HTTP/1.1, no other version"};
  return std::nullopt;
}

/// A header whose value counts, which may therefore stand there once.
struct Field {
  std::string_view name;
  std::string_view Head::*value;
};

constexpr Field kFields[] = {{"Host", &Head::host},
                             {"Origin", &Head::origin},
                             {"Sec-Fetch-Site", &Head::site},
                             {"Content-Type", &Head::contentType},
                             {"If-None-Match", &Head::knownTag},
                             {"Connection", &Head::connection}};

struct Length {
  bool isSaid = false;
  std::size_t bytes = 0;
};

std::optional<Refusal> readLength(std::string_view value, Length& length) {
  std::size_t read = 0;
  const auto [end, error] = std::from_chars(value.data(), value.data() + value.size(), read);
  const bool isNumber = !value.empty() && std::ranges::all_of(value, isDigit);
  if (!isNumber || length.isSaid) return Refusal{400, "Content-Length is one number"};
  if (error != std::errc() || read > kLongestBody) return Refusal{413, "the body is too long"};
  length = {true, read};
  return std::nullopt;
}

/// The headers of one head while they are read.
class Headers {
 public:
  explicit Headers(Head& head) : head_(head) {}

  std::optional<Refusal> read(std::string_view line) {
    if (++count_ > kMostHeaders) return Refusal{431, "too many headers"};
    const auto colon = line.find(':');
    const std::string_view name = line.substr(0, colon);
    if (colon == line.npos || !isToken(name)) return Refusal{400, "a header without a name"};
    const std::string_view value = trimmed(line.substr(colon + 1));
    if (!isFieldText(value)) return Refusal{400, "a header that is no text"};
    if (equalInAnyCase(name, "Content-Length")) return readLength(value, length_);
    if (equalInAnyCase(name, "Transfer-Encoding")) return Refusal{501, "no Transfer-Encoding"};
    return take(name, value);
  }

  std::optional<Refusal> finish() const {
    const bool sends = head_.method == "POST";
    if (std::ranges::find(kMethods, head_.method) == std::end(kMethods)) {
      return Refusal{405, "GET, HEAD or POST, no other method"};
    }
    if (sends && !length_.isSaid) return Refusal{411, "Content-Length is missing"};
    if (!sends && length_.bytes > 0) return Refusal{400, "a body where none belongs"};
    head_.contentLength = length_.bytes;
    return std::nullopt;
  }

 private:
  std::optional<Refusal> take(std::string_view name, std::string_view value) {
    for (std::size_t i = 0; i < std::size(kFields); ++i) {
      if (!equalInAnyCase(name, kFields[i].name)) continue;
      if (std::exchange(isSaid_[i], true)) return Refusal{400, "a header that stands there twice"};
      head_.*kFields[i].value = value;
    }
    return std::nullopt;
  }

  Head& head_;
  std::size_t count_ = 0;
  std::array<bool, std::size(kFields)> isSaid_{};
  Length length_;
};

}  // namespace

std::variant<Head, Refusal> parseHead(std::string_view bytes) {
  Head head;
  if (bytes.find('\0') != bytes.npos) return Refusal{400, "a zero byte"};
  if (auto refusal = readRequestLine(takeLine(bytes), head)) return *refusal;
  Headers headers(head);
  while (!bytes.empty()) {
    const std::string_view line = takeLine(bytes);
    if (line.empty()) break;
    if (auto refusal = headers.read(line)) return *refusal;
  }
  if (auto refusal = headers.finish()) return *refusal;
  return head;
}

std::string Head::forwarded() const {
  std::string bytes(method);
  bytes.append(" ").append(target).append(isOld ? " HTTP/1.0" : " HTTP/1.1").append(kNewline);
  for (const Field& field : kFields) {
    const std::string_view value = this->*field.value;
    if (value.empty()) continue;
    bytes.append(field.name).append(": ").append(value).append(kNewline);
  }
  return bytes.append(kNewline);
}

namespace {

bool isOwnHost(std::string_view host, std::uint16_t port) {
  const auto isIt = [&](std::string_view name) {
    const std::string number = ":" + std::to_string(port);
    return equalInAnyCase(host, std::string(name) + number) ||
           // Which browsers leave out.
           (port == 80 && equalInAnyCase(host, name));
  };
  constexpr std::string_view kNames[] = {"127.0.0.1", "[::1]", "localhost"};
  return std::ranges::any_of(kNames, isIt);
}

}  // namespace

bool isOwn(const Head& head, std::uint16_t port) {
  constexpr std::string_view kScheme = "http://";
  if (!isOwnHost(head.host, port)) return false;
  const bool isOwnOrigin =
      head.origin.starts_with(kScheme) && isOwnHost(head.origin.substr(kScheme.size()), port);
  if (!head.origin.empty() && !isOwnOrigin) return false;
  const bool isOwnPage = head.site.empty() || head.site == "same-origin" || head.site == "none";
  return isOwnPage || (head.target == "/" && head.method != "POST");
}

}  // namespace tools::serve::http
