#include "widgets/plots/strip_plot.h"

#include "controls/time_axis.h"
#include "controls/xy_plot_geometry.h"
#include "platform/desktop/text.h"
#include "widgets/colour.h"
#include "widgets/plots/given_ticks.h"

#include <qcustomplot.h>

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>
#include <limits>
#include <optional>

namespace tyxo {

namespace {

// Around the axes: room for the labels, in letters of the least size.
constexpr int least_left_margin = 40;
constexpr int right_margin = 16;
constexpr int least_bottom_margin = 22;
constexpr int least_legend_line = 17;

// Letters grow with the chart.
constexpr int least_pixels = 11;
constexpr int most_pixels = 15;
constexpr int usual_height = 280;     // of a chart with the smallest letters
constexpr int height_of_a_pixel = 70; // for each pixel more
constexpr double paper_curve_width = 1.2;
constexpr double ms_per_day = 86'400'000;

constexpr QRgb quiet_print = 0xFF808080;

QFont label_font(const QCustomPlot& plot, int pixels) {
    QFont font = plot.font();
    font.setPixelSize(pixels);
    font.setBold(false);
    return font;
}

Qt::PenStyle line_style(i32 style) {
    if (style == 0) return Qt::SolidLine;
    return style == 1 ? Qt::DashLine : Qt::DotLine;
}

bool usable(double low, double high) {
    return std::isfinite(low) && std::isfinite(high) && high > low && std::isfinite(high - low);
}

} // namespace

strip_plot::strip_plot(QCustomPlot& plot, strip_look look)
    : plot_(plot), look_(look), legend_(plot, look.paper ? 8 : 0), time_ticks_(new given_ticks),
      value_ticks_(new given_ticks) {
    plot.setNotAntialiasedElements(QCP::aeAll);
    plot.setNoAntialiasingOnDrag(true);
    plot.setPlottingHints(QCP::phCacheLabels | QCP::phFastPolylines);

    // The sample of a curve is a little longer than its place.
    if (look.cut) plot.legend->setIconTextPadding(9);

    QCPAxisRect& area = *plot.axisRect();
    area.setAutoMargins(QCP::msNone);
    QCPLayoutGrid& page = *plot.plotLayout();
    page.setMargins({0, look.title_line, 0, 0});
    page.setRowSpacing(0);

    plot.xAxis->setTicker(time_ticks_);
    plot.yAxis->setTicker(value_ticks_);
    for (QCPAxis* axis : {plot.xAxis, plot.yAxis}) {
        axis->setTickLength(0, 5);
        axis->setSubTickLength(0, 3);
        axis->setTickLabelPadding(3);
        axis->grid()->setSubGridVisible(false);
        axis->grid()->setZeroLinePen(Qt::NoPen);
    }
    for (QCPAxis* axis : {plot.xAxis2, plot.yAxis2}) {
        axis->setVisible(look.paper);
        axis->setTicks(false);
        axis->setTickLabels(false);
    }
    plot.xAxis->setTicks(look.paper);
    plot.xAxis->setTickLabels(look.paper);
    for (QCPAxis* axis : {plot.xAxis, plot.yAxis})
        axis->grid()->setVisible(look.paper);
    set_size(plot.size(), 1);
}

void strip_plot::set_size(const QSize& size, double ratio) {
    if (size == size_ && ratio == ratio_) return;
    size_ = size;
    ratio_ = ratio;
    set_up_ = false;
}

void strip_plot::set_title_line(int pixels) {
    look_.title_line = pixels;
    plot_.plotLayout()->setMargins({0, pixels, 0, 0});
}

int strip_plot::letters() const {
    if (look_.paper) return least_pixels;
    return std::clamp(least_pixels + (size_.height() - usual_height) / height_of_a_pixel, least_pixels,
                      most_pixels);
}

int strip_plot::left_margin() const {
    return least_left_margin * letters() / least_pixels;
}

int strip_plot::legend_line() const {
    return least_legend_line + letters() - least_pixels;
}

int strip_plot::graph_width() const {
    return std::max(size_.width() - left_margin() - right_margin, 1);
}

void strip_plot::show(const iStripChartX& chart, const strip_window& rows) {
    const bool same_curves = set_up_ && chart.curves == shown_.curves;
    shown_ = chart;
    set_colours();
    set_y_scale();
    if (!same_curves) set_curves();
    set_fonts();
    legend_.arrange(graph_width(), legend_line());
    set_up_ = true;
    span_ = span_of(rows);
    column_ = span_ / columns();
    any_rows_ = rows.rows() > 0;
    newest_ = rows.newest();
    last_column_ = strip_field::column_of(newest_, column_);
    set_ticks();
    if (!look_.paper) return;
    for (std::size_t curve = 0; curve < shown_.curves.size(); ++curve)
        fill(curve, rows);
}

/// A chart without curves stands back.
QColor strip_plot::muted(colour value) const {
    return shown_.curves.empty() ? QColor(quiet_print) : qt_colour(value);
}

void strip_plot::set_colours() {
    const QColor ground = look_.paper ? QColor(Qt::white) : qt_colour(shown_.BackGroundColor);
    plot_.setBackground(QBrush(ground));
    plot_.axisRect()->setBackground(QBrush(qt_colour(shown_.GridBackGroundColor)));
    // Its samples of the curves need the ground that the curves have.
    legend_.set_colours(look_.paper ? QBrush(qt_colour(shown_.GridBackGroundColor)) : QBrush(Qt::NoBrush),
                        qt_colour(shown_.LegendFontColor));

    const QColor grid = muted(shown_.AxisGridColor);
    for (QCPAxis* axis : plot_.axisRect()->axes()) {
        axis->setBasePen(look_.paper ? QPen(grid) : QPen(Qt::NoPen));
        axis->grid()->setPen(QPen(grid, 0, line_style(shown_.GridLineStyle)));
        axis->setTickPen(QPen(muted(shown_.XAxisTickMajorColor)));
        axis->setSubTickPen(QPen(muted(shown_.XAxisTickMinorColor)));
    }
    plot_.xAxis->setTickLabelColor(muted(shown_.XAxisLabelFontColor));
    plot_.yAxis->setTickLabelColor(muted(shown_.YAxisLabelFontColor));
}

/// Letters, and the room for them.
void strip_plot::set_fonts() {
    const int pixels = letters();
    const QFont font = label_font(plot_, pixels);
    const std::string widest = formatted(shown_.XAxisDateTimeFormatString, {2000, 10, 20, 20, 50, 50});
    label_ = QFontMetricsF(font).horizontalAdvance(qt_text(widest));
    if (pixels == set_pixels_) return;
    set_pixels_ = pixels;
    plot_.xAxis->setTickLabelFont(font);
    plot_.yAxis->setTickLabelFont(font);
    plot_.axisRect()->setMargins(
        {left_margin(), 2, right_margin, least_bottom_margin * pixels / least_pixels});
    legend_.set_letters(font, {16 * pixels / least_pixels, 8 * pixels / least_pixels},
                        {left_margin(), 0, right_margin, look_.paper ? legend_line() / 2 : 1});
}

void strip_plot::set_y_scale() {
    const bool valid = usable(shown_.YAxisMin, shown_.YAxisMax);
    const double low = valid ? shown_.YAxisMin : 0;
    const double high = valid ? shown_.YAxisMax : 100;
    plot_.yAxis->setRange(low, high);
    value_ticks_->clear();
    const int parts = std::clamp(shown_.YAxisTickMajorCount, 2, most_strip_ticks) - 1;
    for (int tick = 0; tick <= parts; ++tick) {
        const double value = low + (high - low) * tick / parts;
        value_ticks_->major.push_back(value);
        // A chart without curves needs no numbers.
        value_ticks_->labels.push_back(shown_.curves.empty() ? QString() : QString::number(value, 'g', 4));
    }
}

void strip_plot::set_curves() {
    while (plot_.graphCount() > static_cast<int>(shown_.curves.size()))
        plot_.removeGraph(plot_.graphCount() - 1);
    while (plot_.graphCount() < static_cast<int>(shown_.curves.size())) {
        plot_.addGraph()->setAdaptiveSampling(false); // the points are as few as they can be
    }
    for (std::size_t index = 0; index < shown_.curves.size(); ++index) {
        const chart_curve& curve = shown_.curves[index];
        QCPGraph* const graph = plot_.graph(static_cast<int>(index));
        QPen pen(qt_colour(curve.Color), look_.paper ? paper_curve_width : curve_width);
        pen.setCapStyle(Qt::FlatCap);
        graph->setPen(pen);
        graph->setName(qt_text(curve.Title).trimmed());
        graph->setVisible(curve.Visible);
    }
    // The first curve is the one to watch: it is drawn last, over the others.
    for (int index = plot_.graphCount() - 1; index >= 0; --index)
        plot_.graph(index)->setLayer("main");
    legend_.renew();
}

double strip_plot::span_of(const strip_window& rows) const {
    const double span = shown_.Frozen ? static_cast<double>(rows.span()) : shown_.XAxisSpan * ms_per_day;
    return std::isfinite(span) && span >= 1 && span <= 1000 * ms_per_day ? span
                                                                         : static_cast<double>(rows.span());
}

void strip_plot::fill(std::size_t curve, const strip_window& rows) {
    QCPGraph& graph = *plot_.graph(static_cast<int>(curve));
    if (curve >= strip_curves || !shown_.curves[curve].Visible) {
        graph.data()->clear();
        return;
    }
    rows.points(curve, columns(), points_);
    const auto newest = static_cast<double>(rows.newest());
    constexpr double farthest = 1000; // heights of the scale that a value is drawn away from it
    const double low = plot_.yAxis->range().lower;
    const double height = plot_.yAxis->range().size();
    const auto drawn = [&](float value) {
        return std::clamp(static_cast<double>(value), low - farthest * height, low + farthest * height);
    };
    QVector<QCPGraphData> data;
    data.reserve(static_cast<qsizetype>(points_.size()) + 2);
    const auto apart = [this](std::size_t index) {
        return index >= points_.size() || std::isnan(points_[index].value);
    };
    for (std::size_t index = 0; index < points_.size(); ++index) {
        const double time = points_[index].time - newest;
        const double value = drawn(points_[index].value);
        // A row that stands alone is a dot.
        const bool alone = apart(index - 1) && apart(index + 1) && !apart(index);
        if (alone) data.push_back({time - dot_pixels * span_ / graph_width(), value});
        data.push_back({time, value});
    }
    graph.data()->set(look_.cut ? cut_off(data) : data, true);
}

/// What of a line lies inside the axes.
QVector<QCPGraphData> strip_plot::cut_off(const QVector<QCPGraphData>& line) const {
    const auto axis = [](const QCPAxis& one) { return plot_axis{one.range().lower, one.range().size()}; };
    const plot_axis across = axis(*plot_.xAxis);
    const plot_axis up = axis(*plot_.yAxis);
    QVector<QCPGraphData> inside;
    std::optional<plot_point> end;
    for (qsizetype index = 1; index < line.size(); ++index) {
        const QCPGraphData& from = line[index - 1];
        const QCPGraphData& to = line[index];
        const auto part = visible_part({{from.key, from.value}, {to.key, to.value}}, across, up);
        if (!part) continue;
        if (part->from != end) {
            if (end) inside.push_back({part->from.x, std::numeric_limits<double>::quiet_NaN()});
            inside.push_back({part->from.x, part->from.y});
        }
        inside.push_back({part->to.x, part->to.y});
        end = part->to;
    }
    return inside;
}

} // namespace tyxo
