#pragma once
// Where everything of the main window stands, in pixels of its client area.

#include "basics/per_channel.h"
#include "basics/types.h"

namespace tyxo {

struct rectangle {
    i32 left = 0;
    i32 top = 0;
    i32 width = 0;
    i32 height = 0;
    bool operator==(const rectangle&) const = default;
};

/// The client area that the main window is designed for, below the menu.
inline constexpr i32 design_client_width = 1272;
inline constexpr i32 design_client_height = 911;

/// The room that captions need in the letters of the desktop; those of the design are the least.
struct print_room {
    i32 text_height = 64;       ///< of `Text_status` and what stands beside it
    i32 resolution_width = 250; ///< of `frame_resolution`
    i32 logger_width = 150;     ///< of `Lbl_TY_logger`
    i32 status_bar_height = 22;
    i32 zoom_width = 118;
    i32 zoom_height = 22;
    i32 button_width = 104; ///< of `Cmd_diagramm` and `Cmd_diagramm2`
    i32 frame_line = 4;     ///< from the top of `Frame_sensor`, where its title is, to its upper line
    bool operator==(const print_room&) const = default;
};

/// The places of one channel's controls: the chart above, the instruments below.
struct quadrant_layout {
    rectangle chart;
    rectangle cmd_zoom_xy; ///< in the chart's title line, where an enlarged chart leaves it uncovered
    rectangle Frame_sensor;
    rectangle XYplot; ///< also the place of `Frame_message`, with the buttons' place
    rectangle Frame_message;
    rectangle Cmd_diagramm;
    rectangle Cmd_diagramm2;
};

/// Where a channel's quadrant stands in the window.
struct quadrant_place {
    i32 column;
    i32 row;
};

inline constexpr per_channel<quadrant_place> quadrant_places{{{0, 0}, {0, 1}, {1, 0}, {1, 1}}};

[[nodiscard]] constexpr bool stands_left(i16 channel) {
    return quadrant_places[channel].column == 0;
}

struct window_layout {
    i32 client_width = 0;
    i32 client_height = 0;
    per_channel<quadrant_layout> quadrants;
    rectangle Text_status;
    rectangle frame_resolution;
    rectangle Lbl_TY_logger;
    rectangle StatusBar;
    print_room print; ///< that it was made for
};

/// The zoom button of a channel in the chart that is seen in its row: at the outer end of the title line, so
/// that the two of a row keep out of each other's way when one chart takes the whole row.
[[nodiscard]] rectangle zoom_button(const rectangle& chart, i16 channel, const print_room& print);

/// The layout of a client area. A maximised window shares its width and the height above `Text_status`, less
/// 36 pixels, in halves; any other window has the design's positions, or those of its client area where that
/// is smaller. In a low one the instruments keep their design height, and the charts give way.
[[nodiscard]] window_layout layout_window(i32 client_width, i32 client_height, bool maximised,
                                          const print_room& print = {});

} // namespace tyxo
