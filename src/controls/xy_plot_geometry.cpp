#include "controls/xy_plot_geometry.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tyxo {

namespace {

/// The shares of a line, 0 at its start and 1 at its end, between which it is inside.
struct inside_shares {
    double enter = 0;
    double leave = 1;
};

double greatest(const plot_axis& axis) {
    return axis.Min + axis.Span;
}

bool usable(const plot_axis& axis) {
    return axis.Span > 0 && std::isfinite(axis.Min) && std::isfinite(greatest(axis));
}

bool finite(const plot_point& point) {
    return std::isfinite(point.x) && std::isfinite(point.y);
}

/// Narrows the shares to where one coordinate is inside its axis. False if that is nowhere.
bool narrow_to(const plot_axis& axis, double from, double to, inside_shares& shares) {
    const double half_way = to / 2 - from / 2; // the whole way may be more than a double holds
    if (half_way == 0) return from >= axis.Min && from <= greatest(axis);
    double first = (axis.Min / 2 - from / 2) / half_way;
    double second = (greatest(axis) / 2 - from / 2) / half_way;
    if (first > second) std::swap(first, second);
    shares.enter = std::max(shares.enter, first);
    shares.leave = std::min(shares.leave, second);
    return shares.enter <= shares.leave;
}

double between(double from, double to, double share, const plot_axis& axis) {
    return std::clamp(from * (1 - share) + to * share, axis.Min, greatest(axis));
}

} // namespace

std::optional<plot_line> visible_part(const plot_line& line, const plot_axis& x, const plot_axis& y) {
    if (!usable(x) || !usable(y) || !finite(line.from) || !finite(line.to)) return std::nullopt;
    inside_shares shares;
    if (!narrow_to(x, line.from.x, line.to.x, shares) || !narrow_to(y, line.from.y, line.to.y, shares))
        return std::nullopt;
    const auto point_at = [&](double share) {
        return plot_point{between(line.from.x, line.to.x, share, x),
                          between(line.from.y, line.to.y, share, y)};
    };
    return plot_line{shares.enter > 0 ? point_at(shares.enter) : line.from,
                     shares.leave < 1 ? point_at(shares.leave) : line.to};
}

} // namespace tyxo
