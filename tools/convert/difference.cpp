#include "convert/difference.h"

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <string_view>
#include <utility>
#include <variant>

#include "host/plist/node.h"
#include "scenario/pointer.h"

namespace tools::convert {

using host::plist::Data;
using host::plist::Date;
using host::plist::Entries;
using host::plist::Items;
using platform::PropertyListView;
using scenario::pointerTo;

namespace {

bool same(double one, double other) {
  return std::bit_cast<std::uint64_t>(one) == std::bit_cast<std::uint64_t>(other);
}
bool same(std::monostate, std::monostate) {
  return true;
}
bool same(bool one, bool other) {
  return one == other;
}
bool same(std::int64_t one, std::int64_t other) {
  return one == other;
}
bool same(std::string_view one, std::string_view other) {
  return one == other;
}
bool same(Date one, Date other) {
  return same(one.seconds, other.seconds);
}
bool same(Data one, Data other) {
  return std::ranges::equal(one, other);
}
/// What they hold is compared one by one.
bool same(Items one, Items other) {
  return one.size() == other.size();
}
bool same(Entries one, Entries other) {
  return std::ranges::equal(one, other, {}, &platform::PropertyListEntry::key,
                            &platform::PropertyListEntry::key);
}

bool sameButForContents(PropertyListView one, PropertyListView other) {
  if (one.type() != other.type()) return false;
  return std::visit(
      [&](const auto& value) {
        return same(value, *host::plist::payload<std::decay_t<decltype(value)>>(other));
      },
      one.get()->value);
}

/// Another step down from `difference`, if there is one.
template <class Step>
std::optional<Difference> below(Step step, std::optional<Difference> difference) {
  if (difference) difference->place = pointerTo("", step) + difference->place;
  return difference;
}

}  // namespace

std::optional<Difference> firstDifference(PropertyListView one, PropertyListView other) {
  if (!sameButForContents(one, other)) return Difference{"", one};
  for (std::size_t i = 0; i < one.items().size(); ++i) {
    if (auto found = below(i, firstDifference(one.items()[i], other.items()[i]))) return found;
  }
  for (std::size_t i = 0; i < one.entries().size(); ++i) {
    const auto& [key, value] = one.entries()[i];
    if (auto found = below(key, firstDifference(value, other.entries()[i].value))) return found;
  }
  return std::nullopt;
}

}  // namespace tools::convert
