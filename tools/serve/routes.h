#pragma once

#include <string>
#include <string_view>

#include "serve/http/exchange.h"
#include "serve/keyboards.h"
#include "serve/options.h"
#include "serve/user_settings.h"

namespace tools::serve {

/// What stands at which address. Any thread; all that is given must outlive it.
class Routes {
 public:
  Routes(const Options& options, Keyboards& keyboards, UserSettings& settings)
      : options_(options), keyboards_(keyboards), settings_(settings) {}

  http::Response answer(const http::Request& request) const;
  /// Whether what is at `target`, encoded and with its parameters, is answered without waiting for
  /// a keyboard.
  static bool isQuick(std::string_view target);
  /// The events that a page has missed when it begins to listen: all that is true now.
  std::string greeting() const;

 private:
  using Answer = http::Response (Routes::*)(const http::Request&, const Question&) const;
  struct Route;
  static const Route kRoutes[];

  http::Response answerAt(const Route& route, const http::Request& request) const;
  http::Response askFor(Wish wish, const char* type, const http::Request& request,
                        const Question& question) const;

  http::Response picture(const http::Request& request, const Question& question) const;
  http::Response keys(const http::Request& request, const Question& question) const;
  http::Response explanation(const http::Request& request, const Question& question) const;
  http::Response rule(const http::Request& request, const Question& question) const;
  http::Response sheet(const http::Request& request, const Question& question) const;
  http::Response check(const http::Request& request, const Question& question) const;
  http::Response theme(const http::Request& request, const Question& question) const;
  http::Response command(const http::Request& request, const Question& question) const;
  http::Response events(const http::Request& request, const Question& question) const;
  http::Response setUse(const http::Request& request, const Question& question) const;
  http::Response setPicture(const http::Request& request, const Question& question) const;
  host::files::Result<host::files::Done> choosePicture(const http::Request& request,
                                                       const Question& question) const;

  const Options& options_;
  Keyboards& keyboards_;
  UserSettings& settings_;
};

/// An event as a stream carries it.
std::string eventOf(const std::string& name, const Json& data);

}  // namespace tools::serve
