#pragma once
// Arithmetic of the XY plot: which part of a line shows.

#include "controls/xy_plot.h"

#include <optional>

namespace tyxo {

struct plot_line {
    plot_point from;
    plot_point to;
    bool operator==(const plot_line&) const = default;
};

/// The part of a line inside the window of two axes, its direction kept. Nothing when the line passes the
/// window by, when an end is no finite number, or when an axis spans nothing. Ends may be as far away as a
/// double can be; an end that is inside comes back as it is.
[[nodiscard]] std::optional<plot_line> visible_part(const plot_line& line, const plot_axis& x,
                                                    const plot_axis& y);

} // namespace tyxo
