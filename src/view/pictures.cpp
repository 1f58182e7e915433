#include "view/pictures.h"

#include "basics/failure.h"
#include "platform/desktop/text.h"
#include "widgets/plots/chart_page.h"
#include "xlg/files.h"

#include <qcustomplot.h>

#include <QBuffer>
#include <QImage>
#include <QPdfWriter>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace tyxo::view {

namespace {

constexpr QSize paper_across(1123, 794); // A4
constexpr double picture_margin = 8;     // pixels of the layout, like all that follows
constexpr double title_height = 26;
constexpr double title_letters = 15;
constexpr double name_height = 20;
constexpr double name_letters = 12;

// A wide picture is one that is seen from further away, or made smaller: its letters grow with it.
constexpr double usual_width = 1000;
constexpr double usual_chart_height = 300;
constexpr double greatest_pixel = 12;

QFont letters_of(double pixels, bool bold) {
    QFont font = QGuiApplication::font();
    font.setPixelSize(std::max(static_cast<int>(std::lround(pixels)), 1));
    font.setBold(bold);
    return font;
}

/// A line of text at the upper edge of an area, which it is taken from. What stands at its right end has the
/// room that is left.
void paint_line(QPainter& painter, QRectF& area, double height, const QFont& font, const QString& left,
                const QString& right = {}) {
    QRectF line(area.topLeft(), QSizeF(area.width(), height));
    area.setTop(area.top() + height);
    const QFontMetricsF metrics(font);
    const QString begin = metrics.elidedText(left, Qt::ElideRight, line.width());
    painter.setFont(font);
    painter.setPen(Qt::black);
    painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, begin);
    line.setLeft(line.left() + metrics.horizontalAdvance(begin) + height);
    if (right.isEmpty() || line.width() < height) return;
    painter.drawText(line, Qt::AlignRight | Qt::AlignVCenter | Qt::TextSingleLine,
                     metrics.elidedText(right, Qt::ElideRight, line.width()));
}

/// The place in larger pixels, as far as a layout of this size has room for its letters.
picture_place enlarged(const picture_place& place, double width, double height) {
    picture_place larger = place;
    larger.pixel *= std::clamp(
        std::min(place.area.width() / place.pixel / width, place.area.height() / place.pixel / height), 1.0,
        greatest_pixel);
    return larger;
}

/// Letters in which a title has room, or the least ones.
QFont title_font(const QString& title, double pixel, double room) {
    double letters = title_letters;
    const auto wide = [&] {
        return QFontMetricsF(letters_of(letters * pixel, true)).horizontalAdvance(title);
    };
    while (letters > name_letters && wide() > room)
        --letters;
    return letters_of(letters * pixel, true);
}

QRectF under_title(QPainter& painter, const picture_place& place, const QString& title,
                   const QString& beside = {}) {
    const double margin = picture_margin * place.pixel;
    QRectF area = place.area.adjusted(margin, margin, -margin, -margin);
    const QFont font = title_font(title, place.pixel, area.width());
    paint_line(painter, area, title_height * place.pixel, font, title, beside);
    return area;
}

void need(bool done, const char* what) {
    if (!done) throw failure(std::string("the picture cannot be ") + what);
}

QByteArray png_of(const QSize& size, const QString& title, const picture_painter& paint) {
    QImage image(size, QImage::Format_RGB32);
    need(!image.isNull(), "made: there is no memory for it");
    constexpr double inches_a_metre = 1 / 0.0254;
    image.setDotsPerMeterX(static_cast<int>(pixels_an_inch * inches_a_metre));
    image.setDotsPerMeterY(image.dotsPerMeterX());
    image.setText("Title", title);
    image.fill(Qt::white);
    QCPPainter painter;
    need(painter.begin(&image), "painted");
    paint(painter, {QRectF(QPointF(), size), 1, true});
    painter.end();
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    need(image.save(&buffer, "PNG"), "written as PNG");
    return bytes;
}

QByteArray svg_of(const QSize& size, const QString& title, const picture_painter& paint) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QSvgGenerator generator;
    generator.setOutputDevice(&buffer);
    generator.setResolution(pixels_an_inch);
    generator.setSize(size);
    generator.setViewBox(QRect(QPoint(), size));
    generator.setTitle(title);
    QCPPainter painter;
    need(painter.begin(&generator), "painted");
    painter.fillRect(QRect(QPoint(), size), Qt::white);
    paint(painter, {QRectF(QPointF(), size), 1, false});
    painter.end();
    return bytes;
}

QByteArray pdf_of(const QSize& size, const QString& title, const picture_painter& paint) {
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    QPdfWriter writer(&buffer);
    constexpr double points_an_inch = 72;
    const QSizeF points = QSizeF(size) * points_an_inch / pixels_an_inch;
    writer.setResolution(pixels_an_inch);
    writer.setPageSize(QPageSize(points, QPageSize::Point, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF());
    writer.setTitle(title);
    QCPPainter painter;
    need(painter.begin(&writer), "painted");
    paint(painter, {QRectF(QPointF(), size), 1, true});
    painter.end();
    return bytes;
}

} // namespace

int least_picture_height(std::size_t charts) {
    constexpr int least_chart_height = 100; // with its name
    return static_cast<int>(2 * picture_margin + title_height) +
           least_chart_height * static_cast<int>(charts);
}

void paint_charts(QCPPainter& painter, const picture_place& place, const QString& title,
                  std::span<const chart_of_picture> charts) {
    const double count = static_cast<double>(std::max<std::size_t>(charts.size(), 1));
    const picture_place own = enlarged(place, usual_width, count * usual_chart_height);
    const bool single = charts.size() == 1;
    const QRectF all = under_title(painter, own, title, single ? charts.front().engine : QString());
    const double height = all.height() / count;
    for (std::size_t index = 0; index < charts.size(); ++index) {
        const chart_of_picture& one = charts[index];
        QRectF area(all.left(), all.top() + static_cast<double>(index) * height, all.width(), height);
        if (!single)
            paint_line(painter, area, name_height * own.pixel, letters_of(name_letters * own.pixel, true),
                       qt_text(one.chart.Title), one.engine);
        paint_chart(painter, one.chart, one.rows, area, own.pixel, !place.clips);
    }
}

void paint_widget(QCPPainter& painter, const picture_place& place, const QString& title, QWidget& widget,
                  const std::function<void()>& renew) {
    const QRectF area = under_title(painter, enlarged(place, usual_width, usual_width / 2), title);
    const QSizeF room = area.size() / place.pixel;
    // Where it has less than it needs it is made smaller as a whole.
    const QSize least = widget.minimumSize();
    const double shrunk = std::max({1.0, least.width() / room.width(), least.height() / room.height()});
    widget.setFixedSize((room * shrunk).toSize().expandedTo(QSize(1, 1)));
    QCoreApplication::processEvents(); // what it contains gets its place
    renew();
    QCoreApplication::processEvents();
    painter.save();
    painter.translate(area.topLeft().toPoint()); // between two pixels there would be seams
    painter.scale(place.pixel / shrunk, place.pixel / shrunk);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    widget.render(&painter);
    painter.restore();
}

QSize usual_picture_size(const std::string& file, const QSize& pixels) {
    return xlg::format_told(file) == xlg::picture_format::pdf ? paper_across : pixels;
}

void write_picture(const std::string& file, bool force, const QSize& size, const QString& title,
                   const picture_painter& paint) {
    const xlg::picture_format format = xlg::format_told(file);
    xlg::write_whole_file(file, force, [&](const xlg::text_sink& sink) {
        const auto make = format == xlg::picture_format::png   ? png_of
                          : format == xlg::picture_format::svg ? svg_of
                                                               : pdf_of;
        const QByteArray bytes = make(size, title, paint);
        sink({bytes.constData(), static_cast<std::size_t>(bytes.size())});
    });
}

} // namespace tyxo::view
