#include "widgets/plots/chart_view.h"

#include "widgets/paint_view.h"
#include "widgets/show.h"

#include <QLabel>

#include <algorithm>
#include <cmath>
#include <utility>

namespace tyxo {

namespace {

constexpr int title_pixels = 13;
constexpr int badge_gap = 10;
constexpr QRgb quiet_title = 0xFF707070; // of a chart that has no curves

} // namespace

chart_view::chart_view(shown_rows rows, QWidget* parent)
    : clickable(parent), rows_(std::move(rows)), plot_(*this, {.title_line = title_line_}),
      badge_(new QLabel(tr("FROZEN"), this)) {
    mReplotting = true; // the library would draw into buffers of its own at once
    setInteractions({});
    setFocusPolicy(Qt::TabFocus);
    badge_->setObjectName("frozen_badge");
    badge_->setAttribute(Qt::WA_TransparentForMouseEvents);
    badge_->setStyleSheet("background: #ffc800; color: black; border: 1px solid #404040; border-radius: 3px;"
                          "font-weight: bold; font-size: 11px; padding: 0px 5px");
    badge_->hide();
}

chart_view::rows_mark chart_view::mark_of(const strip_window& rows) {
    return {rows.rows(), rows.begun(), rows.newest(), rows.span()};
}

void chart_view::show_control(const iStripChartX& control) {
    const rows_mark mark = mark_of(rows_());
    if (control == asked_) {
        if (mark != shown_rows_) follow_rows();
        return;
    }
    asked_ = control;
    iStripChartX next = control;
    const std::size_t kept =
        shown_.Frozen && next.Frozen ? std::min(next.curves.size(), shown_.curves.size()) : 0;
    for (std::size_t curve = 0; curve < kept; ++curve)
        next.curves[curve].Title = shown_.curves[curve].Title;
    if (next == shown_ && mark == shown_rows_) return;
    shown_ = std::move(next);
    shown_rows_ = mark;
    describe();
    renew();
}

/// Moves the picture on. Where no pixel differs nothing is painted.
void chart_view::follow_rows() {
    const strip_window& rows = rows_();
    const rows_mark before = std::exchange(shown_rows_, mark_of(rows));
    if (still_.empty()) return;
    const bool same_history = rows.span() == before.span && rows.begun() == before.begun;
    if (!same_history || before.rows == 0 || rows.rows() < before.rows) return renew();
    const bool new_ticks = plot_.follow(rows);
    renew_part(field_.follow(rows, plot_.ticks().major));
    if (!new_ticks) return;
    paint_times();
    renew_part(times_place());
}

/// Of the picture, whose pixels are those of the device.
void chart_view::renew_part(const QRect& part) {
    const double ratio = devicePixelRatioF();
    if (!part.isEmpty())
        update(QRectF(QPointF(part.topLeft()) / ratio, QSizeF(part.size()) / ratio).toAlignedRect());
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
    for (std::size_t curve = 0; curve < std::min(strip_curves, shown_.curves.size()); ++curve) {
        const float newest = rows_().newest_value(curve);
        if (!shown_.curves[curve].Visible || !std::isfinite(newest)) continue;
        words.push_back(qt_text(shown_.curves[curve].Title).trimmed() + ": " +
                        QString::number(static_cast<double>(newest), 'f', 1));
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
    still_.clear();
    update();
}

void chart_view::paint_title(QPainter& painter) const {
    const QRect place = title_place();
    painter.setFont(title_font());
    painter.setPen(shown_.curves.empty() ? QColor(quiet_title) : qt_colour(shown_.TitleFontColor));
    const QString text =
        QFontMetrics(painter.font()).elidedText(title(), Qt::ElideRight, std::max(place.width(), 0));
    painter.drawText(place, Qt::AlignCenter | Qt::TextDontClip, text);
}

/// What stands still: all but field and clock. From here on the picture's pixels are those of the device.
QImage chart_view::still_picture(double ratio) {
    QImage picture(static_cast<int>(std::ceil(viewport().width() * ratio)),
                   static_cast<int>(std::ceil(viewport().height() * ratio)), QImage::Format_RGB32);
    picture.setDevicePixelRatio(ratio);
    picture.fill(qt_colour(shown_.BackGroundColor));
    {
        QCPPainter painter(&picture);
        QCustomPlot::draw(&painter);
        paint_title(painter);
        painter.setPen(qt_colour(shown_.AxisGridColor));
        painter.setBrush(Qt::NoBrush);
        painter.drawRect(viewport().adjusted(0, 0, -1, -1));
    }
    picture.setDevicePixelRatio(1);
    return picture;
}

/// Drawn anew at the viewport's size.
void chart_view::draw_picture(double ratio) {
    plot_.set_size(viewport().size(), ratio);
    plot_.show(shown_, rows_());
    setBufferDevicePixelRatio(ratio);
    QImage picture = still_picture(ratio);
    picture_ = picture.rect();

    const auto pixel = [ratio](int logical) { return static_cast<int>(std::lround(logical * ratio)); };
    const QRect axes = axisRect()->rect();
    const int top = pixel(axes.top());
    field_look field = plot_.field(top, pixel(axes.bottom() + 1) - 1 - top);
    field.place &= picture_;
    field_place_ = field.place;
    QPainter(&picture).fillRect(field.place.adjusted(-1, -1, 1, 1), QColor(field.grid));
    field_.draw(field, rows_(), plot_.ticks().major);
    keep_still_parts(picture);
    times_.set_look(plot_.times());
    paint_times();
}

void chart_view::keep_still_parts(const QImage& picture) {
    const int right = field_place_.right() + 1;
    const int below = field_place_.bottom() + 1;
    still_.clear();
    for (const QRect& place :
         {QRect(0, 0, picture_.width(), field_place_.top()),
          QRect(0, field_place_.top(), field_place_.left(), field_place_.height()),
          QRect(right, field_place_.top(), picture_.width() - right, field_place_.height()),
          QRect(0, below, picture_.width(), picture_.height() - below)})
        still_.push_back({place, picture.copy(place)});
    below_field_ = times_place().isEmpty() ? QImage() : picture.copy(times_place());
}

/// The part of the picture below the field and its frame, within the rim; none of a very small chart.
QRect chart_view::times_place() const {
    const int top = field_place_.bottom() + 2;
    return QRect(0, top, picture_.width(), picture_.height() - 1 - top) & picture_;
}

void chart_view::paint_times() {
    if (below_field_.isNull()) return;
    QImage& part = still_.back().picture;
    QImage place(part.scanLine(times_place().top() - still_.back().place.top()), below_field_.width(),
                 below_field_.height(), part.bytesPerLine(), part.format());
    std::copy_n(below_field_.constBits(), below_field_.sizeInBytes(), place.bits());
    times_.paint(place, plot_.ticks(), field_place_.left(), plot_.first_column());
}

/// At the painter's pixels.
void chart_view::paint_picture(QPainter& painter) const {
    for (const still_part& part : still_)
        painter.drawImage(part.place.topLeft(), part.picture);
    painter.drawImage(field_place_.topLeft(), field_.picture(), field_.shown());
}

void chart_view::draw(QCPPainter* painter) {
    draw_picture(1);
    painter->save();
    painter->translate(viewport().topLeft());
    paint_picture(*painter);
    painter->restore();
    still_.clear(); // those of the widget may have another size
}

void chart_view::paintEvent(QPaintEvent* event) {
    const double ratio = devicePixelRatioF();
    if (viewport() != rect()) setViewport(rect());
    if (still_.empty() || ratio != plot_.ratio()) draw_picture(ratio);
    QPainter painter(this);
    paint_parts(painter, *event, [&](const QRect&) {
        painter.scale(1 / ratio, 1 / ratio);
        paint_picture(painter);
        painter.resetTransform();
    });
    painter.setClipping(false);
    if (hasFocus()) paint_focus_rim(painter, rect());
}

void chart_view::resizeEvent(QResizeEvent* /*event*/) {
    setViewport(rect());
    place_badge();
    renew();
}

void chart_view::focusInEvent(QFocusEvent* event) {
    renew_description(*this);
    QCustomPlot::focusInEvent(event);
}

void chart_view::changeEvent(QEvent* event) {
    renew();
    QCustomPlot::changeEvent(event);
}

void chart_view::mouseMoveEvent(QMouseEvent* /*event*/) {}

void chart_view::wheelEvent(QWheelEvent* event) {
    event->ignore();
}

} // namespace tyxo

#include "moc_chart_view.cpp"
