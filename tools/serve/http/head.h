#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <variant>

namespace tools::serve::http {

// Bounds of a request, in bytes.
inline constexpr std::size_t kLongestHead = std::size_t{32} << 10U;
inline constexpr std::size_t kLongestTarget = std::size_t{4} << 10U;
inline constexpr std::size_t kMostHeaders = 100;
inline constexpr std::size_t kLongestBody = std::size_t{16} << 20U;

/// Why a request is not looked at any further.
struct Refusal {
  int status;
  const char* reason;  ///< one line for people
};

/// What the head of a request asks for, its views into the bytes that it was read from.
struct Head {
  std::string_view method = {};  ///< GET, HEAD or POST
  std::string_view target = {};  ///< from the slash on, encoded
  bool isOld = false;            ///< HTTP/1.0
  std::string_view host = {};
  std::string_view origin = {};  ///< empty: none was said
  std::string_view site = {};    ///< Sec-Fetch-Site: whose page asks, says the browser; empty: none
  std::string_view contentType = {};
  std::string_view knownTag = {};
  std::string_view connection = {};
  std::size_t contentLength = 0;

  /// The head with the headers alone that answers depend on, each of them checked.
  std::string forwarded() const;
};

/// Reads a head, which ends in an empty line: strictly, since whatever two programs can understand
/// in two ways has been somebody's way in.
std::variant<Head, Refusal> parseHead(std::string_view bytes);

/// Whether a request is meant for the server at `port` of this machine and comes from no page but
/// its own; else a page of anybody's could reach it, under a name of theirs or as a picture. Links
/// may lead to our page from anywhere.
bool isOwn(const Head& head, std::uint16_t port);

}  // namespace tools::serve::http
