#pragma once

#include <string>

#include "explain/theme_rules.h"
#include "host/drawing/fonts.h"
#include "host/files/result.h"
#include "serve/question.h"

namespace tools::serve {

// What the keyboard of this process answers to a question. Main thread only.

/// A PNG file of the view.
host::files::Result<std::string> drawPicture(const Question& question, host::drawing::Fonts& fonts);

/// What was drawn, key by key, as `render --keys` writes it.
host::files::Result<std::string> reportKeys(const Question& question, host::drawing::Fonts& fonts);

/// As `explain --json` writes it. The keyboard has shown nothing before, and shows nothing else.
host::files::Result<std::string> explainKey(const Question& question,
                                            const explain::ThemeRules& rules);

/// As `explain --rule --json` writes it, of the keyplanes that the question leaves open.
host::files::Result<std::string> explainRule(const Question& question,
                                             const explain::ThemeRules& rules);

/// A PNG file of all views that the question leaves open, at its scale.
host::files::Result<std::string> drawSheet(const Question& question);

}  // namespace tools::serve
