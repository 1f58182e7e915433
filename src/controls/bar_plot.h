#pragma once
// The plot control of the bar diagrams as plain state: bar series over one X axis and several Y axes.

#include "controls/controls.h"

#include <string>
#include <vector>

namespace tyxo {

struct bar_point {
    double x = 0;
    double y = 0;
    double width = 1; ///< share of the distance between two bars
    bool operator==(const bar_point&) const = default;
};

struct bar_series {
    std::string Title = {};
    colour Color = 0;
    std::string YAxisName = {}; ///< the first axis when no axis bears the name
    std::vector<bar_point> points = {};
    bool operator==(const bar_series&) const = default;
};

struct bar_axis {
    std::string Name = {};
    std::string Title = {};
    double Min = 0;
    double Span = 100;
    double Increment = 0; ///< between two ticks; 0 leaves it to the plot
    colour Color = 0;
    bool operator==(const bar_axis&) const = default;
};

struct iPlotX {
    std::string Title = {};
    bar_axis XAxis;
    std::vector<bar_axis> YAxes; ///< the first stands on the left
    std::vector<bar_series> series;
    bool operator==(const iPlotX&) const = default;
};

} // namespace tyxo
