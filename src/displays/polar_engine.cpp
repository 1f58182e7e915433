// The engine in the Detailed Display: circle, axes, and where each cylinder lies in the cycle.

#include "basics/number.h"
#include "displays/frmdetailedpic.h"
#include "displays/polar_geometry.h"
#include "link/engine_texts.h"

namespace tyxo {

namespace {

constexpr i32 degrees = 360;
constexpr double outer_radius = 45;
constexpr double spoke_radius = 55;

using circle_points = std::array<polar::point, degrees>;

[[nodiscard]] bool four_strokes(const channel_rec& rec) {
    return rec.enginetype == 4;
}

/// In V engines each second label stands nearer, so that the labels of both banks keep clear of each other.
[[nodiscard]] bool stands_nearer(const channel_rec& rec, i32 place) {
    return rec.cylconf == arrangement::v_type && place % 2 == 1;
}

void put_label(canvas_label& label, double left, double top) {
    label.Left = left;
    label.Top = top;
    label.Visible = true;
}

void put_cylinder(canvas_label& label, double left, double top, i32 entry) {
    put_label(label, left, top);
    if (const auto text = cylinder_text(entry)) label.Caption = *text;
}

void hide_missing_cylinders(i32 cylinders) {
    frmdetailedpic::window& window = frmdetailedpic::state;
    for (i32 place = 0; place < cylinder_max; ++place) {
        if (place < cylinders) continue;
        at(window.Lblzyl, place).Visible = false;
        at(window.Lblzyl2, place).Visible = false;
    }
    if (cylinders <= 0) window.Lbl0deg.Visible = window.Lblenddeg.Visible = false;
}

[[nodiscard]] circle_points spoke_ends(const canvas& surface) {
    circle_points points;
    for (i32 degree = 0; degree < degrees; ++degree)
        at(points, degree) = polar::turned_point(surface, spoke_radius, degree * polar::per_degree);
    return points;
}

void put_first_label(const canvas& surface, const channel_rec& rec) {
    // Looks like a mistake and stays: the angle is that of 359 degrees, which puts the label about one unit
    // beside the top (DetailedLabels.SixCylindersOfAFourStrokeEngineAreSixthsOfTheCircle).
    constexpr double angle = 359 * polar::per_degree;
    constexpr double radius = 64;
    put_cylinder(frmdetailedpic::state.Lblzyl[0], polar::turned_point(surface, radius, angle).x,
                 surface.ScaleHeight / 2 - radius, rec.firingorder[0]);
}

void draw_spokes(canvas& surface, const channel_rec& rec) {
    constexpr double label_radius = 65;
    constexpr double near_label_radius = 60;
    if (rec.numzyl <= 0) return;
    circle_points ends = spoke_ends(surface);
    ends[0].y = surface.ScaleHeight / 2 - spoke_radius;
    put_first_label(surface, rec);
    std::array<i32, cylinder_max> position{};
    double sum = 0;
    for (i32 place = 1; place < rec.numzyl; ++place) {
        const double entry = at(rec.firingangle, place);
        sum += four_strokes(rec) ? entry * 360 / 720 : entry; // one engine cycle is a full circle
        const double angle = sum * polar::per_degree;
        const auto degree = round_even<i32>(sum);
        // Looks like a mistake and stays: the height of a spoke's end is that of the exact angle, its X that
        // of the whole degree (DetailedEngine.LabelsLieAtTheExactAngleSpokesInPartAtTheWholeDegree).
        at(ends, degree).y = polar::turned_point(surface, spoke_radius, angle).y;
        at(position, place) = degree;
        const double radius = stands_nearer(rec, place) ? near_label_radius : label_radius;
        const polar::point corner = polar::turned_point(surface, radius, angle);
        put_cylinder(at(frmdetailedpic::state.Lblzyl, place), corner.x, corner.y, at(rec.firingorder, place));
    }
    const polar::point hub = polar::centre(surface);
    for (i32 place = 0; place < rec.numzyl; ++place) {
        const polar::point& end = at(ends, at(position, place));
        surface.line(hub.x, hub.y, end.x, end.y);
    }
}

void print_at(canvas& surface, double x, double y, std::string_view text) {
    surface.CurrentX = x;
    surface.CurrentY = y;
    surface.print(text);
}

void print_engine(canvas& surface, const channel_rec& rec) {
    if (rec.enginetype == 2) print_at(surface, 5, 3, "2 stroke engine 360 degrees");
    if (rec.enginetype == 4) print_at(surface, 5, 3, "4 stroke engine 720 degrees");
    const bool described =
        rec.numzyl > 0 || rec.cylconf == arrangement::v_type || rec.cylconf == arrangement::in_line;
    if (described) print_at(surface, 5, 7, arrangement_text(rec));
}

void draw_axes(canvas& surface) {
    const double w = surface.ScaleWidth;
    const double h = surface.ScaleHeight;
    surface.line(w / 2 - 12, h - 15, w / 2 - 12, 25);
    surface.line(polar::left(surface), h - 15, w - 2, h - 15);
    surface.line(w / 2 - 12, 25, w / 2 - 13, 27);
    surface.line(w / 2 - 12, 25, w / 2 - 11, 27);
    surface.line(w - 2, h - 15, w - 4, h - 14);
    surface.line(w - 2, h - 15, w - 4, h - 16);
    surface.line(w - 5, h - 14, w - 5, h - 16);
}

/// The line of one cylinder in the straight diagram, its label above.
void draw_cylinder(canvas& surface, const channel_rec& rec, i32 place, i32 position) {
    constexpr double line_top = 30;
    constexpr double label_top = 25;
    constexpr double far_label_top = 20;
    const double x = polar::left(surface) + position;
    surface.line(x, polar::baseline(surface), x, line_top);
    put_cylinder(at(frmdetailedpic::state.Lblzyl2, place), x,
                 stands_nearer(rec, place) ? far_label_top : label_top, at(rec.firingorder, place));
}

void draw_cylinders(canvas& surface, const channel_rec& rec) {
    if (rec.numzyl <= 0) return;
    draw_cylinder(surface, rec, 0, 0);
    const double label_top = surface.ScaleHeight - 12;
    frmdetailedpic::state.Lbl0deg.Caption = "0 deg.";
    put_label(frmdetailedpic::state.Lbl0deg, polar::left(surface), label_top);
    frmdetailedpic::state.Lblenddeg.Caption = four_strokes(rec) ? "720 deg." : "360 deg.";
    put_label(frmdetailedpic::state.Lblenddeg, surface.ScaleWidth - 12, label_top);

    const auto width = static_cast<double>(round_even<i32>(polar::span(surface)));
    i32 position = 0;
    for (i32 place = 1; place < rec.numzyl; ++place) {
        const double entry = at(rec.firingangle, place);
        // Looks like a mistake and stays: rounded at each step, unlike the circle, so that errors add up
        // (DetailedEngine.PlacesInTheStraightDiagramAreRoundedAtEachStep).
        position = four_strokes(rec) ? round_even<i32>(entry * width / 720 + position)
                                     : round_even<i32>(width / 360 * entry + position);
        draw_cylinder(surface, rec, place, position);
    }
}

} // namespace

void frmdetailedpic::draw_engine(i16 mode) {
    canvas& surface = frmdetailedpic::state.surface;
    surface.ForeColor = rgb(0, 0, 0);
    polar::draw_circle(surface, outer_radius);
    if (mode == engine_picture::engine) {
        const channel_rec& rec = frmdetailedpic::detailed_channel();
        hide_missing_cylinders(rec.numzyl);
        draw_spokes(surface, rec);
        print_engine(surface, rec);
    }
    frmdetailedpic::draw_xygraph(mode);
}

void frmdetailedpic::draw_xygraph(i16 mode) {
    canvas& surface = frmdetailedpic::state.surface;
    surface.ForeColor = rgb(0, 0, 0);
    draw_axes(surface);
    if (mode == engine_picture::engine) draw_cylinders(surface, frmdetailedpic::detailed_channel());
}

} // namespace tyxo
