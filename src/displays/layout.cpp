#include "displays/layout.h"

#include <algorithm>

namespace tyxo {

namespace {

constexpr i32 below_panels = 36; // status bar and gaps
constexpr i32 gap = 4;
constexpr i32 below_chart = 2;
constexpr i32 design_chart_height = 278;
constexpr i32 least_chart_height = 90;
constexpr i32 design_sensor_height = 125;
constexpr i32 greatest_sensor_height = 200;
constexpr i32 least_text_width = 200; // of `Text_status`

/// The chart has its design height; what a larger window gives goes to the instruments first, and what a
/// smaller one takes away is taken from the chart.
i32 sensor_height_of(i32 height) {
    const i32 without_chart = height - below_chart;
    const i32 wanted =
        std::clamp(without_chart - design_chart_height, design_sensor_height, greatest_sensor_height);
    return std::max(std::min(wanted, without_chart - least_chart_height), gap);
}

/// In a maximised window the upper edges of plot and buttons are one with the frame's upper line.
quadrant_layout layout_quadrant(i16 channel, i32 left, i32 top, i32 width, i32 height, bool maximised,
                                const print_room& print) {
    const i32 sensor_height = sensor_height_of(height);
    const i32 sensor_top = top + height - sensor_height;
    const i32 button_width =
        std::max(print_room{}.button_width, std::min(print.button_width, width * 3 / 10));
    const i32 above = maximised ? print.frame_line : gap;
    const i32 plot_size = std::min(sensor_height - above, (width - button_width) / 4);
    const i32 right = left + width;
    const i32 buttons_left = right - button_width - gap;
    const i32 plot_left = buttons_left - gap - plot_size;
    const i32 button_height = (sensor_height - above - gap) / 2;
    const i32 first = sensor_top + above;

    quadrant_layout result;
    result.chart = {left + 1, top, width - 1, height - sensor_height - below_chart};
    result.cmd_zoom_xy = zoom_button(result.chart, channel, print);
    result.Frame_sensor = {left + gap, sensor_top, plot_left - gap - left - gap, sensor_height};
    result.XYplot = {plot_left, first, plot_size, plot_size};
    result.Frame_message = {plot_left, sensor_top, right - gap - plot_left, sensor_height};
    result.Cmd_diagramm = {buttons_left, first, button_width, button_height};
    result.Cmd_diagramm2 = {buttons_left, first + button_height + gap, button_width, button_height};
    return result;
}

} // namespace

rectangle zoom_button(const rectangle& chart, i16 channel, const print_room& print) {
    const i32 width = std::min(print.zoom_width, std::max(chart.width / 2 - 1, 1));
    const i32 left = stands_left(channel) ? chart.left + 1 : chart.left + chart.width - width - 1;
    return {left, chart.top + 1, width, print.zoom_height};
}

window_layout layout_window(i32 client_width, i32 client_height, bool maximised, const print_room& print) {
    if (!maximised) {
        client_width = std::min(client_width, design_client_width);
        client_height = std::min(client_height, design_client_height);
    }
    const i32 half_width = client_width / 2;
    const i32 half_height = (client_height - print.text_height - below_panels) / 2;

    window_layout result;
    result.print = print;
    result.client_width = client_width;
    result.client_height = client_height;
    for (i16 channel = 0; channel < channel_count; ++channel) {
        const auto [column, row] = quadrant_places[channel];
        const i32 left = column * half_width;
        const i32 top = row * half_height;
        result.quadrants[channel] =
            layout_quadrant(channel, left, top, half_width, half_height, maximised, print);
    }
    const i32 text_top = 2 * half_height + gap;
    // The name gives way first: its letters can take two lines.
    const i32 room = client_width - 4 * gap - least_text_width;
    const i32 resolution_width = std::min(print.resolution_width, std::max(room, 1));
    const i32 logger_width = std::max(std::min(print.logger_width, room - resolution_width), 1);
    const i32 logger_left = client_width - logger_width - gap;
    const i32 resolution_left = logger_left - gap - resolution_width;
    result.Text_status = {gap, text_top, resolution_left - 2 * gap, print.text_height};
    result.frame_resolution = {resolution_left, text_top, resolution_width, print.text_height};
    result.Lbl_TY_logger = {logger_left, text_top, logger_width, print.text_height};
    // A high bar reaches into the gap above it.
    const i32 bar_height = std::min(print.status_bar_height, below_panels - gap);
    result.StatusBar = {0, client_height - bar_height, client_width, bar_height};
    return result;
}

} // namespace tyxo
