// The main window's places in numbers: as designed, maximised, and in large letters where there is no room.

#include "displays/layout.h"

#include <gtest/gtest.h>

#include <string>

namespace tyxo {
namespace {

std::string told(const rectangle& place) {
    return std::to_string(place.left) + ',' + std::to_string(place.top) + ' ' + std::to_string(place.width) +
           'x' + std::to_string(place.height) + '\n';
}

/// The first and the last quadrant, and what stands below them.
std::string told(const window_layout& layout) {
    std::string text;
    for (const i16 channel : {i16{0}, i16{3}}) {
        const quadrant_layout& quadrant = layout.quadrants[channel];
        for (const rectangle& place :
             {quadrant.chart, quadrant.cmd_zoom_xy, quadrant.Frame_sensor, quadrant.XYplot,
              quadrant.Frame_message, quadrant.Cmd_diagramm, quadrant.Cmd_diagramm2})
            text += told(place);
    }
    for (const rectangle& place :
         {layout.Text_status, layout.frame_resolution, layout.Lbl_TY_logger, layout.StatusBar})
        text += told(place);
    return text;
}

constexpr print_room large{88, 520, 200, 36, 236, 34, 152, 9};

TEST(LayoutPlaces, AsDesigned) {
    EXPECT_EQ(told(layout_window(design_client_width, design_client_height, false)),
              "1,0 635x278\n2,1 118x22\n4,280 395x125\n403,284 121x121\n403,280 229x125\n528,284 "
              "104x58\n528,346 104x58\n"
              "637,405 635x278\n1153,406 118x22\n640,685 395x125\n1039,689 121x121\n1039,685 "
              "229x125\n1164,689 104x58\n1164,751 104x58\n"
              "4,814 856x64\n864,814 250x64\n1118,814 150x64\n0,889 1272x22\n");
}

TEST(LayoutPlaces, MaximisedOnALargeScreen) {
    EXPECT_EQ(told(layout_window(1920, 1058, true)),
              "1,0 959x278\n2,1 118x22\n4,280 645x199\n653,284 195x195\n653,280 303x199\n852,284 "
              "104x95\n852,383 104x95\n"
              "961,479 959x278\n1801,480 118x22\n964,759 645x199\n1613,763 195x195\n1613,759 "
              "303x199\n1812,763 104x95\n1812,862 104x95\n"
              "4,962 1504x64\n1512,962 250x64\n1766,962 150x64\n0,1036 1920x22\n");
}

TEST(LayoutPlaces, InLargeLettersOnASmallScreen) {
    EXPECT_EQ(told(layout_window(1024, 690, true, large)),
              "1,0 511x156\n2,1 236x34\n4,158 254x125\n262,167 90x90\n262,158 246x125\n356,167 "
              "152x56\n356,227 152x56\n"
              "513,283 511x156\n787,284 236x34\n516,441 254x125\n774,450 90x90\n774,441 246x125\n868,450 "
              "152x56\n868,510 152x56\n"
              "4,570 288x88\n296,570 520x88\n820,570 200x88\n0,658 1024x32\n");
}

TEST(LayoutPlaces, InLargeLettersWithoutRoom) {
    EXPECT_EQ(told(layout_window(400, 400, true, large)),
              "1,0 199x90\n2,1 98x34\n4,92 56x46\n64,101 24x24\n64,92 132x46\n92,101 104x16\n92,121 104x16\n"
              "201,138 199x90\n301,139 98x34\n204,230 56x46\n264,239 24x24\n264,230 132x46\n292,239 "
              "104x16\n292,259 104x16\n"
              "4,280 199x88\n207,280 184x88\n395,280 1x88\n0,368 400x32\n");
}

TEST(LayoutPlaces, KnowWhatTheyWereMadeFor) {
    EXPECT_EQ(layout_window(1024, 690, true, large).print, large);
}

} // namespace
} // namespace tyxo
