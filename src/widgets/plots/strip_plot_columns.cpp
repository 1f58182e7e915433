// Where the parts of a strip chart stand that move: in columns of pixels, counted from time 0.

#include "controls/time_axis.h"
#include "platform/clock.h"
#include "platform/desktop/text.h"
#include "widgets/colour.h"
#include "widgets/plots/given_ticks.h"
#include "widgets/plots/strip_plot.h"

#include <qcustomplot.h>

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

constexpr int label_space = 10;         // between two labels of the X axis
constexpr int paper_columns = 3840;     // finer than the rows are kept
constexpr std::int64_t probe_lag = 500; // ms behind a full second, where the clock's second is beyond doubt

} // namespace

int strip_plot::field_left() const {
    return static_cast<int>(std::lround(left_margin() * ratio_)) + 1; // beside the line of the axis
}

int strip_plot::columns() const {
    if (look_.paper) return paper_columns;
    const auto right = static_cast<int>(std::lround((left_margin() + graph_width()) * ratio_));
    return std::max(right - field_left(), 1);
}

bool strip_plot::follow(const strip_window& rows) {
    const std::int64_t column = strip_field::column_of(rows.newest(), column_);
    if (column == last_column_ && !clock_moved()) return false;
    newest_ = rows.newest();
    last_column_ = column;
    set_ticks();
    return true;
}

field_look strip_plot::field(int top, int height) const {
    field_look look;
    look.place = QRect(field_left(), top, columns(), height);
    look.column = column_;
    look.low = plot_.yAxis->range().lower;
    look.high = plot_.yAxis->range().upper;
    look.ground = qt_colour(shown_.GridBackGroundColor).rgb();
    look.grid = muted(shown_.AxisGridColor).rgb();
    look.GridLineStyle = shown_.GridLineStyle;
    look.levels = {value_ticks_->major.begin(), value_ticks_->major.end()};
    const auto pixel = static_cast<int>(std::lround(ratio_));
    look.thickness = std::max(pixel * curve_width, 1);
    look.dot = pixel * dot_pixels;
    for (std::size_t curve = 0; curve < std::min(strip_curves, shown_.curves.size()); ++curve)
        if (shown_.curves[curve].Visible) look.curves[curve] = qt_colour(shown_.curves[curve].Color).rgb();
    return look;
}

times_look strip_plot::times() const {
    QFont font = plot_.xAxis->tickLabelFont();
    font.setPixelSize(static_cast<int>(std::lround(set_pixels_ * ratio_)));
    return {font, muted(shown_.XAxisLabelFontColor), muted(shown_.XAxisTickMajorColor).rgb(),
            muted(shown_.XAxisTickMinorColor).rgb(), ratio_};
}

/// For the columns that are in the picture now.
void strip_plot::set_ticks() {
    // A picture that moves by whole columns ends with the whole column of the newest row.
    const auto end = static_cast<double>(last_column_ + 1) * column_;
    const double to = look_.paper ? static_cast<double>(newest_) : end;
    const double from = to - span_;
    plot_.xAxis->setRange(from - static_cast<double>(newest_), to - static_cast<double>(newest_));
    time_ticks_->clear();
    ticks_ = {};
    if (any_rows_) {
        add_time_ticks(from, to);
    } else {
        add_even_ticks();
    }
}

void strip_plot::add_time_ticks(double from, double to) {
    // One more than wanted, as the next round step takes some away.
    const int parts = std::clamp(shown_.XAxisTickMajorCount, 1, most_strip_ticks) + 1;
    const double distance = std::max(label_ + label_space, static_cast<double>(graph_width()) / parts);
    time_axis axis;
    axis.from = static_cast<std::int64_t>(std::ceil(from));
    axis.to = std::max(static_cast<std::int64_t>(std::ceil(to)) - 1, newest_);
    axis.least_distance = static_cast<std::int64_t>(std::ceil(distance * span_ / graph_width()));
    axis.minor_count = shown_.XAxisTickMinorCount;
    axis.format = shown_.XAxisDateTimeFormatString;
    const time_ticks ticks = ticks_of(axis, local_at);
    const auto column = [this](std::int64_t time) {
        return std::clamp(strip_field::column_of(time, column_), first_column(), last_column_);
    };
    for (const time_label& tick : ticks.labels) {
        const std::int64_t at = column(tick.time);
        const double column_place =
            static_cast<double>(tick.time) / column_ - static_cast<double>(first_column());
        // On paper the columns are finer than the layout's pixels.
        const double on_paper =
            left_margin() + (static_cast<double>(tick.time) - from) / span_ * graph_width();
        const double x = look_.paper ? on_paper : (field_left() + column_place) / ratio_;
        const bool whole = label_ / 2 <= x && x + label_ / 2 <= size_.width();
        ticks_.major.push_back(at);
        ticks_.labels.push_back(whole ? qt_text(tick.text) : QString());
        time_ticks_->major.push_back(static_cast<double>(tick.time - newest_));
    }
    time_ticks_->labels = {ticks_.labels.begin(), ticks_.labels.end()};
    for (const std::int64_t tick : ticks.minor) {
        ticks_.minor.push_back(column(tick));
        time_ticks_->minor.push_back(static_cast<double>(tick - newest_));
    }
    probe_ = (ticks.labels.empty() ? newest_ : ticks.labels.front().time) + probe_lag;
    probed_ = local_at(probe_);
}

/// A corrected clock moves the labels, also those of a picture that stands.
bool strip_plot::clock_moved() const {
    return any_rows_ && local_at(probe_) != probed_;
}

/// No row, no time: a grid without labels.
void strip_plot::add_even_ticks() {
    const int parts = std::clamp(shown_.XAxisTickMajorCount, 2, most_strip_ticks) - 1;
    for (int tick = 0; tick <= parts; ++tick) {
        time_ticks_->major.push_back(-span_ * tick / parts);
        time_ticks_->labels.push_back(QString());
        ticks_.major.push_back(first_column() + static_cast<std::int64_t>(columns() - 1) * tick / parts);
        ticks_.labels.emplace_back();
    }
}

} // namespace tyxo
