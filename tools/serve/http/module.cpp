// Requests are read, and answers written, by cpp-httplib; whatever comes from outside has been
// looked at before (serve/http/head.h). Connections are not its business: it answers from memory
// into memory.

#include <algorithm>
#include <exception>
#include <httplib.h>
#include <memory>
#include <utility>

#include "serve/http/exchange.h"
#include "serve/http/query.h"

namespace tools::serve::http {
namespace {

/// A connection that has sent its one request and is told the answer.
class MemoryStream : public httplib::Stream {
 public:
  explicit MemoryStream(const std::string& request) : request_(request) {}

  bool is_readable() const override { return at_ < request_.size(); }
  bool is_writable() const override { return true; }
  ssize_t read(char* to, std::size_t size) override {
    const std::size_t taken = request_.copy(to, size, at_);
    at_ += taken;
    return static_cast<ssize_t>(taken);
  }
  ssize_t write(const char* from, std::size_t size) override {
    written.append(from, size);
    return static_cast<ssize_t>(size);
  }
  void get_remote_ip_and_port(std::string&, int&) const override {}
  void get_local_ip_and_port(std::string&, int&) const override {}
  socket_t socket() const override { return INVALID_SOCKET; }

  std::string written;

 private:
  const std::string& request_;
  std::size_t at_ = 0;
};

/// The library's own reading drops a pair that stands there twice.
Pairs parametersOf(const std::string& target) {
  Pairs parameters;
  const auto pairs = splitQuery(target).value();
  for (const auto& [name, value] : pairs) {
    parameters.emplace_back(httplib::detail::decode_url(std::string(name), true),
                            httplib::detail::decode_url(std::string(value), true));
  }
  return parameters;
}

Request requestOf(const httplib::Request& from, std::string_view body) {
  return {.method = from.method,
          .path = from.path,
          .parameters = parametersOf(from.target),
          .contentType = from.get_header_value("Content-Type"),
          .knownTag = from.get_header_value("If-None-Match"),
          .body = body};
}

class HttplibTranslator : public Translator, private httplib::Server {
 public:
  explicit HttplibTranslator(http::Handler handler) : handler_(std::move(handler)) {
    // Only said: connections are closed elsewhere.
    set_keep_alive_timeout(60);
    set_keep_alive_max_count(1000);
    // Routes are a table of the handler's; the library's are regular expressions.
    set_pre_routing_handler([this](const httplib::Request& request, httplib::Response& response) {
      respond(request, response);
      return HandlerResponse::Handled;
    });
  }

  Answer answer(const std::string& head, std::string_view body) override {
    MemoryStream stream(head);
    Pending pending{body, false};
    pending_ = &pending;
    bool closes = false;
    const bool goesOn = process_request(stream, false, closes, nullptr);
    pending_ = nullptr;
    return {std::move(stream.written), closes || !goesOn, pending.isStream};
  }

 private:
  /// What goes along with a request past the library.
  struct Pending {
    std::string_view body;
    bool isStream;
  };

  void respond(const httplib::Request& from, httplib::Response& to) {
    http::Response made = handled(requestOf(from, pending_->body));
    to.status = made.status;
    for (const auto& [name, value] : made.headers) to.set_header(name, value);
    pending_->isStream = made.isStream;
    if (!made.isStream) {
      if (!made.type.empty()) to.set_content(made.body, made.type);
      return;
    }
    const auto begin = [body = std::move(made.body)](std::size_t, httplib::DataSink& sink) {
      sink.write(body.data(), body.size());
      sink.done();
      return true;
    };
    to.set_content_provider(made.type, begin);
  }

  http::Response handled(const Request& request) const {
    try {
      return handler_(request);
    } catch (const std::exception&) {
      return {.status = 500, .type = "application/json", .body = "{\"error\":\"failed\"}\n"};
    }
  }

  http::Handler handler_;
  static thread_local Pending* pending_;
};

thread_local HttplibTranslator::Pending* HttplibTranslator::pending_ = nullptr;

}  // namespace
}  // namespace tools::serve::http

extern "C" __attribute__((visibility("default"))) tools::serve::http::Translator*
PrismalMakeTranslator(tools::serve::http::Handler handler) {
  return std::make_unique<tools::serve::http::HttplibTranslator>(std::move(handler)).release();
}
