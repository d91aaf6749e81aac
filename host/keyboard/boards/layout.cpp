#include "host/keyboard/boards/layout.h"

#include <cmath>

namespace host::boards {
namespace {

bool isThere(const Key& key, Variant variant) {
  switch (key.presence) {
    case Presence::with_international_key:
      return variant.international_key;
    case Presence::with_dictation_key:
      return variant.dictation_key;
    case Presence::always:
      break;
  }
  return true;
}

std::vector<const Key*> keysThere(const Row& row, Variant variant) {
  std::vector<const Key*> keys;
  for (const Key& key : row.keys) {
    if (isThere(key, variant)) keys.push_back(&key);
  }
  return keys;
}

double restUnits(const std::vector<const Key*>& keys, const Metrics& metrics) {
  double units = (metrics.size.width - 2 * metrics.margin) / metrics.unit;
  for (const Key* key : keys) units -= key->lead + key->width;
  return units;
}

/// A whole point is a whole pixel at every scale, so that equal keys stay equal.
drawing::Rect whole(double left, double top, double right, double bottom) {
  const double x = std::round(left);
  const double y = std::round(top);
  return {x, y, std::round(right) - x, std::round(bottom) - y};
}

/// The faces of a row from left to right.
std::vector<drawing::Rect> facesOf(const std::vector<const Key*>& keys, const Metrics& metrics,
                                   double top) {
  const double rest = restUnits(keys, metrics);
  const double half_gap = metrics.face_gap / 2;
  const double middle = metrics.size.width / 2;
  std::vector<drawing::Rect> faces;
  double x = metrics.margin;
  for (const Key* key : keys) {
    const double left = x + key->lead * metrics.unit;
    const double right = left + (key->width == kRest ? rest : key->width) * metrics.unit;
    const double trim = key->trim * metrics.unit;
    const bool is_left = left < middle;
    faces.push_back(whole(left + half_gap + (is_left ? 0 : trim), top,
                          right - half_gap - (is_left ? trim : 0), top + metrics.face_height));
    x = right;
  }
  return faces;
}

/// Where touches go over from one face to the next.
double between(double end, double start) {
  return std::round((end + start) / 2);
}

void placeRow(const Row& row, std::size_t index, const Keyplane& keyplane, const Metrics& metrics,
              Variant variant, std::vector<PlacedKey>& placed) {
  const double face_top = metrics.top + static_cast<double>(index) * metrics.row_pitch;
  const double face_bottom = face_top + metrics.face_height;
  const double next_gap = metrics.row_pitch - metrics.face_height;
  const bool is_last = index + 1 == keyplane.rows.size();
  const double top = index == 0 ? 0 : between(face_top - next_gap, face_top);
  const double bottom =
      is_last ? metrics.size.height : between(face_bottom, face_bottom + next_gap);

  const auto keys = keysThere(row, variant);
  const auto faces = facesOf(keys, metrics, face_top);
  double left = 0;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    const double right =
        i + 1 == keys.size() ? metrics.size.width : between(faces[i].right(), faces[i + 1].x);
    placed.push_back({keys[i], row.hint, {left, top, right - left, bottom - top}, faces[i]});
    left = right;
  }
}

std::vector<drawing::Rect> backgroundsOf(const Metrics& metrics) {
  const auto [width, height] = metrics.size;
  if (!metrics.opening) return {{0, 0, width, height}};
  const auto [from, to] = *metrics.opening;
  return {{0, 0, from, height}, {to, 0, width - to, height}};
}

std::string nameOf(const Keyplane& keyplane, Orientation orientation) {
  std::string name = orientation == Orientation::portrait ? "Portrait_" : "Landscape_";
  return name.append(keyplane.name);
}

}  // namespace

PlacedKeyplane place(const Board& board, Plane plane, Orientation orientation, Variant variant) {
  const Keyplane& keyplane = board.keyplane(plane);
  const Metrics& metrics = board.metrics(orientation);
  PlacedKeyplane placed{nameOf(keyplane, orientation), metrics.size, backgroundsOf(metrics), {}};
  for (std::size_t i = 0; i < keyplane.rows.size(); ++i) {
    placeRow(keyplane.rows[i], i, keyplane, metrics, variant, placed.keys);
  }
  return placed;
}

}  // namespace host::boards
