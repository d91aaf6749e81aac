#pragma once

#include <string>

#include "serve/options.h"
#include "serve/question.h"

namespace tools::serve {

/// The line that draws what `question` asks for, for a shell. `settings` is the file of the user's
/// settings; empty: none.
std::string renderCommand(const Options& options, const Question& question,
                          const std::string& settings);

}  // namespace tools::serve
