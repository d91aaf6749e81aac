#pragma once

// Whether what a step did is what its scenario expects.

#include <nlohmann/json.hpp>
#include <string>
#include <vector>

#include "scenario/model.h"

namespace tools::scenario {

/// One difference between what was expected and what came.
struct Mismatch {
  std::string place;     ///< a JSON pointer inside the output, such as "/result/frame/2"
  std::string expected;  ///< compact JSON, shortened when it is long, or words
  std::string came;      ///< likewise

  /// One line: `/log/0: expected "a", came "b"`.
  std::string message() const;
};

/// All differences, in the order of the expectation; none when it holds. `output` is the whole
/// output object of the step. Any thread.
std::vector<Mismatch> judge(const Expectation& expectation, const nlohmann::ordered_json& output);

}  // namespace tools::scenario
