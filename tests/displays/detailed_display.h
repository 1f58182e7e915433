#pragma once
// A Detailed Display that shows an engine, its labels and lines.

#include "displays/polar_surface.h"

#include <vector>

namespace tyxo {

class DetailedDisplay : public PolarSurface {
  protected:
    static void open_with(const channel_rec& rec) {
        open_detailed_display(rec);
        frmdetailedpic::prepare();
    }
    static const canvas_label& around(std::size_t place) { return frmdetailedpic::state.Lblzyl[place]; }
    static const canvas_label& above(std::size_t place) { return frmdetailedpic::state.Lblzyl2[place]; }
    static std::size_t visible_labels() {
        std::size_t count = 0;
        for (std::size_t place = 0; place < 24; ++place)
            count += (around(place).Visible ? 1U : 0U) + (above(place).Visible ? 1U : 0U);
        return count + (frmdetailedpic::state.Lbl0deg.Visible ? 1U : 0U) +
               (frmdetailedpic::state.Lblenddeg.Visible ? 1U : 0U);
    }
    /// Ends of the spokes and feet of the cylinder lines that `draw_engine(2)` draws.
    static std::vector<stroke> spokes(std::size_t cylinders) {
        only([] { frmdetailedpic::draw_engine(2); });
        return {strokes().begin() + 256, strokes().begin() + 256 + static_cast<std::ptrdiff_t>(cylinders)};
    }
    static std::vector<double> line_places(std::size_t cylinders) {
        only([] { frmdetailedpic::draw_xygraph(2); });
        std::vector<double> places;
        for (std::size_t line = 7; line < 7 + cylinders; ++line)
            places.push_back(strokes().at(line).x1 - left_end);
        return places;
    }
};

} // namespace tyxo
