#include "displays/layout.h"

#include <algorithm>

namespace tyxo {

namespace {

constexpr i32 text_status_height = 64;
constexpr i32 below_panels = 36; // status bar and gaps
constexpr i32 status_bar_height = 22;
constexpr i32 resolution_width = 250;
constexpr i32 logger_width = 150;
constexpr i32 gap = 4;
constexpr i32 below_chart = 2;
constexpr i32 design_chart_height = 278;
constexpr i32 button_width = 104;
constexpr i32 zoom_button_width = 118;
constexpr i32 zoom_button_height = 22;
constexpr i32 greatest_sensor_height = 200;

/// The zoom button stands at the outer end of the chart's title line, so that the two of a row keep out of
/// each other's way when one chart takes the whole row.
rectangle zoom_button(const rectangle& chart, bool left_column) {
    const i32 left = left_column ? chart.left + 1 : chart.left + chart.width - zoom_button_width - 1;
    return {left, chart.top + 1, zoom_button_width, zoom_button_height};
}

quadrant_layout layout_quadrant(i16 channel, i32 left, i32 top, i32 width, i32 height) {
    // The chart has its design height; what a larger window gives goes to the instruments first.
    const i32 sensor_height = std::min(height - design_chart_height - below_chart, greatest_sensor_height);
    const i32 sensor_top = top + height - sensor_height;
    const i32 plot_size = std::min(sensor_height - gap, (width - button_width) / 4);
    const i32 right = left + width;
    const i32 buttons_left = right - button_width - gap;
    const i32 plot_left = buttons_left - gap - plot_size;
    const i32 button_height = (sensor_height - 2 * gap) / 2;
    const i32 first = sensor_top + gap;

    quadrant_layout result;
    result.chart = {left + 1, top, width - 1, height - sensor_height - below_chart};
    result.cmd_zoom_xy = zoom_button(result.chart, channel < 2);
    result.Frame_sensor = {left + gap, sensor_top, plot_left - gap - left - gap, sensor_height};
    result.XYplot = {plot_left, sensor_top + sensor_height - plot_size, plot_size, plot_size};
    result.Frame_message = {plot_left, sensor_top, right - gap - plot_left, sensor_height};
    result.Cmd_diagramm = {buttons_left, first, button_width, button_height};
    result.Cmd_diagramm2 = {buttons_left, first + button_height + gap, button_width, button_height};
    return result;
}

} // namespace

window_layout layout_window(i32 client_width, i32 client_height, bool maximised) {
    if (!maximised) {
        client_width = design_client_width;
        client_height = design_client_height;
    }
    const i32 half_width = client_width / 2;
    const i32 half_height = (client_height - text_status_height - below_panels) / 2;

    window_layout result;
    result.client_width = client_width;
    result.client_height = client_height;
    for (i16 channel = 0; channel < channel_count; ++channel) {
        const i32 left = channel < 2 ? 0 : half_width;
        const i32 top = channel % 2 == 0 ? 0 : half_height;
        result.quadrants[static_cast<std::size_t>(channel)] =
            layout_quadrant(channel, left, top, half_width, half_height);
    }
    const i32 text_top = 2 * half_height + gap;
    const i32 logger_left = client_width - logger_width - gap;
    const i32 resolution_left = logger_left - gap - resolution_width;
    result.Text_status = {gap, text_top, resolution_left - 2 * gap, text_status_height};
    result.frame_resolution = {resolution_left, text_top, resolution_width, text_status_height};
    result.Lbl_TY_logger = {logger_left, text_top, logger_width, text_status_height};
    result.StatusBar = {0, client_height - status_bar_height, client_width, status_bar_height};
    return result;
}

} // namespace tyxo
