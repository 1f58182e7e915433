#pragma once
// Engines and curves that the Detailed Display is tried with.

#include "displays/frmdetailedpic.h"

#include <cmath>
#include <numbers>

namespace tyxo {

inline constexpr i32 in_line = 4;
inline constexpr i32 v_type = 2;

/// The parameters of an engine on channel 1. Firing angles alternate by `uneven` degrees around their mean.
inline channel_rec engine(i32 strokes, i32 cylinders, i32 arrangement, i32 uneven = 0) {
    channel_rec rec;
    rec.enginetype = strokes;
    rec.numzyl = cylinders;
    rec.cylconf = arrangement;
    rec.alarmlevel = 2;
    const i32 per_bank = (cylinders + 1) / 2;
    for (i32 place = 0; place < cylinders && place < cylinder_max; ++place) {
        // A firing order that jumps through the engine: odd cylinders upwards, even ones downwards.
        const auto jump = [](i32 count, i32 at) { return 2 * at < count ? 2 * at + 1 : 2 * (count - at); };
        const auto index = static_cast<std::size_t>(place);
        rec.firingorder[index] = arrangement == v_type
                                     ? (place % 2 == 0 ? 100 : 200) + jump(per_bank, place / 2)
                                     : jump(cylinders, place);
        const i32 cycle = strokes * 180;
        rec.firingangle[index] = cycle / cylinders + (place % 2 == 0 ? -uneven : uneven);
    }
    return rec;
}

/// The Detailed Display is open for channel 1 with this engine.
inline void open_detailed_display(const channel_rec& rec) {
    sensor::state.channels[0] = rec;
    sensor::state.max_sensors = 2;
    sensor::state.polar_channel = 1;
    sensor::state.scale_polar_t = 3.0;
    sensor::state.scale_polar_a = 0.5;
    sensor::state.adc_offset = 479;
    frmdetailedpic::show("Detailed Display Engine 1");
}

/// Curves as a running engine has them: a bump for each cylinder, one of them too large.
inline void take_curves(const channel_rec& rec) {
    const double cylinders = std::max(rec.numzyl, 1);
    for (std::size_t k = 0; k < sensor::state.detail_thermo.size(); ++k) {
        const double share = static_cast<double>(k) / 256;
        const double place = share * cylinders;
        const double bump = std::pow(std::cos(std::numbers::pi * place), 8);
        const bool warm = static_cast<i32>(std::lround(place)) == 2;
        sensor::state.detail_thermo[k] =
            481 + static_cast<i32>(std::lround((warm ? 11 : 4) * bump)) - (k % 3 == 0);
        const double ripple = std::sin(2 * std::numbers::pi * place) * (warm ? 24 : 14) +
                              4 * std::sin(2 * std::numbers::pi * 3 * share);
        sensor::state.detail_angacc[k] = 700 + static_cast<i32>(std::lround(ripple));
    }
}

/// One whole pass, as a new curve makes it.
inline void draw_pass() {
    frmdetailedpic::prepare();
    frmdetailedpic::draw_curves();
}

} // namespace tyxo
