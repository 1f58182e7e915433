#pragma once
// The strip chart control as plain state.

#include "controls/controls.h"

#include <string>
#include <vector>

namespace tyxo {

/// One curve of a strip chart.
struct chart_curve {
    std::string Title;
    colour Color = 0;
    bool Visible = true; ///< curve and legend entry
    bool operator==(const chart_curve&) const = default;
};

/// A strip chart, under the control's own property names. X is in days, Y has one scale for all curves.
struct iStripChartX {
    i32 Left = 0; ///< pixels of the main window's client area, like the other lengths
    i32 Top = 0;
    i32 Width = 635;
    i32 Height = 278;
    std::string Title;
    std::vector<chart_curve> curves;
    colour AxisGridColor = 4210752;
    colour LegendFontColor = 0;
    colour XAxisLabelFontColor = 0;
    colour YAxisLabelFontColor = 0;
    colour TitleFontColor = rgb(255, 0, 0);
    colour XAxisTickMajorColor = 0;
    colour XAxisTickMinorColor = 0;
    std::string XAxisDateTimeFormatString;
    colour BackGroundColor = rgb(192, 192, 192);
    colour GridBackGroundColor = rgb(192, 192, 192);
    i32 GridLineStyle = 2;        ///< solid, dash, dot
    double XAxisMin = 0;          ///< days
    double XAxisSpan = 1.0 / 720; ///< days
    i32 XAxisTickMajorCount = 6;
    i32 XAxisTickMinorCount = 3;
    double YAxisMin = 0;
    double YAxisMax = 100;
    i32 YAxisTickMajorCount = 7;
    bool Visible = true;
    bool Frozen = false; ///< keeps its picture, while rows are taken on
    i32 FrozenMode = 0;  ///< set to 0 when a frozen chart returns by itself; changes nothing in the picture

    bool PrintFlag = false; ///< the operator chooses the printer in a dialog
    i32 PrintMode = 0;      ///< 0 upright, 1 across
    std::string PrintFontName;
    i32 PrintFontSize = 8; ///< points
    bool PrintFontBold = false;
    std::vector<std::string> PrintTitle; ///< lines above the chart
    double PrinterMarginLeft = 0.5;      ///< inches
    double PrinterMarginTop = 0.5;
    double PrinterMarginRight = 0.5;
    double PrinterMarginBottom = 0.5;
    bool operator==(const iStripChartX&) const = default;
};

} // namespace tyxo
