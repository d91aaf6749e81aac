#pragma once

#include <string>

#include "serve/http/head.h"

namespace tools::serve::http {

/// A refusal as every one is told: {"error": reason}.
std::string bodyOf(std::string_view reason);

/// The whole answer to a request that can't be handed on, after which the connection is closed.
std::string bytesOf(const Refusal& refusal);

}  // namespace tools::serve::http
