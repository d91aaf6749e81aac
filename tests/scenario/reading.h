#pragma once

#include <gtest/gtest.h>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "scenario/reader.h"

namespace tools::scenario {

/// The message without the file's name; empty when the text is a scenario.
inline std::string faultOf(std::string_view text) {
  const auto read = scenario::read("x.json", text);
  const auto* fault = std::get_if<Fault>(&read);
  if (fault == nullptr) return {};
  EXPECT_TRUE(fault->message().starts_with("x.json: ")) << fault->message();
  return fault->message().substr(8);
}

/// The scenario in `text`; an empty one, and a failure, when it is none.
inline Scenario scenarioOf(std::string_view text) {
  auto read = scenario::read("x.json", text);
  if (const auto* fault = std::get_if<Fault>(&read)) {
    ADD_FAILURE() << fault->message();
    return {};
  }
  return std::get<Scenario>(std::move(read));
}

/// A scenario whose only step has `members`.
inline std::string withStep(std::string_view members) {
  return R"({"steps": [{)" + std::string(members) + "}]}";
}

/// A scenario without steps whose host has `members`.
inline std::string withHost(std::string_view members) {
  return R"({"host": {)" + std::string(members) + R"(}, "steps": []})";
}

/// A scenario without steps and with the file `form` at /f.
inline std::string withFile(std::string_view form) {
  return R"({"files": {"/f": )" + std::string(form) + R"(}, "steps": []})";
}

/// Whether a member that may be left out is there, and null.
template <class T>
bool isGivenNull(const std::optional<Nullable<T>>& value) {
  return value && !*value;
}

struct Refusal {
  std::string_view accepted;
  std::string_view refused;
  std::string_view message;
};

/// Each row's first text, put into a scenario, is one; its second is refused with the message.
template <class Wrap, std::size_t count>
void expectRefusals(const Refusal (&rows)[count], Wrap wrap) {
  for (const auto& [accepted, refused, message] : rows) {
    EXPECT_EQ(faultOf(wrap(accepted)), "") << accepted;
    EXPECT_EQ(faultOf(wrap(refused)), message) << refused;
  }
}

}  // namespace tools::scenario
