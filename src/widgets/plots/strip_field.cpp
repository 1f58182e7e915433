#include "widgets/plots/strip_field.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace tyxo {

namespace {

constexpr double farthest = 1000;   // heights of the scale that a value is drawn away from it
constexpr int columns_to_come = 64; // room in the picture: so many times a column costs no moving of pixels

/// Strokes and gaps of the lines of a grid, in pixels.
struct line_pattern {
    std::int64_t stroke;
    std::int64_t length;
    [[nodiscard]] bool drawn(std::int64_t pixel) const { return (pixel % length + length) % length < stroke; }
};

line_pattern pattern_of(i32 style) {
    if (style == 0) return {1, 1};
    return style == 1 ? line_pattern{4, 6} : line_pattern{1, 3};
}

} // namespace

std::int64_t strip_field::column_of(std::int64_t time, double column) {
    return static_cast<std::int64_t>(std::floor(static_cast<double>(time) / column));
}

/// Pixels from the upper edge. The scale runs from the line above the field to that below it.
double strip_field::height_of(double value) const {
    return (look_.high - value) / (look_.high - look_.low) * (look_.place.height() + 1) - 1;
}

void strip_field::draw(field_look look, const strip_window& rows, std::vector<std::int64_t> lines) {
    look_ = std::move(look);
    lines_ = std::move(lines);
    last_ = column_of(rows.newest(), look_.column);
    open_ = rows.first_open_column(look_.column) - look_.dot;
    if (look_.place.isEmpty()) return;
    const QSize size(look_.place.width() + columns_to_come, look_.place.height());
    if (picture_.size() != size) picture_ = QImage(size, QImage::Format_RGB32);
    left_ = 0;
    draw_columns(pixels_at(first()), first(), last_, rows);
}

strip_field::pixels strip_field::pixels_at(std::int64_t column) {
    return {reinterpret_cast<QRgb*>(picture_.bits()) + left_ + (column - first()),
            picture_.bytesPerLine() / static_cast<qsizetype>(sizeof(QRgb))};
}

QRect strip_field::follow(const strip_window& rows, const std::vector<std::int64_t>& lines) {
    if (look_.place.isEmpty()) return {};
    const std::int64_t last = column_of(rows.newest(), look_.column);
    const std::int64_t moved = last - last_;
    std::int64_t from = std::max(open_, last - look_.place.width() + 1);
    if (moved < 0 || moved >= look_.place.width() || !same_lines(lines, last, from)) {
        draw(look_, rows, lines);
        return look_.place;
    }
    last_ = last;
    lines_ = lines;
    open_ = rows.first_open_column(look_.column) - look_.dot;
    if (moved > 0) {
        move(static_cast<int>(moved));
        draw_columns(pixels_at(from), from, last, rows);
        return look_.place;
    }
    const qsizetype width = last - from + 1;
    newest_.resize(static_cast<std::size_t>(width * look_.place.height()));
    draw_columns({newest_.data(), width}, from, last, rows);
    if (!put(from, last)) return {};
    QRect area = look_.place;
    area.setLeft(area.left() + static_cast<int>(from - first()));
    return area;
}

/// Whether the lines stand where they stood, as far as the picture keeps them.
bool strip_field::same_lines(const std::vector<std::int64_t>& lines, std::int64_t last,
                             std::int64_t drawn_from) const {
    const std::int64_t first = last - look_.place.width() + 1;
    const auto kept = [first, drawn_from](const std::vector<std::int64_t>& all) {
        return std::pair(std::ranges::lower_bound(all, first), std::ranges::lower_bound(all, drawn_from));
    };
    const auto [now, now_end] = kept(lines);
    const auto [then, then_end] = kept(lines_);
    return std::equal(now, now_end, then, then_end);
}

void strip_field::draw_columns(const pixels& onto, std::int64_t from, std::int64_t to,
                               const strip_window& rows) {
    draw_grid(onto, from, to);
    // The first curve is the one to watch: it is drawn last, over the others.
    for (std::size_t curve = strip_curves; curve-- > 0;)
        if (look_.curves[curve]) draw_curve(onto, from, to, curve, rows);
}

void strip_field::draw_grid(const pixels& onto, std::int64_t from, std::int64_t to) const {
    const int height = look_.place.height();
    const qsizetype width = to - from + 1;
    for (int y = 0; y < height; ++y)
        std::fill_n(onto.first + y * onto.line, width, look_.ground);
    const line_pattern pattern = pattern_of(look_.GridLineStyle);
    for (const double level : look_.levels) {
        const double place = std::floor(height_of(level));
        if (!(place >= 0 && place < height)) continue;
        const auto y = static_cast<int>(place);
        for (qsizetype x = 0; x < width; ++x)
            if (pattern.drawn(from + x)) onto.first[y * onto.line + x] = look_.grid;
    }
    for (auto line = std::ranges::lower_bound(lines_, from); line != lines_.end() && *line <= to; ++line)
        for (int y = 0; y < height; ++y)
            if (pattern.drawn(y))
                onto.first[y * onto.line + static_cast<qsizetype>(*line - from)] = look_.grid;
}

void strip_field::draw_curve(const pixels& onto, std::int64_t from, std::int64_t to, std::size_t curve,
                             const strip_window& rows) {
    // A stroke is as wide as the curve is thick: strokes of the columns before reach into the first one.
    const int reach = look_.thickness - 1;
    rows.points_from(curve, look_.column, from - reach, points_);
    make_corners(from);
    const auto width = static_cast<i32>(to - from + 1);
    const i32 height = look_.place.height();
    const QRgb color = *look_.curves[curve];
    for (const curve_stroke& stroke :
         strokes_.strokes(corners_, {-reach, width, 0, height}, look_.thickness)) {
        const i32 left = std::max(stroke.left, i32{0});
        const i32 right = std::min(stroke.left + stroke.width, width);
        const i32 bottom = std::min(stroke.top + stroke.height, height);
        for (i32 y = std::max(stroke.top, i32{0}); y < bottom && left < right; ++y)
            std::fill_n(onto.first + y * onto.line + left, right - left, color);
    }
}

void strip_field::make_corners(std::int64_t from) {
    corners_.clear();
    const double range = look_.high - look_.low;
    const auto apart = [this](std::size_t index) {
        return index >= points_.size() || std::isnan(points_[index].value);
    };
    for (std::size_t index = 0; index < points_.size(); ++index) {
        const double value = std::clamp(static_cast<double>(points_[index].value),
                                        look_.low - farthest * range, look_.low + farthest * range);
        const double x = points_[index].time / look_.column - static_cast<double>(from);
        const double y = height_of(value);
        // A row that stands alone is a dot.
        const bool alone = apart(index - 1) && apart(index + 1) && !apart(index);
        if (alone) corners_.push_back({x - look_.dot, y});
        corners_.push_back({x, y});
    }
}

/// The part that is shown moves to the right. Where the room ends, what stays is moved back.
void strip_field::move(int columns) {
    left_ += columns;
    if (left_ + look_.place.width() <= picture_.width()) return;
    for (int y = 0; y < picture_.height(); ++y) {
        auto* const line = reinterpret_cast<QRgb*>(picture_.scanLine(y));
        std::copy_n(line + left_, look_.place.width() - columns, line);
    }
    left_ = 0;
}

/// The newest columns into the picture; whether that changes any pixel.
bool strip_field::put(std::int64_t from, std::int64_t to) {
    const qsizetype width = to - from + 1;
    pixels there = pixels_at(from);
    const QRgb* line = newest_.data();
    bool changed = false;
    for (int y = 0; y < look_.place.height(); ++y, line += width, there.first += there.line) {
        if (std::equal(line, line + width, there.first)) continue;
        std::copy_n(line, width, there.first);
        changed = true;
    }
    return changed;
}

} // namespace tyxo
