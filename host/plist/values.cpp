#include "host/plist/values.h"

namespace host::plist {

using platform::PropertyListView;

namespace {

template <class T>
std::optional<T> valueOf(PropertyListView view) {
  const T* value = payload<T>(view);
  return value ? std::optional(*value) : std::nullopt;
}

}  // namespace

std::optional<bool> booleanOf(PropertyListView view) {
  return valueOf<bool>(view);
}
std::optional<std::int64_t> integerOf(PropertyListView view) {
  return valueOf<std::int64_t>(view);
}
std::optional<double> realOf(PropertyListView view) {
  return valueOf<double>(view);
}
std::optional<Date> dateOf(PropertyListView view) {
  return valueOf<Date>(view);
}
std::optional<Data> dataOf(PropertyListView view) {
  return valueOf<Data>(view);
}

Position positionOf(PropertyListView view) {
  return view ? view.get()->position : Position();
}

}  // namespace host::plist
