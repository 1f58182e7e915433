#include "widgets/plots/canvas_lines_view.h"

#include <QLineF>

#include <algorithm>
#include <cmath>
#include <optional>

namespace tyxo {

namespace {

constexpr double far_away = 1e6;  // pixels; beyond that directions need not be exact
constexpr double invisible = 0.2; // pixels
constexpr qsizetype most_joined = 12;
constexpr qsizetype long_run = 100;

bool finite(const stroke& one) {
    return std::isfinite(one.x1) && std::isfinite(one.y1) && std::isfinite(one.x2) && std::isfinite(one.y2);
}

bool inside(const QPointF& point, const QRectF& area) {
    return point.x() >= area.left() && point.x() <= area.right() && point.y() >= area.top() &&
           point.y() <= area.bottom();
}

/// The part of the line inside the area.
std::optional<QLineF> clipped(const QLineF& line, const QRectF& area) {
    if (inside(line.p1(), area) && inside(line.p2(), area)) return line;
    double begin = 0;
    double end = 1;
    const auto cut = [&](double from, double change, double least, double greatest) {
        if (change == 0) return from >= least && from <= greatest;
        const double one = (least - from) / change;
        const double other = (greatest - from) / change;
        begin = std::max(begin, std::min(one, other));
        end = std::min(end, std::max(one, other));
        return begin <= end;
    };
    if (!cut(line.x1(), line.dx(), area.left(), area.right()) ||
        !cut(line.y1(), line.dy(), area.top(), area.bottom())) {
        return std::nullopt;
    }
    return QLineF(line.pointAt(begin), line.pointAt(end));
}

/// Is the point beside the line from `from` to `to`, as far as an eye can tell?
bool on_the_way(const QPointF& point, const QPointF& from, const QPointF& to) {
    const QPointF way = to - from;
    const QPointF part = point - from;
    const double along = QPointF::dotProduct(way, part);
    const double square = QPointF::dotProduct(way, way);
    const double across = way.x() * part.y() - way.y() * part.x();
    return along >= 0 && along <= square && across * across <= invisible * invisible * square;
}

/// The same line with fewer points.
QPolygonF straightened(const QPolygonF& points) {
    QPolygonF result{points.front()};
    qsizetype anchor = 0;
    for (qsizetype k = 2; k < points.size(); ++k) {
        bool straight = k - anchor <= most_joined;
        for (qsizetype between = anchor + 1; straight && between < k; ++between)
            straight = on_the_way(points[between], points[anchor], points[k]);
        if (straight) continue;
        anchor = k - 1;
        result.append(points[anchor]);
    }
    result.append(points.back());
    return result;
}

void drop_repeated(std::vector<line_run>& runs) {
    const auto comes_again = [&runs](const line_run& run) {
        if (run.points.size() < long_run) return false;
        const line_run* const next = &run + 1;
        const line_run* const end = runs.data() + runs.size();
        return std::any_of(next, end, [&run](const line_run& later) {
            return later.ForeColor == run.ForeColor && later.points.size() == run.points.size() &&
                   std::ranges::equal(later.points, run.points);
        });
    };
    for (line_run& run : runs)
        if (comes_again(run)) run.points.clear();
    std::erase_if(runs, [](const line_run& run) { return run.points.isEmpty(); });
}

} // namespace

bool line_run::operator==(const line_run& other) const {
    const auto same_point = [](const QPointF& one, const QPointF& another) {
        return one.x() == another.x() && one.y() == another.y();
    };
    return ForeColor == other.ForeColor && std::ranges::equal(points, other.points, same_point);
}

std::vector<line_run> canvas_lines(std::span<const stroke> strokes, const canvas_place& place) {
    const double beyond = place.overhang;
    const QRectF area = place.visible.adjusted(-beyond, -beyond, beyond, beyond);
    const auto on_screen = [](double origin, double unit, double length) {
        return std::clamp(origin + unit * length, -far_away, far_away);
    };
    std::vector<line_run> runs;
    for (const stroke& one : strokes) {
        if (!finite(one)) continue;
        const QLineF whole(on_screen(place.x, place.unit, one.x1), on_screen(place.y, place.unit, one.y1),
                           on_screen(place.x, place.unit, one.x2), on_screen(place.y, place.unit, one.y2));
        const auto line = clipped(whole, area);
        if (!line) continue;
        const bool goes_on = !runs.empty() && runs.back().ForeColor == one.ForeColor &&
                             runs.back().points.back() == line->p1();
        if (!goes_on) runs.push_back({one.ForeColor, {line->p1()}});
        runs.back().points.append(line->p2());
    }
    drop_repeated(runs);
    for (line_run& run : runs)
        run.points = straightened(run.points);
    return runs;
}

} // namespace tyxo
