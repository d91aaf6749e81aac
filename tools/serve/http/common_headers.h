#pragma once

#include <string_view>

namespace tools::serve::http {

struct CommonHeader {
  std::string_view name;
  std::string_view value;
};

/// What every answer says: that a browser takes it for what it is called, runs nothing but our own
/// files and lets nobody else have it or lay it into a page.
inline constexpr CommonHeader kCommonHeaders[] = {
    {"Content-Security-Policy",
     "default-src 'none'; script-src 'self'; style-src 'self'; img-src 'self' blob:; "
     "connect-src 'self'; base-uri 'none'; form-action 'none'; frame-ancestors 'none'"},
    {"X-Content-Type-Options", "nosniff"},
    {"X-Frame-Options", "DENY"},
    {"Referrer-Policy", "no-referrer"},
    {"Cross-Origin-Resource-Policy", "same-origin"},
    {"Cross-Origin-Opener-Policy", "same-origin"},
};

}  // namespace tools::serve::http
