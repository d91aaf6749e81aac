#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "check/report.h"

namespace tools::check {

enum class Format : std::uint8_t { full, concise, json, sarif, github };

/// Findings as text, one a line; `full` adds the line of the file with a mark at the place, and
/// what the library logs.
std::string textOf(std::span<const Report> reports, bool full, bool inColor);

/// All findings as one JSON object.
std::string jsonOf(std::span<const Report> reports);

/// All findings as a SARIF 2.1.0 log, which knows every rule.
std::string sarifOf(std::span<const Report> reports);

/// Findings as the commands that make annotations of a workflow's run.
std::string githubOf(std::span<const Report> reports);

/// How many findings of a severity there are.
std::size_t countOf(std::span<const Report> reports, Severity severity);

/// What a finding says, its path first.
std::string sentenceOf(const Finding& finding);

}  // namespace tools::check
