#include "serve/host_task.h"

#include <algorithm>
#include <iterator>

namespace tools::serve {

namespace {

template <class Value, std::size_t size>
Value valueOf(const keyboard::Word<Value> (&words)[size], const Json& word) {
  return std::ranges::find(words, word.get<std::string>(), &keyboard::Word<Value>::word)->value;
}

}  // namespace

Json jsonOf(const Parameters& parameters) {
  Json json = Json::array();
  for (const auto& [name, value] : parameters) json.push_back({name, value});
  return json;
}

Parameters parametersOf(const Json& json) {
  Parameters parameters;
  for (const Json& pair : json) parameters.emplace_back(pair[0], pair[1]);
  return parameters;
}

Json jsonOf(const HostTask& task) {
  return {{"number", task.number},
          {"role", keyboard::wordOf(kRoles, task.role)},
          {"look", keyboard::wordOf(kLooks, task.look)},
          {"settings", task.settings},
          {"first", jsonOf(task.first)}};
}

HostTask taskOf(const Json& json) {
  return {.number = json["number"],
          .role = valueOf(kRoles, json["role"]),
          .look = valueOf(kLooks, json["look"]),
          .settings = json["settings"],
          .first = parametersOf(json["first"])};
}

Json jsonOf(Wish wish, const Parameters& parameters) {
  return {{"wish", keyboard::wordOf(kWishes, wish)}, {"parameters", jsonOf(parameters)}};
}

}  // namespace tools::serve
