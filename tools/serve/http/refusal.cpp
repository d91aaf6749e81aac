#include "serve/http/refusal.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "serve/http/common_headers.h"

namespace tools::serve::http {

namespace {

struct Phrase {
  int status;
  std::string_view text;
};

constexpr Phrase kPhrases[] = {{400, "Bad Request"},
                               {403, "Forbidden"},
                               {405, "Method Not Allowed"},
                               {408, "Request Timeout"},
                               {411, "Length Required"},
                               {413, "Payload Too Large"},
                               {414, "URI Too Long"},
                               {431, "Request Header Fields Too Large"},
                               {501, "Not Implemented"},
                               {503, "Service Unavailable"},
                               {505, "HTTP Version Not Supported"}};

std::string_view phraseOf(int status) {
  const auto* const found = std::ranges::find(kPhrases, status, &Phrase::status);
  return found == std::end(kPhrases) ? "Refused" : found->text;
}

}  // namespace

std::string bodyOf(std::string_view reason) {
  const nlohmann::json json = {{"error", reason}};
  return json.dump(-1, ' ', false, nlohmann::json::error_handler_t::replace) + "\n";
}

std::string headOf(const Refusal& refusal) {
  std::string bytes = "HTTP/1.1 " + std::to_string(refusal.status) + " ";
  bytes.append(phraseOf(refusal.status));
  bytes += "\r\nContent-Type: application/json\r\nContent-Length: " +
           std::to_string(bodyOf(refusal.reason).size()) +
           "\r\nConnection: close\r\nCache-Control: no-store\r\n";
  if (refusal.status == 405) bytes += "Allow: GET, HEAD, POST\r\n";
  for (const auto& [name, value] : kCommonHeaders) {
    bytes.append(name).append(": ").append(value).append("\r\n");
  }
  return bytes + "\r\n";
}

}  // namespace tools::serve::http
