#pragma once
// A strip chart on a page of paper.

#include "controls/strip_chart.h"
#include "controls/strip_history.h"

class QCPPainter;
class QPrinter;
class QRectF;

namespace tyxo {

/// Sets the paper as the chart's print settings say and prints one page: the title lines, and below them the
/// chart over the rest of the page inside the margins. False when the printer or its file cannot be written.
[[nodiscard]] bool paint_chart_page(QPrinter& printer, const iStripChartX& chart, const strip_window& rows);

/// Paints the chart as on paper over an area of whatever the painter paints on, laid out as if a pixel were
/// so many of the painter's units. What knows no clipping, as SVG, needs the curves to be cut.
void paint_chart(QCPPainter& painter, const iStripChartX& chart, const strip_window& rows, const QRectF& area,
                 double enlarged, bool cut = false);

} // namespace tyxo
