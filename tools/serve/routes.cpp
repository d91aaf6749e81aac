#include "serve/routes.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>
#include <span>
#include <system_error>
#include <utility>

#include "backgrounds/double_resolution_path.h"
#include "host/files/device_root.h"
#include "serve/http/common_headers.h"
#include "serve/http/refusal.h"
#include "serve/page_files.h"
#include "serve/render_command.h"

namespace tools::serve {

namespace fs = std::filesystem;
using host::files::DeviceRoot;
using host::files::Done;
using host::files::Failure;
using host::files::Result;
using http::Request;
using http::Response;
using Names = std::span<const std::string_view>;

namespace {

constexpr std::size_t kMostPictureBytes = std::size_t{64} << 20U;
constexpr const char* kJson = "application/json";
constexpr const char* kPng = "image/png";

// Which parameters a route has.
constexpr Names kNone;
constexpr std::string_view kLookAlone[] = {"look", "version"};
constexpr std::string_view kOfView[] = {
    "device",    "orientation", "style", "keyplane", "dictation-key", "international-key",
    "dictation", "shift",       "press", "disable",  "scale",         "look",
    "version"};
constexpr std::string_view kOfCommand[] = {
    "device",    "orientation", "style", "keyplane", "dictation-key", "international-key",
    "dictation", "shift",       "press", "disable",  "scale",         "look",
    "version",   "beside"};
constexpr std::string_view kOfKey[] = {
    "device", "orientation", "style",   "keyplane", "dictation-key", "international-key",
    "shift",  "press",       "disable", "scale",    "look",          "version",
    "key"};
constexpr std::string_view kOfRule[] = {"device", "orientation", "style",        "keyplane",
                                        "look",   "version",     "visual-style", "rule"};
constexpr std::string_view kOfSheet[] = {"device",   "orientation",   "style",
                                         "keyplane", "dictation-key", "international-key",
                                         "scale",    "look",          "version"};
constexpr std::string_view kOfUse[] = {"use-prismal"};
constexpr std::string_view kOfPicture[] = {"background-style", "orientation", "picture", "remove"};

struct Type {
  std::string_view ending;
  const char* type;
};

constexpr Type kTypes[] = {{".html", "text/html; charset=utf-8"},
                           {".css", "text/css; charset=utf-8"},
                           {".js", "text/javascript; charset=utf-8"},
                           {".mjs", "text/javascript; charset=utf-8"},
                           {".svg", "image/svg+xml"},
                           {".png", kPng},
                           {".json", kJson}};

const char* typeOf(std::string_view name) {
  for (const Type& type : kTypes) {
    if (name.ends_with(type.ending)) return type.type;
  }
  return "application/octet-stream";
}

Response refusal(int status, const std::string& reason) {
  return {.status = status, .type = kJson, .body = http::bodyOf(reason)};
}

Response jsonResponse(const Json& json) {
  return {.type = kJson, .body = json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n"};
}

/// FNV-1a: tells contents apart, not more.
std::string tagOf(std::string_view bytes) {
  std::uint64_t hash = 0xcbf29ce484222325U;
  for (const char c : bytes) hash = (hash ^ static_cast<unsigned char>(c)) * 0x100000001b3U;
  return "\"" + std::to_string(hash) + "-" + std::to_string(bytes.size()) + "\"";
}

/// A browser keeps what it has, and asks each time whether it is still true.
void addTag(Response& response, const Request& request) {
  if (response.status != 200 || response.isStream || request.method == "POST") return;
  const std::string tag = tagOf(response.body);
  response.headers.emplace_back("ETag", tag);
  if (request.knownTag != tag) return;
  response.status = 304;
  response.body.clear();
  response.type.clear();
}

const PageFile* findPageFile(std::string_view path) {
  if (path == "/") path = "/index.html";
  for (const PageFile& file : pageFiles()) {
    if (path.substr(1) == file.name) return &file;
  }
  return nullptr;
}

}  // namespace

struct Routes::Route {
  std::string_view path;
  bool isPost;
  bool asksKeyboard;
  Names parameters;
  Answer answer;
};

const Routes::Route Routes::kRoutes[] = {
    {"/picture.png", false, true, kOfView, &Routes::picture},
    {"/keys.json", false, true, kOfView, &Routes::keys},
    {"/explain.json", false, true, kOfKey, &Routes::explanation},
    {"/rule.json", false, true, kOfRule, &Routes::rule},
    {"/sheet.png", false, true, kOfSheet, &Routes::sheet},
    {"/check.json", false, false, kLookAlone, &Routes::check},
    {"/theme.json", false, false, kNone, &Routes::theme},
    {"/command", false, false, kOfCommand, &Routes::command},
    {"/events", false, false, kNone, &Routes::events},
    {"/settings", true, false, kOfUse, &Routes::setUse},
    {"/settings/picture", true, true, kOfPicture, &Routes::setPicture},
};

bool Routes::isQuick(std::string_view target) {
  const std::string_view path = target.substr(0, target.find('?'));
  const auto route = std::ranges::find(kRoutes, path, &Route::path);
  return route != std::end(kRoutes) ? !route->asksKeyboard : findPageFile(path) != nullptr;
}

Response Routes::answer(const Request& request) const {
  const auto route = std::ranges::find(kRoutes, request.path, &Route::path);
  const PageFile* const file = findPageFile(request.path);
  Response response;
  if (route != std::end(kRoutes)) {
    response = answerAt(*route, request);
  } else if (!file) {
    response = refusal(404, "nothing is here");
  } else if (request.method == "POST") {
    response = refusal(405, "GET or HEAD");
    response.headers.emplace_back("Allow", "GET, HEAD");
  } else if (!request.parameters.empty()) {
    response = refusal(400, "no parameters here");
  } else {
    response = {.type = typeOf(file->name), .body = std::string(file->bytes)};
  }
  addTag(response, request);
  response.headers.emplace_back("Cache-Control", response.isStream ? "no-store" : "no-cache");
  for (const auto& [name, value] : http::kCommonHeaders) response.headers.emplace_back(name, value);
  return response;
}

Response Routes::answerAt(const Route& route, const Request& request) const {
  if (route.isPost != (request.method == "POST")) {
    Response response = refusal(405, route.isPost ? "POST" : "GET or HEAD");
    response.headers.emplace_back("Allow", route.isPost ? "POST" : "GET, HEAD");
    return response;
  }
  Question question;
  if (const auto wrong = readQuestion(request.parameters, route.parameters, question)) {
    return refusal(400, *wrong);
  }
  if (!keyboards_.has(question.look) || (question.beside && !keyboards_.has(*question.beside))) {
    return refusal(400, "no other theme is compared");
  }
  return (this->*route.answer)(request, question);
}

Response Routes::askFor(Wish wish, const char* type, const Request& request,
                        const Question& question) const {
  Reply reply = keyboards_.ask(wish, question, request.parameters);
  if (reply.status != 200) return refusal(reply.status, reply.bytes);
  return {.type = type, .body = std::move(reply.bytes)};
}

Response Routes::picture(const Request& request, const Question& question) const {
  return askFor(Wish::picture, kPng, request, question);
}

Response Routes::keys(const Request& request, const Question& question) const {
  return askFor(Wish::keys, kJson, request, question);
}

Response Routes::explanation(const Request& request, const Question& question) const {
  if (question.key.empty()) return refusal(400, "key: it is missing");
  if (question.look == Look::system) return refusal(400, "look: the system's has no rules");
  return askFor(Wish::explanation, kJson, request, question);
}

Response Routes::rule(const Request& request, const Question& question) const {
  if (!question.rule) return refusal(400, "rule: it is missing");
  if (question.visualStyle.empty()) return refusal(400, "visual-style: it is missing");
  if (question.look == Look::system) return refusal(400, "look: the system's has no rules");
  return askFor(Wish::rule, kJson, request, question);
}

Response Routes::sheet(const Request& request, const Question& question) const {
  if (question.look == Look::system) return refusal(400, "look: a sheet is of a theme");
  return askFor(Wish::sheet, kPng, request, question);
}

Response Routes::check(const Request&, const Question& question) const {
  if (question.look == Look::system) return refusal(400, "look: the system's is not checked");
  return jsonResponse(keyboards_.findings(question.look));
}

Response Routes::theme(const Request&, const Question&) const {
  Json all = {{"looks", Json::array()}, {"choices", Json::object()}};
  for (const Look look : keyboards_.looks()) all["looks"].push_back(keyboards_.facts(look));
  for (const auto& [name, words] : choices()) all["choices"][name] = words;
  all["choices"]["visual-style"] = keyboard::kVisualStyles;
  all["choices"]["background-style"] = kBackgroundStyles;
  all["settings"] = settings_.json();
  return jsonResponse(all);
}

Response Routes::command(const Request&, const Question& question) const {
  return jsonResponse({{"command", renderCommand(options_, question, settings_.unusualFile())}});
}

Response Routes::events(const Request& request, const Question&) const {
  return {
      .type = "text/event-stream", .body = "retry: 500\n\n", .isStream = request.method == "GET"};
}

Response Routes::setUse(const Request& request, const Question& question) const {
  if (!question.usePrismal) return refusal(400, "use-prismal: it is missing");
  if (!request.body.empty()) return refusal(400, "a body where none belongs");
  if (const auto set = settings_.setUse(*question.usePrismal); !set) {
    return refusal(500, set.reason());
  }
  keyboards_.tellSettings();
  return jsonResponse(settings_.json());
}

Response Routes::setPicture(const Request& request, const Question& question) const {
  if (question.backgroundStyle.empty()) return refusal(400, "background-style: it is missing");
  if (!question.view.orientation) return refusal(400, "orientation: it is missing");
  if (question.remove + question.picture.has_value() + !request.body.empty() != 1) {
    return refusal(400, "a body, picture or remove=yes: one of them");
  }
  const auto chosen = choosePicture(request, question);
  if (!chosen) return refusal(chosen.failure().error == EINVAL ? 400 : 500, chosen.reason());
  keyboards_.tellSettings();
  // The library looks which pictures there are once a process.
  keyboards_.renew();
  return jsonResponse(settings_.json());
}

Result<Done> Routes::choosePicture(const Request& request, const Question& question) const {
  const std::string& style = question.backgroundStyle;
  const bool isUpright = question.view.orientation == host::boards::Orientation::portrait;
  const std::string orientation = isUpright ? "Portrait" : "Landscape";
  if (question.remove) return settings_.removePicture(style, orientation);
  if (!question.picture) {
    const Reply look = keyboards_.lookAtPicture(std::string(request.body));
    if (look.status != 200) return Failure(EINVAL, look.bytes);
    return settings_.setPicture(style, orientation, "", std::string(request.body), "");
  }
  const Json pictures = keyboards_.facts(Look::theme)["pictures"];
  if (*question.picture >= pictures.size()) return Failure(EINVAL, "picture: there is none");
  const auto path = pictures[*question.picture].get<std::string>();
  std::error_code error;
  const fs::path theme = options_.theme;
  const auto folder = DeviceRoot::open(
      fs::is_directory(theme, error) ? theme : fs::absolute(theme, error).parent_path(),
      DeviceRoot::Creation::kNever);
  if (!folder) return folder.failure();
  const auto picture = folder->readFile(path, kMostPictureBytes);
  const auto sibling = folder->readFile(prismal::doubleResolutionPath(path), kMostPictureBytes);
  if (!picture && !sibling) return picture.failure();
  return settings_.setPicture(style, orientation, path, picture ? *picture : *sibling,
                              picture && sibling ? *sibling : std::string());
}

std::string Routes::greeting() const {
  std::string events;
  for (const Look look : keyboards_.looks()) {
    const Json version = keyboards_.version(look);
    if (version["version"] == 0) continue;
    events += eventOf("version", version);
    if (const Json findings = keyboards_.findings(look); !findings.is_null()) {
      events += eventOf("findings", findings);
    }
  }
  return events + eventOf("settings", settings_.json());
}

std::string eventOf(const std::string& name, const Json& data) {
  return "event: " + name + "\ndata: " + data.dump(-1, ' ', false, Json::error_handler_t::replace) +
         "\n\n";
}

}  // namespace tools::serve
