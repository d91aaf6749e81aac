#include "scenario/expectation.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

#include "scenario/json_output.h"
#include "scenario/pattern.h"
#include "scenario/pointer.h"

namespace tools::scenario {
namespace {

using Json = nlohmann::ordered_json;

bool numbersEqual(const Json& expected, const Json& came) {
  // As integers, because two large ones that differ can be the same double.
  if (expected.is_number_integer() && came.is_number_integer()) return expected == came;
  const auto a = expected.get<double>();
  const auto b = came.get<double>();
  // The tolerance is meant for the decimals as they are written, 1.000001 and 1, which lie a little
  // off as binary numbers.
  constexpr double kTolerance = 0.000001;
  const auto rounding =
      2 * std::numeric_limits<double>::epsilon() * std::max(std::abs(a), std::abs(b));
  return std::abs(a - b) <= kTolerance + rounding;
}

class Judge {
 public:
  explicit Judge(std::vector<Mismatch>& mismatches) : mismatches_(mismatches) {}

  void compare(const Json& expected, const Json& came, const std::string& place) {
    if (expected.is_object() && came.is_object()) return compareObjects(expected, came, place);
    if (expected.is_array() && came.is_array()) return compareArrays(expected, came, place);
    if (isPattern(expected)) return comparePattern(expected, came, place);
    const bool equal =
        expected.is_number() && came.is_number() ? numbersEqual(expected, came) : expected == came;
    if (!equal) tell(place, shortLine(expected), shortLine(came));
  }

  /// The member `name` of the object `came`, which the expectation names.
  void compareMember(const Json& expected, const Json& came, std::string_view name,
                     const std::string& place) {
    const auto memberPlace = pointerTo(place, name);
    if (const auto member = came.find(name); member != came.end()) {
      compare(expected, *member, memberPlace);
    } else {
      tell(memberPlace, shortLine(expected), "no such member");
    }
  }

 private:
  static bool isPattern(const Json& expected) {
    return expected.is_string() && expected.get_ref<const std::string&>().starts_with('~');
  }

  void compareObjects(const Json& expected, const Json& came, const std::string& place) {
    for (const auto& [name, value] : expected.get_ref<const Json::object_t&>()) {
      compareMember(value, came, name, place);
    }
  }

  void compareArrays(const Json& expected, const Json& came, const std::string& place) {
    if (expected.size() != came.size()) return tellLengths(expected, came, place);
    for (std::size_t i = 0; i < expected.size(); ++i) {
      compare(expected[i], came[i], pointerTo(place, i));
    }
  }

  void comparePattern(const Json& expected, const Json& came, const std::string& place) {
    if (!came.is_string()) return tell(place, "text like " + shortLine(expected), shortLine(came));
    const auto pattern = std::string_view(expected.get_ref<const std::string&>()).substr(1);
    const auto match = matchWhole(pattern, came.get_ref<const std::string&>());
    if (match.matches) return;
    tell(place, "text like " + shortLine(expected),
         shortLine(came) + (match.fault.empty() ? "" : " (not tried: " + match.fault + ")"));
  }

  // One element too many puts every later one out of place, so a person is shown only the first
  // difference and both arrays.
  void tellLengths(const Json& expected, const Json& came, const std::string& place) {
    std::size_t same = 0;
    while (same < std::min(expected.size(), came.size()) && holds(expected[same], came[same])) {
      ++same;
    }
    const auto describe = [](const Json& array) {
      return std::to_string(array.size()) + (array.size() == 1 ? " element " : " elements ") +
             shortLine(array);
    };
    tell(place, describe(expected),
         describe(came) + ", the first difference at " + std::to_string(same));
  }

  static bool holds(const Json& expected, const Json& came) {
    std::vector<Mismatch> mismatches;
    Judge(mismatches).compare(expected, came, {});
    return mismatches.empty();
  }

  void tell(const std::string& place, std::string expected, std::string came) {
    mismatches_.push_back({place, std::move(expected), std::move(came)});
  }

  std::vector<Mismatch>& mismatches_;
};

}  // namespace

std::string Mismatch::message() const {
  return printable(place) + ": expected " + expected + ", came " + came;
}

std::vector<Mismatch> judge(const Expectation& expectation, const Json& output) {
  std::vector<Mismatch> mismatches;
  Judge judge(mismatches);
  const auto part = [&](const std::optional<Json>& expected, std::string_view name) {
    if (expected) judge.compareMember(*expected, output, name, {});
  };
  part(expectation.result, "result");
  part(expectation.log, "log");
  part(expectation.reads, "reads");
  part(expectation.events, "events");
  return mismatches;
}

}  // namespace tools::scenario
