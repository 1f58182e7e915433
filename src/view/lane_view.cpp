#include "view/lane_view.h"

#include "platform/desktop/text.h"
#include "view/time_cursor_view.h"
#include "view/time_texts.h"
#include "widgets/colour.h"
#include "widgets/plots/xy_plot_view.h"

#include <QLabel>
#include <QPainter>

#include <algorithm>

namespace tyxo::view {

namespace {

constexpr int gap = 4;
constexpr int title_line = 24;
constexpr int values_width = 580; ///< in front of the chart's title
constexpr int cycle_line = 18;
constexpr int greatest_scope = 240;

} // namespace

QString history_chart_view::spoken_text() const {
    const auto from = static_cast<std::int64_t>(x_axis_min() * ms_per_day);
    const auto span = static_cast<std::int64_t>(x_axis_span() * ms_per_day);
    return tr("from %1, %2").arg(moment_text(from), length_text(span));
}

lane_view::lane_view(lane& shown, const QString& name, QWidget* parent)
    : QWidget(parent), lane_(shown),
      chart_(new history_chart_view([this]() -> const strip_window& { return rows_; }, this)),
      cursor_view_(new time_cursor_view([this] { return chart_->axisRect()->rect(); }, chart_)),
      values_(new QLabel(chart_)), scope_(new xy_plot_view(this)), cycle_(new QLabel(this)) {
    setObjectName(name);
    setMinimumHeight(least_height);
    const QString engine = qt_text(lane_.chart.Title);
    chart_->setObjectName(name + "_chart");
    chart_->setFocusPolicy(Qt::NoFocus); // the cursor over it has it
    chart_->set_title_room(title_line, values_width, gap);
    cursor_view_->setObjectName(name + "_cursor");
    cursor_view_->setAccessibleName(tr("Cursor over %1").arg(engine));
    values_->setObjectName(name + "_values");
    values_->setTextFormat(Qt::PlainText);
    values_->setAttribute(Qt::WA_TransparentForMouseEvents);
    scope_->setObjectName(name + "_scope");
    scope_->setAccessibleName(tr("Scope of %1").arg(engine));
    scope_->setToolTip(tr("Opens the Detailed Display"));
    cycle_->setObjectName(name + "_cycle");
    cycle_->setAlignment(Qt::AlignCenter);
    connect(cursor_view_, &time_cursor_view::pointed, this,
            [this](qint64 ms) { emit pointed(ms - lane_.shift); });
    connect(cursor_view_, &time_cursor_view::dragged, this, &lane_view::dragged);
    connect(cursor_view_, &time_cursor_view::zoomed, this,
            [this](double factor, qint64 at) { emit zoomed(factor, at - lane_.shift); });
    connect(cursor_view_, &time_cursor_view::scrolled, this, &lane_view::scrolled);
    connect(cursor_view_, &time_cursor_view::chosen, this, &lane_view::chosen);
    connect(scope_, &xy_plot_view::clicked, this, [this] {
        emit chosen();
        emit scope_clicked();
    });
}

void lane_view::resizeEvent(QResizeEvent* /*event*/) {
    place();
}

void lane_view::showEvent(QShowEvent* event) {
    QWidget::showEvent(event);
    emit appeared();
}

void lane_view::place() {
    const int side = std::clamp(height() - cycle_line - 2 * gap, 60, greatest_scope);
    const int chart = std::max(width() - side - 3 * gap, 100);
    chart_->setGeometry(gap, gap, chart, height() - 2 * gap);
    cursor_view_->setGeometry(chart_->rect());
    values_->setGeometry(2 * gap, 1, std::min(values_width, chart) - 2 * gap, title_line - 2);
    scope_->setGeometry(chart + 2 * gap, gap, side, side);
    cycle_->setGeometry(chart + 2 * gap, gap + side, side, cycle_line);
}

/// A line at the left edge.
void lane_view::paintEvent(QPaintEvent* /*event*/) {
    if (!selected_) return;
    QPainter(this).fillRect(0, gap, gap - 1, height() - 2 * gap, palette().highlight());
}

void lane_view::set_selected(bool selected) {
    if (selected == selected_) return;
    selected_ = selected;
    update();
}

void lane_view::take_focus() {
    cursor_view_->setFocus(Qt::OtherFocusReason);
}

std::optional<std::string> lane_view::show(const time_range& window, std::int64_t cursor, unsigned changes,
                                           bool selected) {
    const time_range range = lane_.range(window);
    const std::int64_t own = cursor + lane_.shift;
    const bool all = !shown_ || changes != changes_;
    const bool other_range = all || range != range_;
    const bool other_cursor = all || own != cursor_;
    shown_ = true;
    range_ = range;
    cursor_ = own;
    changes_ = changes;
    return attempt(
        [&] {
            if (other_range) show_range();
        },
        [&] {
            if (other_range || other_cursor) cursor_view_->show_time(range_, own, lane_.line.marks());
        },
        [&] {
            if (other_cursor) show_values(own);
        },
        [&] {
            if (other_cursor) show_cycle_of(own, selected);
        });
}

/// A chart of what cannot be read is empty.
void lane_view::show_range() {
    rows_ = strip_window(range_.span());
    rows_.append({.time = range_.to});
    lane_.chart.XAxisMin = static_cast<double>(range_.from) / ms_per_day;
    lane_.chart.XAxisSpan = static_cast<double>(range_.span()) / ms_per_day;
    const auto failed = attempt([this] { rows_ = rows_of(lane_.line, lane_.kept, range_); });
    chart_->show_control(lane_.chart);
    chart_->renew();
    if (failed) throw failure(*failed);
}

QString lane_view::values_text(std::int64_t ms) const {
    const auto row = values_at(lane_, ms);
    if (!row) return moment_text(ms) + tr("   no record");
    const xlg::measured& values = row->values;
    return moment_text(row->ms) + tr("   Tsig %1 %   %2 rpm   TmV %3 mV   Teff DC %4 %   AC %5 %")
                                      .arg(values[0])
                                      .arg(values[1])
                                      .arg(values[2] / 100.0, 0, 'f', 2)
                                      .arg(values[3])
                                      .arg(values[4]);
}

void lane_view::show_values(std::int64_t ms) {
    const QString text = values_text(ms);
    values_->setText(text);
    cursor_view_->set_spoken(text);
}

void lane_view::show_cycle_of(std::int64_t ms, bool selected) {
    const cycle_times times = show_cycle(lane_, ms, selected);
    scope_->show_control(lane_.scope);
    const auto latest = std::max(times.thermo, times.angacc);
    cycle_->setText(latest ? tr("Cycle of %1").arg(clock_text(*latest * 1000)) : tr("no cycle"));
}

} // namespace tyxo::view

#include "moc_lane_view.cpp"
