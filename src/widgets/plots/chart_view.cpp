#include "widgets/plots/chart_view.h"

#include "widgets/paint_view.h"
#include "widgets/show.h"

#include <QLabel>

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

constexpr int title_pixels = 13;
constexpr int badge_gap = 10;
constexpr QRgb quiet_title = 0xFF707070; // of a chart that has no curves

} // namespace

chart_view::chart_view(QWidget* parent)
    : clickable(parent), plot_(*this, {.title_line = title_line_}), badge_(new QLabel(tr("FROZEN"), this)) {
    setInteractions({});
    setFocusPolicy(Qt::TabFocus);
    badge_->setObjectName("frozen_badge");
    badge_->setAttribute(Qt::WA_TransparentForMouseEvents);
    badge_->setStyleSheet("background: #ffc800; color: black; border: 1px solid #404040; border-radius: 3px;"
                          "font-weight: bold; font-size: 11px; padding: 0px 5px");
    badge_->hide();
}

void chart_view::show_control(const iStripChartX& control, const strip_window& rows) {
    const rows_mark mark{rows.rows(), rows.newest(), rows.span(), plot_.columns()};
    iStripChartX next = control;
    const std::size_t kept =
        shown_.Frozen && next.Frozen ? std::min(next.curves.size(), shown_.curves.size()) : 0;
    for (std::size_t curve = 0; curve < kept; ++curve)
        next.curves[curve].Title = shown_.curves[curve].Title;
    const bool same = next == shown_;
    if (same && mark == shown_rows_) return;

    shown_ = std::move(next);
    shown_rows_ = mark;
    plot_.show(shown_, rows);
    if (!same) {
        laid_out_ = {};
        describe();
    }
    renew();
}

void chart_view::describe() {
    show_name(*this, tr("Chart %1").arg(title()));
    const QString hint =
        tr("The chart stands still and goes on by itself after a while. Click to let it go on now.");
    setToolTip(shown_.Frozen ? hint : QString()); // is heard as a description
    for (std::size_t index = 0; index < shown_.curves.size(); ++index) {
        const chart_curve& curve = shown_.curves[index];
        const auto set = [this, index](const char* name, const QVariant& value) {
            setProperty(element(name, static_cast<int>(index)).toLatin1().constData(), value);
        };
        set("CurveTitle", qt_text(curve.Title));
        set("CurveColor", curve.Color);
        set("CurveVisible", curve.Visible);
    }
    place_badge();
    if (isHidden() == shown_.Visible) setVisible(shown_.Visible);
}

void chart_view::set_title_room(int line, int left_end, int right_end) {
    if (line == title_line_ && left_end == left_end_ && right_end == right_end_) return;
    title_line_ = line;
    left_end_ = left_end;
    right_end_ = right_end;
    plot_.set_title_line(line);
    laid_out_ = {};
    place_badge();
    renew();
}

QString chart_view::title() const {
    return qt_text(shown_.Title);
}

QString chart_view::spoken_text() const {
    constexpr int minutes_a_day = 24 * 60;
    const int minutes = qRound(shown_.XAxisSpan * minutes_a_day);
    QStringList words{shown_.Frozen ? tr("frozen") : tr("running"),
                      minutes < 60 ? tr("the last %1 min").arg(minutes)
                                   : tr("the last %1 h").arg(minutes / 60)};
    for (int curve = 0; curve < graphCount(); ++curve) {
        const QCPGraphDataContainer& points = *graph(curve)->data();
        const auto measured = [](const QCPGraphData& point) { return std::isfinite(point.value); };
        const auto newest = std::find_if(std::reverse_iterator(points.constEnd()),
                                         std::reverse_iterator(points.constBegin()), measured);
        if (!graph(curve)->visible() || newest.base() == points.constBegin()) continue;
        words.push_back(graph(curve)->name() + ": " + QString::number(newest->value, 'f', 1));
    }
    if (words.size() == 2) words.push_back(tr("nothing measured yet"));
    return words.join(", ");
}

QFont chart_view::title_font() const {
    QFont font = this->font();
    font.setPixelSize(title_pixels);
    font.setBold(true);
    return font;
}

QRect chart_view::title_place() const {
    const QRect line(0, 0, width(), title_line_);
    const int badge = shown_.Frozen ? badge_->sizeHint().width() + badge_gap : 0;
    const int even = std::max(left_end_, right_end_) + badge;
    const QRect middle = line.adjusted(even, 0, -even, 0);
    if (QFontMetrics(title_font()).horizontalAdvance(title()) <= middle.width()) return middle;
    return line.adjusted(left_end_, 0, -right_end_ - badge, 0);
}

void chart_view::place_badge() {
    badge_->setVisible(shown_.Frozen);
    if (!shown_.Frozen) return;
    const QRect place = title_place();
    const int text =
        std::min(QFontMetrics(title_font()).horizontalAdvance(title()), std::max(place.width(), 0));
    const QSize size = badge_->sizeHint();
    badge_->setGeometry(
        QRect(QPoint(place.center().x() + (text + 1) / 2 + badge_gap, (title_line_ - size.height()) / 2 + 1),
              size));
}

void chart_view::renew() {
    picture_ = {};
    update();
}

/// Rows move nothing but the ticks.
void chart_view::updateLayout() {
    if (laid_out_ == viewport()) {
        axisRect()->update(QCPLayoutElement::upPreparation);
    } else {
        QCustomPlot::updateLayout();
    }
    laid_out_ = viewport();
}

void chart_view::draw(QCPPainter* painter) {
    QCustomPlot::draw(painter);
    const QRect place = title_place();
    painter->setFont(title_font());
    painter->setPen(shown_.curves.empty() ? QColor(quiet_title) : qt_colour(shown_.TitleFontColor));
    const QString text =
        QFontMetrics(painter->font()).elidedText(title(), Qt::ElideRight, std::max(place.width(), 0));
    painter->drawText(place, Qt::AlignCenter | Qt::TextDontClip, text);
    painter->setPen(qt_colour(shown_.AxisGridColor));
    painter->setBrush(Qt::NoBrush);
    painter->drawRect(rect().adjusted(0, 0, -1, -1));
}

// The library would draw into buffers of its own at once; here a picture is drawn when it is to be seen.
void chart_view::paintEvent(QPaintEvent* /*event*/) {
    const double ratio = devicePixelRatioF();
    if (picture_.isNull() || picture_.devicePixelRatio() != ratio) {
        setBufferDevicePixelRatio(ratio);
        picture_ = QImage(static_cast<int>(std::ceil(width() * ratio)),
                          static_cast<int>(std::ceil(height() * ratio)), QImage::Format_RGB32);
        picture_.setDevicePixelRatio(ratio);
        picture_.fill(qt_colour(shown_.BackGroundColor));
        QCPPainter painter(&picture_);
        draw(&painter);
    }
    QPainter painter(this);
    painter.drawImage(0, 0, picture_);
    if (hasFocus()) paint_focus_rim(painter, rect());
}

void chart_view::resizeEvent(QResizeEvent* /*event*/) {
    setViewport(rect());
    plot_.arrange();
    laid_out_ = {};
    place_badge();
    renew();
}

void chart_view::focusInEvent(QFocusEvent* event) {
    renew_description(*this);
    QCustomPlot::focusInEvent(event);
}

void chart_view::changeEvent(QEvent* event) {
    laid_out_ = {};
    renew();
    QCustomPlot::changeEvent(event);
}

void chart_view::mouseMoveEvent(QMouseEvent* /*event*/) {}

void chart_view::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace tyxo

#include "moc_chart_view.cpp"
