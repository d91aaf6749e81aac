#include "scenario/json_output.h"

#include <cmath>
#include <cstdint>

namespace tools::scenario {

nlohmann::ordered_json number(double value) {
  constexpr double kExact = 9007199254740992;  // 2 to the 53rd: whole numbers beyond have gaps
  if (!std::isfinite(value)) return nullptr;
  if (std::abs(value) > kExact || std::trunc(value) != value) return value;
  return static_cast<std::int64_t>(value);
}

std::string line(const nlohmann::ordered_json& value) {
  return value.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

std::string shortLine(const nlohmann::ordered_json& value) {
  constexpr std::size_t kGlance = 400;  // bytes
  auto text = line(value);
  if (text.size() <= kGlance) return text;
  auto end = kGlance;
  const auto continuesCharacter = [](char c) {
    return (static_cast<unsigned char>(c) & 0xC0U) == 0x80U;
  };
  while (continuesCharacter(text[end])) --end;
  return text.substr(0, end) + "...";
}

}  // namespace tools::scenario
