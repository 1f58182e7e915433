#pragma once
// Printing a strip chart.

#include "controls/strip_chart.h"
#include "controls/strip_history.h"

namespace tyxo {

/// Prints the chart as its print settings say: title lines, then the visible curves with axes and legend over
/// `rows`, with the chart's X span. The operator chooses a printer or a PDF file and is waited for, while
/// measuring goes on; a print that cannot be done ends with a message box.
void print_chart(const iStripChartX& chart, const strip_window& rows);

} // namespace tyxo
