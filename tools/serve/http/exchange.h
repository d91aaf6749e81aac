#pragma once

// A request and its answer as values: what is asked and told, without how it came.

#include <functional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tools::serve::http {

using Pairs = std::vector<std::pair<std::string, std::string>>;

struct Request {
  std::string method;       ///< GET, HEAD or POST
  std::string path;         ///< decoded
  Pairs parameters;         ///< decoded; in their order
  std::string contentType;  ///< of the body; empty: it says none
  std::string knownTag;     ///< If-None-Match
  std::string_view body;
};

struct Response {
  int status = 200;
  std::string type;  ///< of the body
  std::string body;
  Pairs headers = {};
  /// After the body, of which this is the beginning, events follow for as long as both sides like.
  bool isStream = false;
};

/// Answers a request. Called on several threads at once.
using Handler = std::function<Response(const Request&)>;

/// The bytes of an answer, and what is to become of the connection then.
struct Answer {
  std::string bytes;
  bool closes = false;
  bool isStream = false;
};

/// What reads the head of a request and writes that of an answer.
class Translator {
 public:
  Translator() = default;
  Translator(const Translator&) = delete;
  Translator& operator=(const Translator&) = delete;
  virtual ~Translator() = default;

  /// `head` is one that parseHead accepts, as Head::forwarded gives it. Any thread.
  virtual Answer answer(const std::string& head, std::string_view body) = 0;
};

/// The translator is in a module of its own: what it is linked with takes longer to load than a
/// keyboard takes to draw. This is its one symbol; who calls it owns what it returns.
inline constexpr const char* kModuleSymbol = "PrismalMakeTranslator";
using MakeTranslator = Translator*(Handler);

}  // namespace tools::serve::http
