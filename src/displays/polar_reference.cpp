// The lines that the measured curves of the Detailed Display are compared with.

#include "basics/number.h"
#include "displays/frmdetailedpic.h"
#include "displays/polar_geometry.h"

namespace tyxo {

namespace {

constexpr colour average_colour = rgb(255, 255, 255);
constexpr colour alarm_colour = rgb(255, 128, 0);

void draw_level(canvas& surface, double y) {
    const double width = round_even<i32>(polar::span(surface));
    std::array<polar::point, polar::steps> points;
    for (i32 k = 0; k < polar::steps; ++k)
        at(points, k) = {polar::left(surface) + width / 255 * k, y};
    polar::draw_outline(surface, points, polar::outline::open);
}

} // namespace

void frmdetailedpic::draw_refcircle() {
    canvas& surface = frmdetailedpic::state.surface;
    surface.ForeColor = average_colour;
    polar::draw_circle(surface, 30);
}

void frmdetailedpic::draw_refline() {
    canvas& surface = frmdetailedpic::state.surface;
    surface.ForeColor = average_colour;
    // Rounded twice, where the curves round once: in some heights line and mean differ by a unit.
    const auto middle = round_even<i32>(round_even<i32>(surface.ScaleHeight - 45) / 2.0);
    draw_level(surface, polar::baseline(surface) - middle);
    polar::draw_legend(surface, 236, 5, average_colour, "average value");
}

void frmdetailedpic::draw_almcircle() {
    canvas& surface = frmdetailedpic::state.surface;
    surface.ForeColor = alarm_colour;
    polar::draw_circle(surface, 50);
    polar::draw_legend(surface, 106, surface.ScaleHeight - 4, alarm_colour, "Thermosignal 100% Alarmlevel");
}

void frmdetailedpic::draw_almline() {
    canvas& surface = frmdetailedpic::state.surface;
    surface.ForeColor = alarm_colour;
    draw_level(surface, surface.ScaleHeight - 90);
}

} // namespace tyxo
