#pragma once

#include <string>

#include "serve/http/head.h"

namespace tools::serve::http {

/// A refusal as every one is told: {"error": reason}.
std::string bodyOf(std::string_view reason);

/// The answer to a request that can't be handed on, up to its body: after it the connection is
/// closed.
std::string headOf(const Refusal& refusal);

}  // namespace tools::serve::http
