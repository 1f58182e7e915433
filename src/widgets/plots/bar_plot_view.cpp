#include "widgets/plots/bar_plot_view.h"

#include "widgets/paint_view.h"
#include "widgets/show.h"

#include <QEvent>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tyxo {

namespace {

const QColor axes_background(255, 255, 255);
const QColor grid_color(222, 222, 222);
constexpr double share_of_width = 0.76; // leaves a gap between the cylinders
constexpr double hair = 1e-6;           // of an axis
constexpr double most_bar_ticks = 60;
constexpr int outward_ticks = 4;
constexpr double mark_share = 0.025; // of the axis, from its end to a mark
constexpr double mark_pixels = 9;

/// The range of an axis; a range that cannot be drawn becomes 0 to 1.
QCPRange range_of(const bar_axis& axis) {
    const QCPRange range(axis.Min, axis.Min + axis.Span);
    const bool drawable = std::isfinite(axis.Min) && axis.Span > 0 && QCPRange::validRange(range);
    return drawable ? range : QCPRange(0, 1);
}

QSharedPointer<QCPAxisTicker> ticker_of(const bar_axis& axis) {
    const double ticks = range_of(axis).size() / axis.Increment;
    if (!(axis.Increment > 0) || !(ticks <= most_bar_ticks)) return QSharedPointer<QCPAxisTicker>::create();
    const auto fixed = QSharedPointer<QCPAxisTickerFixed>::create();
    fixed->setTickStep(axis.Increment);
    return fixed;
}

QFont text_font(const QFont& base, int pixels, bool bold = false) {
    QFont font = base;
    font.setPixelSize(pixels);
    font.setBold(bold);
    return font;
}

void colour_axis(QCPAxis& axis, const QColor& color) {
    axis.setBasePen(color);
    axis.setTickPen(color);
    axis.setSubTickPen(color);
    axis.setTickLabelColor(color);
    axis.setLabelColor(color);
}

} // namespace

bar_plot_view::bar_plot_view(QWidget* parent)
    : QCustomPlot(parent), title_(new QCPItemText(this)), zero_line_(new QCPItemLine(this)) {
    setBackground(palette().window());
    layer("overlay")->setMode(QCPLayer::lmLogical); // nothing is in it: no picture of its own
    axisRect()->setBackground(axes_background);
    axisRect()->setAutoMargins(QCP::msNone);
    axisRect()->setupFullAxesBox();
    for (QCPAxis* const axis : {xAxis, yAxis, yAxis2}) {
        axis->setTickLength(0, outward_ticks);
        axis->setSubTicks(false);
    }
    xAxis2->setTicks(false);
    xAxis2->setTickLabels(false);
    xAxis->setTickLabels(false); // the window has labels for the bars
    xAxis->grid()->setVisible(false);
    yAxis->grid()->setPen(grid_color);
    yAxis->grid()->setZeroLinePen(Qt::NoPen);
    yAxis2->setTickLabels(true);
    // The full box lets the second axis follow the first one; here it has a range of its own.
    disconnect(yAxis, nullptr, yAxis2, nullptr);

    title_->setClipToAxisRect(false);
    title_->setPositionAlignment(Qt::AlignHCenter | Qt::AlignBottom);
    title_->position->setType(QCPItemPosition::ptAbsolute);
    title_->setColor(palette().color(QPalette::WindowText));

    for (QCPItemPosition* const end : {zero_line_->start, zero_line_->end}) {
        end->setTypeX(QCPItemPosition::ptAxisRectRatio);
        end->setTypeY(QCPItemPosition::ptPlotCoords);
        end->setAxisRect(axisRect());
        end->setAxes(xAxis, yAxis2);
    }
    zero_line_->start->setCoords(0, 0);
    zero_line_->end->setCoords(1, 0);
    zero_line_->setLayer("axes"); // in front of the bars

    legend->setVisible(true);
    legend->setFillOrder(QCPLegend::foColumnsFirst);
    legend->setBorderPen(Qt::NoPen);
    legend->setBrush(Qt::NoBrush);
    legend->setTextColor(palette().color(QPalette::WindowText));
    axisRect()->insetLayout()->setMargins({});
    axisRect()->insetLayout()->setInsetPlacement(0, QCPLayoutInset::ipFree);
    describe();
}

void bar_plot_view::show_control(const iPlotX& control) {
    if (control == shown_) return;
    shown_ = control;
    shown_.YAxes.resize(2);
    show_axes();
    show_series();
    title_->setText(qt_text(shown_.Title));
    shown_ = control;
    place_heading();
    describe();
    draw_anew();
}

void bar_plot_view::set_places(const QRect& axes, int text_pixels) {
    text_pixels_ = text_pixels;
    axisRect()->setMargins({axes.left(), axes.top(), width() - axes.left() - axes.width(),
                            height() - axes.top() - axes.height()});
    for (QCPAxis* const axis : {yAxis, yAxis2}) {
        axis->setTickLabelFont(text_font(font(), text_pixels));
        axis->setLabelFont(text_font(font(), text_pixels));
        axis->setTickLabelPadding(text_pixels / 2);
        axis->setLabelPadding(3);
    }
    legend->setFont(text_font(font(), text_pixels));
    legend->setIconSize(text_pixels * 3 / 2, text_pixels * 3 / 4);
    title_->setFont(text_font(font(), text_pixels * 3 / 2, true));
    place_heading();
    draw_anew();
}

/// In a window that is closed or minimised only as soon as somebody sees it.
void bar_plot_view::draw_anew() {
    stale_ = !isVisible() || window()->isMinimized();
    if (!stale_) replot(rpQueuedReplot);
}

void bar_plot_view::paintEvent(QPaintEvent* event) {
    if (std::exchange(stale_, false)) replot(rpQueuedRefresh);
    if (!paint_as_lines()) QCustomPlot::paintEvent(event);
}

/// False on the screen, where the library has a picture of its own.
bool bar_plot_view::paint_as_lines() {
    QCPPainter painter(this);
    if (!paints_lines(painter)) return false;
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNoCaching);
    toPainter(&painter, width(), height());
    return true;
}

void bar_plot_view::show_axes() {
    xAxis->setRange(range_of(shown_.XAxis));
    xAxis->setTicker(ticker_of(shown_.XAxis));
    QCPAxis* const axes[] = {yAxis, yAxis2};
    for (std::size_t index = 0; index < 2; ++index) {
        const bar_axis& axis = shown_.YAxes[index];
        axes[index]->setRange(range_of(axis));
        axes[index]->setTicker(ticker_of(axis));
        axes[index]->setLabel(qt_text(axis.Title));
        colour_axis(*axes[index], qt_colour(axis.Color));
    }
    zero_line_->setPen(QPen(qt_colour(shown_.YAxes[1].Color), std::max(1, text_pixels_ / 12), Qt::DashLine));
    zero_line_->setVisible(range_of(shown_.YAxes[1]).contains(0));
}

void bar_plot_view::show_series() {
    while (bars_.size() > shown_.series.size()) {
        removePlottable(bars_.back());
        bars_.pop_back();
        for (int mark = 0; mark < 2; ++mark) {
            removePlottable(marks_.back());
            marks_.pop_back();
        }
    }
    const double count = static_cast<double>(shown_.series.size());
    for (std::size_t index = 0; index < shown_.series.size(); ++index) {
        const bar_series& series = shown_.series[index];
        const std::string& second = shown_.YAxes[1].Name;
        QCPAxis* const axis = !series.YAxisName.empty() && series.YAxisName == second ? yAxis2 : yAxis;
        if (index == bars_.size()) {
            bars_.push_back(new QCPBars(xAxis, axis));
            for (int mark = 0; mark < 2; ++mark) {
                marks_.push_back(new QCPGraph(xAxis, axis));
                marks_.back()->removeFromLegend();
            }
        }
        QCPBars& bars = *bars_[index];
        bars.setValueAxis(axis);
        bars.setName(qt_text(series.Title));
        bars.setBrush(qt_colour(series.Color));
        bars.setPen(Qt::NoPen);
        bars.setAntialiased(false);
        // A hair outside the axis is outside: the library stays within the painter's numbers, and a bar
        // within its axes also where nothing is clipped.
        const QCPRange range = axis->range();
        const double least = range.lower - hair * range.size();
        const double greatest = range.upper + hair * range.size();
        const double width = series.points.empty() ? 1 : series.points.front().width * share_of_width;
        const double aside = (static_cast<double>(index) - (count - 1) / 2) * width;
        QVector<double> keys;
        QVector<double> values;
        for (const bar_point& point : series.points) {
            if (!std::isfinite(point.x) || std::isnan(point.y)) continue;
            keys.push_back(point.x + aside);
            values.push_back(std::clamp(point.y, least, greatest));
        }
        bars.setWidth(width);
        bars.setData(keys, values);
        show_marks(index, keys, values);
    }
}

/// An arrow at the end of the axis on each bar that goes on beyond it.
void bar_plot_view::show_marks(std::size_t series, const QVector<double>& keys,
                               const QVector<double>& values) {
    const QCPRange range = bars_[series]->valueAxis()->range();
    const double inward = mark_share * range.size();
    for (const bool up : {true, false}) {
        QCPGraph& mark = *marks_[2 * series + (up ? 0 : 1)];
        QVector<double> places;
        for (qsizetype bar = 0; bar < keys.size(); ++bar)
            if (up ? values[bar] > range.upper : values[bar] < range.lower) places.push_back(keys[bar]);
        mark.setValueAxis(bars_[series]->valueAxis());
        mark.setLineStyle(QCPGraph::lsNone);
        mark.setScatterStyle({up ? QCPScatterStyle::ssTriangle : QCPScatterStyle::ssTriangleInverted,
                              QPen(Qt::black), QBrush(Qt::white), mark_pixels});
        mark.setData(places,
                     QVector<double>(places.size(), up ? range.upper - inward : range.lower + inward));
    }
}

void bar_plot_view::place_heading() {
    const QMargins margins = axisRect()->margins();
    const double across = std::max(1, width() - margins.left() - margins.right());
    const double down = std::max(1, height() - margins.top() - margins.bottom());
    const QSize entries = legend->minimumOuterSizeHint() + QSize(4, 4); // the inset's places are rounded down
    axisRect()->insetLayout()->setInsetRect(0, {(1 - entries.width() / across) / 2,
                                                -(entries.height() + 2) / down, entries.width() / across,
                                                entries.height() / down});
    title_->position->setCoords(margins.left() + across / 2, margins.top() - entries.height() - 2);
}

void bar_plot_view::describe() {
    const QString title = qt_text(shown_.Title);
    show_name(*this, title.isEmpty() ? tr("Bars") : title);
    setProperty("PlotTitle", title);
    setProperty("XAxisSpan", shown_.XAxis.Span);
    const auto tell = [this](const char* array, std::size_t index, const QVariant& value) {
        setProperty(element(array, static_cast<int>(index)).toLatin1().constData(), value);
    };
    for (std::size_t index = 0; index < shown_.YAxes.size(); ++index) {
        const bar_axis& axis = shown_.YAxes[index];
        tell("YAxisMin", index, axis.Min);
        tell("YAxisSpan", index, axis.Span);
        tell("YAxisTitle", index, qt_text(axis.Title));
    }
    for (std::size_t index = 0; index < shown_.series.size(); ++index) {
        const bar_series& series = shown_.series[index];
        QVariantList points;
        for (const bar_point& point : series.points)
            points.push_back(QPointF(point.x, point.y));
        tell("SeriesTitle", index, qt_text(series.Title));
        tell("SeriesColor", index, series.Color);
        tell("SeriesPoints", index, points);
    }
}

QString bar_plot_view::spoken_text() const {
    QStringList spoken;
    for (const bar_series& series : shown_.series) {
        QStringList numbers;
        for (const bar_point& point : series.points)
            numbers.push_back(QString::number(point.y, 'g', 6));
        spoken.push_back(qt_text(series.Title) + ": " +
                         (numbers.isEmpty() ? tr("no values yet") : numbers.join(", ")));
    }
    return spoken.join("; ");
}

} // namespace tyxo

#include "moc_bar_plot_view.cpp"
