#include "widgets/plots/canvas_view.h"

#include "widgets/paint_view.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPaintEvent>
#include <QPainter>

#include <algorithm>

namespace tyxo {

namespace {

constexpr double text_height = 3.4; // units; legends stand 4 units apart
constexpr int legible_pixels = 9;   // smaller letters are rather made narrower
constexpr int narrowest = 75;       // % of their width

} // namespace

canvas_view::canvas_view(const canvas& surface, const design& size, QWidget* parent)
    : QWidget(parent), surface_(surface), design_(size) {
    setAttribute(Qt::WA_OpaquePaintEvent); // the picture has its own ground
}

void canvas_view::set_widest_text(const QString& text, double room) {
    widest_text_ = text;
    widest_text_room_ = room;
    text_font_ = fitting_font();
}

void canvas_view::show_state() {
    if (isVisible() && !window()->isMinimized() && !picture_.shows(surface_, look())) renew_picture({});
}

double canvas_view::unit() const {
    return std::min(width() / (design_.room_left + design_.width + design_.room_right),
                    height() / design_.height);
}

QPointF canvas_view::place(double x, double y) const {
    const double scale = unit();
    const double wide = (design_.room_left + design_.width + design_.room_right) * scale;
    return {(width() - wide) / 2 + (design_.room_left + x) * scale,
            (height() - design_.height * scale) / 2 + y * scale};
}

QFont canvas_view::fitting_font() const {
    const auto fits = [this](const QFont& font) {
        return QFontMetricsF(font).horizontalAdvance(widest_text_) <= widest_text_room_ * unit();
    };
    QFont font = print_font(*this, text_height * unit());
    while (font.pixelSize() > legible_pixels && !fits(font))
        font.setPixelSize(font.pixelSize() - 1);
    for (int stretch = font.stretch(); stretch > narrowest && !fits(font); stretch -= 5)
        font.setStretch(stretch);
    while (font.pixelSize() > 1 && !fits(font))
        font.setPixelSize(font.pixelSize() - 1);
    return font;
}

canvas_look canvas_view::look() const {
    return {size(), devicePixelRatioF(), place(0, 0), unit(), palette().color(QPalette::Window), text_font_};
}

/// What differs comes onto the screen, but for what is `painted` there anyway.
void canvas_view::renew_picture(const QRegion& painted) {
    update(picture_.renew(surface_, look()) - painted);
}

QString canvas_view::spoken_text() const {
    QStringList texts;
    for (const canvas_text& text : surface_.texts)
        texts.push_back(qt_text(text.text).trimmed());
    texts.removeAll(QString());
    return texts.join("; ");
}

void canvas_view::paintEvent(QPaintEvent* event) {
    QPainter painter(this);
    if (paints_lines(painter)) {
        canvas_picture::paint(painter, surface_, look());
        return;
    }
    if (!picture_.shows(surface_, look())) renew_picture(event->region());
    paint_parts(painter, *event, [&](const QRect& /*part*/) { painter.drawImage(0, 0, picture_.image()); });
}

void canvas_view::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    text_font_ = fitting_font();
    emit resized();
}

void canvas_view::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange) text_font_ = fitting_font();
}

void canvas_view::hideEvent(QHideEvent* event) {
    QWidget::hideEvent(event);
    picture_ = {}; // some megabytes
}

} // namespace tyxo

#include "moc_canvas_view.cpp"
