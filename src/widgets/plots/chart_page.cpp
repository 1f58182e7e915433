#include "widgets/plots/chart_page.h"

#include "platform/desktop/text.h"
#include "widgets/plots/strip_plot.h"

#include <qcustomplot.h>

#include <QPrinter>

#include <algorithm>
#include <cmath>

namespace tyxo {

namespace {

// A chart is laid out as on a screen of this many pixels an inch, and then enlarged to those of the printer.
constexpr double layout_pixels = 96;
constexpr double least_side = 2; // inches that the margins leave at least

/// The printable part, in pixels of the printer: the chart's margins are in centimetres. Margins that leave
/// nothing of a small sheet are made less.
QRectF area_of(const QPrinter& printer, const iStripChartX& chart) {
    const QRectF sheet = printer.pageLayout().fullRectPixels(printer.resolution());
    const auto margins = [&printer](double first, double second, double length) {
        const double inch = printer.resolution();
        const double centimetre = inch / 2.54;
        const double wanted = std::max(first, 0.0) + std::max(second, 0.0);
        const double share =
            wanted > 0 ? std::clamp((length - least_side * inch) / (wanted * centimetre), 0.0, 1.0) : 0.0;
        return std::pair(std::max(first, 0.0) * share * centimetre,
                         std::max(second, 0.0) * share * centimetre);
    };
    const auto [left, right] = margins(chart.PrinterMarginLeft, chart.PrinterMarginRight, sheet.width());
    const auto [top, bottom] = margins(chart.PrinterMarginTop, chart.PrinterMarginBottom, sheet.height());
    return sheet.adjusted(left, top, -right, -bottom);
}

QFont title_font(const iStripChartX& chart) {
    QFont font(qt_text(chart.PrintFontName));
    font.setStyleHint(QFont::SansSerif);
    font.setPointSize(std::clamp(chart.PrintFontSize, 1, 200));
    font.setBold(chart.PrintFontBold);
    return font;
}

/// Returns what is left of the area.
QRectF paint_titles(QPainter& painter, const iStripChartX& chart, QRectF area) {
    painter.setFont(title_font(chart));
    painter.setPen(Qt::black);
    const QFontMetricsF metrics(painter.font(), painter.device());
    for (const std::string& line : chart.PrintTitle) {
        const QString text = metrics.elidedText(qt_text(line), Qt::ElideRight, area.width());
        painter.drawText(QRectF(area.topLeft(), QSizeF(area.width(), metrics.lineSpacing())),
                         Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine, text);
        area.setTop(area.top() + metrics.lineSpacing());
    }
    if (!chart.PrintTitle.empty()) area.setTop(area.top() + metrics.lineSpacing() / 2);
    return area;
}

} // namespace

void paint_chart(QCPPainter& painter, const iStripChartX& chart, const strip_window& rows, const QRectF& area,
                 double enlarged, bool cut) {
    const QSize size(static_cast<int>(area.width() / enlarged), static_cast<int>(area.height() / enlarged));
    QCustomPlot plot;
    plot.resize(size);
    strip_plot look(plot, {.paper = true, .title_line = 0, .cut = cut});
    // In pixels, of a scale that is no whole number, equal lines would come out unequal.
    if (painter.paintEngine()->type() == QPaintEngine::Raster) {
        plot.setNotAntialiasedElements(QCP::aeNone);
        plot.setAntialiasedElements(QCP::aePlottables | QCP::aeLegendItems);
    }
    look.show(chart, rows);
    painter.save();
    painter.translate(area.topLeft());
    painter.scale(enlarged, enlarged);
    painter.setMode(QCPPainter::pmVectorized);
    painter.setMode(QCPPainter::pmNoCaching);
    painter.setMode(QCPPainter::pmNonCosmetic);
    plot.toPainter(&painter, size.width(), size.height());
    painter.restore();
}

bool paint_chart_page(QPrinter& printer, const iStripChartX& chart, const strip_window& rows) {
    printer.setPageOrientation(chart.PrintMode == 1 ? QPageLayout::Landscape : QPageLayout::Portrait);
    printer.setFullPage(true); // the margins are those of the sheet
    QCPPainter painter;
    if (!painter.begin(&printer)) return false;
    const QRectF area = paint_titles(painter, chart, area_of(printer, chart));
    const double enlarged = printer.logicalDpiX() / layout_pixels;
    if (area.height() > printer.resolution() / 2.0) paint_chart(painter, chart, rows, area, enlarged);
    const bool ended = painter.end();
    return ended && printer.printerState() != QPrinter::Error;
}

} // namespace tyxo
