#pragma once
// The XY plot control as plain state: curves of points over two axes.

#include "controls/controls.h"

#include <string>
#include <vector>

namespace tyxo {

struct plot_point {
    double x = 0;
    double y = 0;
    bool operator==(const plot_point&) const = default;
};

struct plot_curve {
    std::string Title;
    colour Color = rgb(255, 255, 255);
    bool Visible = true;
    std::vector<plot_point> points;
    bool operator==(const plot_curve&) const = default;
};

struct plot_axis {
    double Min = 0;
    double Span = 100;
    bool operator==(const plot_axis&) const = default;
};

/// Points outside the axes are cut off by the plot.
struct iXYPlotX {
    bool Visible = true;
    std::vector<plot_curve> curves;
    plot_axis XAxis;
    plot_axis YAxis;
    bool operator==(const iXYPlotX&) const = default;
};

} // namespace tyxo
