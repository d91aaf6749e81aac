#include "host/drawing/glyphs.h"

#include <cmath>
#include <numbers>

#include "host/drawing/cairo_handles.h"
#include "host/drawing/shapes.h"

namespace host::drawing {
namespace {

/// Draws on a grid of sixteenths of an em around a centre. Coordinates are moved so that straight
/// lines fill whole pixels, alike on both sides of the centre.
class Pen {
 public:
  Pen(cairo_t* context, Point center, double em_px)
      : context_(context),
        center_(center),
        unit_(em_px / 16),
        line_(std::fmax(1, std::round(em_px * kStem))) {
    cairo_set_line_width(context, line_);
    cairo_set_line_join(context, CAIRO_LINE_JOIN_ROUND);
    cairo_set_line_cap(context, CAIRO_LINE_CAP_ROUND);
  }

  double line() const { return line_; }
  double length(double units) const { return units * unit_; }
  double x(double units) const { return mirrored(center_.x, units); }
  double y(double units) const { return mirrored(center_.y, units); }
  cairo_t* context() const { return context_; }

  /// The same pen around a centre on which a line is sharp.
  Pen onLine() const {
    Pen moved = *this;
    moved.center_ = {sharp(center_.x), sharp(center_.y)};
    return moved;
  }

  void moveTo(double units_x, double units_y) const {
    cairo_move_to(context_, x(units_x), y(units_y));
  }
  void lineTo(double units_x, double units_y) const {
    cairo_line_to(context_, x(units_x), y(units_y));
  }
  void stroke() const { cairo_stroke(context_); }

 private:
  static constexpr double kStem = 0.088;

  double sharp(double at) const { return std::round(at - line_ / 2) + line_ / 2; }
  double mirrored(double middle, double units) const {
    const double distance = middle - sharp(middle - std::fabs(units) * unit_);
    if (units == 0) return middle;
    return units < 0 ? middle - distance : middle + distance;
  }

  cairo_t* context_;
  Point center_;
  double unit_;
  double line_;
};

void addArrow(const Pen& pen, double foot) {
  pen.moveTo(0, -8);
  pen.lineTo(8.5, 0.5);
  pen.lineTo(4, 0.5);
  pen.lineTo(4, foot);
  pen.lineTo(-4, foot);
  pen.lineTo(-4, 0.5);
  pen.lineTo(-8.5, 0.5);
  cairo_close_path(pen.context());
}

void drawShift(const Pen& pen) {
  addArrow(pen, 7);
  pen.stroke();
}

void drawShiftOn(const Pen& pen) {
  addArrow(pen, 7);
  cairo_fill_preserve(pen.context());
  pen.stroke();
}

void drawShiftLocked(const Pen& pen) {
  addArrow(pen, 4);
  cairo_fill_preserve(pen.context());
  pen.stroke();
  pen.moveTo(-4, 8);
  pen.lineTo(4, 8);
  pen.stroke();
}

/// A tag that points to the left.
void drawDelete(const Pen& pen) {
  cairo_t* context = pen.context();
  constexpr double kQuarter = std::numbers::pi / 2;
  const double r = pen.length(2);
  pen.moveTo(-10.5, 0);
  pen.lineTo(-4.5, -7);
  cairo_arc(context, pen.x(10.5) - r, pen.y(-7) + r, r, -kQuarter, 0);
  cairo_arc(context, pen.x(10.5) - r, pen.y(7) - r, r, 0, kQuarter);
  pen.lineTo(-4.5, 7);
  cairo_close_path(context);
  pen.stroke();
  pen.moveTo(-1, -3);
  pen.lineTo(5, 3);
  pen.moveTo(5, -3);
  pen.lineTo(-1, 3);
  pen.stroke();
}

void drawGlobe(const Pen& around) {
  const Pen pen = around.onLine();
  cairo_t* context = pen.context();
  const double radius = pen.x(8.5) - pen.x(0);
  cairo_new_sub_path(context);
  cairo_arc(context, pen.x(0), pen.y(0), radius, 0, 2 * std::numbers::pi);
  pen.stroke();
  {
    const SavedState saved(context);
    cairo_translate(context, pen.x(0), pen.y(0));
    cairo_scale(context, 0.47, 1);
    cairo_new_sub_path(context);
    cairo_arc(context, 0, 0, radius, 0, 2 * std::numbers::pi);
  }
  for (const double latitude : {-4.5, 0.0, 4.5}) {
    const double reach = 8.5 * std::sqrt(1 - latitude * latitude / (8.5 * 8.5));
    pen.moveTo(-reach, latitude);
    pen.lineTo(reach, latitude);
  }
  pen.moveTo(0, -8.5);
  pen.lineTo(0, 8.5);
  // Lighter than the outline, or a small globe would be a blot.
  cairo_set_line_width(context, std::fmax(1, pen.line() - 1));
  pen.stroke();
}

void drawMicrophone(const Pen& around) {
  const Pen pen = around.onLine();
  cairo_t* context = pen.context();
  const double left = pen.x(-2.5) - pen.line() / 2;
  const double right = pen.x(2.5) + pen.line() / 2;
  const double top = pen.y(-8.5) - pen.line() / 2;
  addRoundedRect(context, {left, top, right - left, pen.y(2) - top}, right - left);
  cairo_fill(context);
  pen.moveTo(-5.5, -1.5);
  cairo_arc_negative(context, pen.x(0), pen.y(-0.5), pen.x(5.5) - pen.x(0), std::numbers::pi, 0);
  pen.lineTo(5.5, -1.5);
  pen.moveTo(0, 5);
  pen.lineTo(0, 8.5);
  pen.moveTo(-3.5, 8.5);
  pen.lineTo(3.5, 8.5);
  pen.stroke();
}

void drawDismiss(const Pen& pen) {
  cairo_t* context = pen.context();
  addRoundedRect(context, {pen.x(-10), pen.y(-8.5), pen.x(10) - pen.x(-10), pen.y(3) - pen.y(-8.5)},
                 pen.length(1.5));
  pen.stroke();
  const double dot = std::round(pen.length(1.5));
  const auto addDot = [&](double units_x, double units_y, double width) {
    cairo_rectangle(context, std::round(pen.x(units_x) - width / 2),
                    std::round(pen.y(units_y) - dot / 2), width, dot);
  };
  for (const double column : {-6.0, -3.0, 0.0, 3.0, 6.0}) addDot(column, -5.5, dot);
  for (const double column : {-6.0, -3.0, 0.0, 3.0, 6.0}) addDot(column, -2.75, dot);
  addDot(0, 0, std::round(pen.length(8)));
  cairo_fill(context);
  pen.moveTo(-3, 6);
  pen.lineTo(0, 9);
  pen.lineTo(3, 6);
  pen.stroke();
}

}  // namespace

void drawGlyph(cairo_t* context, Glyph glyph, Point center, double em_px) {
  const SavedState saved(context);
  const Pen pen(context, center, em_px);
  cairo_new_path(context);
  switch (glyph) {
    case Glyph::shift:
      return drawShift(pen);
    case Glyph::shift_on:
      return drawShiftOn(pen);
    case Glyph::shift_locked:
      return drawShiftLocked(pen);
    case Glyph::delete_left:
      return drawDelete(pen);
    case Glyph::globe:
      return drawGlobe(pen);
    case Glyph::microphone:
      return drawMicrophone(pen);
    case Glyph::dismiss:
      return drawDismiss(pen);
  }
}

}  // namespace host::drawing
