#include "explain/rule_picture.h"

#include <algorithm>
#include <vector>

#include "keyboard/view.h"
#include "render/every_view.h"
#include "render/outline.h"
#include "render/sheet.h"

namespace tools::explain {

namespace boards = host::boards;
using boards::KeyState;
using boards::Shift;
using host::images::Bitmap;
using keyboard::View;

namespace {

constexpr host::images::Pixel kMark = 0xffe6007e;
constexpr host::images::Pixel kAround = 0xffffffff;

/// Sharp, unless that made the sheet wider than a large screen.
double scaleFor(host::drawing::Size sheet) {
  constexpr double kWidest = 4096;
  return 2 * sheet.width <= kWidest ? 2 : 1;
}

bool isHitIn(const KeyHit& hit, KeyState state) {
  return std::ranges::find(hit.states, state) != hit.states.end();
}

KeyState restingState(const KeyHit& hit, const View& view, Shift shift) {
  return boards::restingState(hit.placed.key->display_type,
                              view.keyplane.board->keyplane(view.keyplane.plane), shift);
}

/// The shift with which most of the keys are hit as they lie there; its own if nothing is gained.
Shift bestShift(const ViewHits& hits) {
  const auto atRest = [&](Shift shift) {
    return std::ranges::count_if(hits.keys, [&](const KeyHit& hit) {
      return isHitIn(hit, restingState(hit, hits.view, shift));
    });
  };
  Shift best = boards::defaultShift(hits.view.keyplane.plane);
  for (const Shift shift : {Shift::none, Shift::on, Shift::locked}) {
    if (atRest(shift) > atRest(best)) best = shift;
  }
  return best;
}

/// The view in which the rule shows on the keys that it hits.
View telling(const ViewHits& hits) {
  View view = hits.view;
  const Shift shift = bestShift(hits);
  view.keyplane.shift = shift;
  for (const KeyHit& hit : hits.keys) {
    const KeyState resting = restingState(hit, view, shift);
    const std::string name(hit.placed.key->name);
    if (isHitIn(hit, resting)) continue;
    if (isHitIn(hit, boards::pressedState(resting))) {
      view.pressed.push_back(name);
    } else if (isHitIn(hit, KeyState::disabled)) {
      view.disabled.push_back(name);
    }
  }
  return view;
}

void markKeys(Bitmap& sheet, const ViewHits& hits, const render::Cell& cell, double scale) {
  const auto& choice = hits.view.keyplane;
  const double radius = choice.board->metrics(choice.orientation).corner_radius;
  for (const KeyHit& hit : hits.keys) {
    const auto& face = hit.placed.face;
    const host::drawing::Rect pixels{(cell.frame.x + face.x) * scale,
                                     (cell.frame.y + face.y) * scale, face.width * scale,
                                     face.height * scale};
    // A light line below the mark keeps it apart from a face of its own colour.
    render::drawOutline(sheet, pixels, radius * scale, 3.5 * scale, kAround);
    render::drawOutline(sheet, pixels, radius * scale, 2 * scale, kMark);
  }
}

}  // namespace

host::files::Result<Bitmap> drawHits(std::span<const ViewHits> hits, bool quiet) {
  std::vector<View> views;
  for (const ViewHits& one : hits) views.push_back(telling(one));
  const auto plan = render::planSheet(views);
  const double scale = scaleFor(plan.size);
  auto sheet = render::drawSheet(views, scale, quiet);
  if (!sheet) return sheet;
  for (std::size_t i = 0; i < hits.size(); ++i) markKeys(*sheet, hits[i], plan.cells[i], scale);
  return sheet;
}

}  // namespace tools::explain
