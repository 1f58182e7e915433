#pragma once
// A strip chart on a page of paper.

#include "controls/strip_chart.h"
#include "controls/strip_history.h"

class QPrinter;

namespace tyxo {

/// Sets the paper as the chart's print settings say and prints one page: the title lines, and below them the
/// chart over the rest of the page inside the margins. False when the printer or its file cannot be written.
[[nodiscard]] bool paint_chart_page(QPrinter& printer, const iStripChartX& chart, const strip_window& rows);

} // namespace tyxo
