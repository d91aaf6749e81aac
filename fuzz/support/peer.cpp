#include "support/peer.h"

#ifdef PRISMAL_LIBPLIST

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <limits>
#include <memory>
#include <plist/plist.h>
#include <set>
#include <span>
#include <string>

#include "host/plist/binary_format.h"
#include "host/plist/values.h"

namespace fuzz {

using platform::PropertyListView;
using Type = PropertyListView::Type;

namespace {

struct FreeTree {
  void operator()(void* tree) const { plist_free(tree); }
};
using Tree = std::unique_ptr<void, FreeTree>;

Tree parse(std::string_view bytes) {
  plist_t tree = nullptr;
  const auto size = static_cast<std::uint32_t>(bytes.size());
  if (bytes.starts_with(host::plist::binary::kMagic)) {
    plist_from_bin(bytes.data(), size, &tree);
  } else {
    plist_from_xml(bytes.data(), size, &tree);
  }
  return Tree(tree);
}

double secondsFromTheirEpoch(PropertyListView date) {
  return host::plist::dateOf(date)->seconds - host::plist::binary::kEpoch;
}

bool hasNul(std::string_view text) {
  return text.find('\0') != text.npos;
}

bool isReadItsOwnWay(PropertyListView value, bool isBinary) {
  if (value.type() == Type::kDate) {
    const double seconds = secondsFromTheirEpoch(value);
    return std::fabs(seconds) >= std::numeric_limits<std::int32_t>::max() ||
           (seconds < 0 && isBinary);
  }
  if (const auto text = value.string()) return hasNul(*text);
  const auto isOwn = [&](PropertyListView item) { return isReadItsOwnWay(item, isBinary); };
  return std::ranges::any_of(value.items(), isOwn) ||
         std::ranges::any_of(value.entries(), [&](const auto& entry) {
           return (entry.key.empty() && !isBinary) || hasNul(entry.key) || isOwn(entry.value);
         });
}

bool same(plist_t theirs, PropertyListView ours);

bool sameBoolean(plist_t theirs, bool ours) {
  std::uint8_t value = 0;
  plist_get_bool_val(theirs, &value);
  return (value != 0) == ours;
}

bool sameInteger(plist_t theirs, std::int64_t ours) {
  std::uint64_t value = 0;
  plist_get_uint_val(theirs, &value);
  return value == static_cast<std::uint64_t>(ours);
}

bool sameReal(plist_t theirs, double ours) {
  double value = 0;
  plist_get_real_val(theirs, &value);
  return value == ours;
}

bool sameDate(plist_t theirs, PropertyListView ours) {
  std::int32_t seconds = 0;
  std::int32_t microseconds = 0;
  plist_get_date_val(theirs, &seconds, &microseconds);
  return std::fabs(seconds + microseconds / 1e6 - secondsFromTheirEpoch(ours)) < 2e-6;
}

bool sameText(plist_t theirs, std::string_view ours) {
  std::uint64_t length = 0;
  const char* const text = plist_get_string_ptr(theirs, &length);
  return text != nullptr && std::string_view(text, length) == ours;
}

bool sameData(plist_t theirs, host::plist::Data ours) {
  std::uint64_t length = 0;
  const char* const bytes = plist_get_data_ptr(theirs, &length);
  return std::ranges::equal(std::as_bytes(std::span(bytes, length)), ours);
}

bool sameArray(plist_t theirs, host::plist::Items ours) {
  if (plist_array_get_size(theirs) != ours.size()) return false;
  for (std::uint32_t i = 0; i < ours.size(); ++i) {
    if (!same(plist_array_get_item(theirs, i), ours[i])) return false;
  }
  return true;
}

std::set<std::string> keysOf(plist_t dictionary) {
  std::set<std::string> keys;
  plist_dict_iter next = nullptr;
  plist_dict_new_iter(dictionary, &next);
  const std::unique_ptr<void, decltype(&std::free)> owner(next, &std::free);
  for (;;) {
    char* key = nullptr;
    plist_dict_next_item(dictionary, next, &key, nullptr);
    if (key == nullptr) return keys;
    keys.insert(key);
    std::free(key);
  }
}

bool sameDictionary(plist_t theirs, host::plist::Entries ours) {
  const auto keys = keysOf(theirs);
  if (keys.size() != ours.size()) return false;
  // It keeps all entries that a file has under one key, and answers with the first.
  const bool hasRepeatedKeys = plist_dict_get_size(theirs) > keys.size();
  return std::ranges::all_of(ours, [&](const auto& entry) {
    const std::string key(entry.key);
    return keys.contains(key) &&
           (hasRepeatedKeys || same(plist_dict_get_item(theirs, key.c_str()), entry.value));
  });
}

plist_type typeOf(Type type) {
  switch (type) {
    case Type::kBoolean:
      return PLIST_BOOLEAN;
    case Type::kInteger:
      return PLIST_UINT;
    case Type::kReal:
      return PLIST_REAL;
    case Type::kString:
      return PLIST_STRING;
    case Type::kDate:
      return PLIST_DATE;
    case Type::kData:
      return PLIST_DATA;
    case Type::kArray:
      return PLIST_ARRAY;
    case Type::kDictionary:
      return PLIST_DICT;
    case Type::kNone:
      break;
  }
  return PLIST_NONE;
}

bool same(plist_t theirs, PropertyListView ours) {
  if (theirs == nullptr || plist_get_node_type(theirs) != typeOf(ours.type())) return false;
  switch (ours.type()) {
    case Type::kBoolean:
      return sameBoolean(theirs, ours.boolValue());
    case Type::kInteger:
      return sameInteger(theirs, *host::plist::integerOf(ours));
    case Type::kReal:
      return sameReal(theirs, *host::plist::realOf(ours));
    case Type::kString:
      return sameText(theirs, *ours.string());
    case Type::kDate:
      return sameDate(theirs, ours);
    case Type::kData:
      return sameData(theirs, *host::plist::dataOf(ours));
    case Type::kArray:
      return sameArray(theirs, ours.items());
    case Type::kDictionary:
      return sameDictionary(theirs, ours.entries());
    case Type::kNone:
      break;
  }
  return false;
}

}  // namespace

Opinion peerOpinion(std::string_view bytes, PropertyListView list) {
  if (isReadItsOwnWay(list, bytes.starts_with(host::plist::binary::kMagic))) return Opinion::kNone;
  const Tree tree = parse(bytes);
  if (!tree) return Opinion::kRefused;
  return same(tree.get(), list) ? Opinion::kSame : Opinion::kDifferent;
}

}  // namespace fuzz

#else

namespace fuzz {

Opinion peerOpinion(std::string_view, platform::PropertyListView) {
  return Opinion::kNone;
}

}  // namespace fuzz

#endif
