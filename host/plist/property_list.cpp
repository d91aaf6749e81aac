#include "platform/property_list.h"

#include <algorithm>

#include "host/plist/node.h"

namespace platform {

using host::plist::Entries;
using host::plist::Items;
using host::plist::payload;

namespace {

constinit const PropertyListNode kEmptyDictionary = {Entries(), {}};

}  // namespace

PropertyListView::Type PropertyListView::type() const {
  return node_ ? static_cast<Type>(node_->value.index()) : Type::kNone;
}

std::optional<std::string_view> PropertyListView::string() const {
  const auto* text = payload<std::string_view>(*this);
  return text ? std::optional(*text) : std::nullopt;
}

bool PropertyListView::boolValue() const {
  if (const auto* boolean = payload<bool>(*this)) return *boolean;
  if (const auto* integer = payload<std::int64_t>(*this)) return *integer != 0;
  if (const auto* real = payload<double>(*this)) return *real != 0;
  return false;
}

float PropertyListView::floatValue() const {
  if (const auto* boolean = payload<bool>(*this)) return *boolean ? 1.0F : 0.0F;
  if (const auto* integer = payload<std::int64_t>(*this)) return static_cast<float>(*integer);
  if (const auto* real = payload<double>(*this)) return static_cast<float>(*real);
  return 0;
}

std::span<const PropertyListView> PropertyListView::items() const {
  const auto* items = payload<Items>(*this);
  return items ? *items : Items();
}

std::span<const PropertyListEntry> PropertyListView::entries() const {
  const auto* entries = payload<Entries>(*this);
  return entries ? *entries : Entries();
}

PropertyListView PropertyListView::objectForKey(std::string_view key) const {
  const Entries all = entries();
  const auto found = std::ranges::lower_bound(all, key, {}, &PropertyListEntry::key);
  return found != all.end() && found->key == key ? found->value : PropertyListView();
}

// It lies outside any arena, so nobody has to keep it alive.
PropertyList PropertyList::dictionary() {
  return {nullptr, &kEmptyDictionary};
}

}  // namespace platform
