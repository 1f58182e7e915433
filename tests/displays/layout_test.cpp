// Where the controls of the main window stand at any size.

#include "displays/layout.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace tyxo {

std::ostream& operator<<(std::ostream& stream, const rectangle& place) {
    return stream << place.left << "," << place.top << " " << place.width << "x" << place.height;
}

namespace {

struct named_place {
    std::string name;
    rectangle place;
};

struct client_size {
    i32 width;
    i32 height;
};

constexpr std::array<client_size, 11> client_sizes{{{1272, 911},
                                                    {1280, 1002},
                                                    {1366, 1024},
                                                    {1920, 1058},
                                                    {2561, 1441},
                                                    {3840, 2100},
                                                    {1024, 690},
                                                    {1280, 642},
                                                    {1280, 722},
                                                    {1366, 690},
                                                    {1536, 786}}};

constexpr print_room large_letters{88, 520, 200, 36, 236, 34, 152};

/// The controls of a quadrant that show at the same time: plot and buttons, or the message in their place.
std::vector<named_place> visible_places(const window_layout& layout, bool plots) {
    std::vector<named_place> places;
    for (std::size_t index = 0; index < layout.quadrants.size(); ++index) {
        const quadrant_layout& quadrant = layout.quadrants[index];
        const std::string number = "(" + std::to_string(index) + ")";
        places.push_back({"Frame_sensor" + number, quadrant.Frame_sensor});
        places.push_back({"chart" + number, quadrant.chart});
        if (plots) {
            places.push_back({"XYplot" + number, quadrant.XYplot});
            places.push_back({"Cmd_diagramm" + number, quadrant.Cmd_diagramm});
            places.push_back({"Cmd_diagramm2" + number, quadrant.Cmd_diagramm2});
        } else {
            places.push_back({"Frame_message" + number, quadrant.Frame_message});
        }
    }
    places.push_back({"Text_status", layout.Text_status});
    places.push_back({"frame_resolution", layout.frame_resolution});
    places.push_back({"Lbl_TY_logger", layout.Lbl_TY_logger});
    places.push_back({"StatusBar", layout.StatusBar});
    return places;
}

bool overlap(const rectangle& one, const rectangle& other) {
    return one.left < other.left + other.width && other.left < one.left + one.width &&
           one.top < other.top + other.height && other.top < one.top + one.height;
}

TEST(Layout, NothingOverlapsAndNothingLeavesTheClientArea) {
    for (const client_size& size : client_sizes) {
        for (const auto& [print, plots] : {std::pair{print_room{}, false},
                                           {print_room{}, true},
                                           {large_letters, false},
                                           {large_letters, true}}) {
            const auto places = visible_places(layout_window(size.width, size.height, true, print), plots);
            for (std::size_t one = 0; one < places.size(); ++one) {
                const rectangle& place = places[one].place;
                const std::string trace = places[one].name + " at " + testing::PrintToString(place) + " in " +
                                          std::to_string(size.width) + "x" + std::to_string(size.height);
                EXPECT_GT(place.width, 0) << trace;
                EXPECT_GT(place.height, 0) << trace;
                EXPECT_GE(place.left, 0) << trace;
                EXPECT_GE(place.top, 0) << trace;
                EXPECT_LE(place.left + place.width, size.width) << trace;
                EXPECT_LE(place.top + place.height, size.height) << trace;
                for (std::size_t other = one + 1; other < places.size(); ++other)
                    EXPECT_FALSE(overlap(place, places[other].place))
                        << trace << " and " << places[other].name;
            }
        }
    }
}

std::vector<named_place> places_of_quadrant(const quadrant_layout& quadrant) {
    return {{"Frame_sensor", quadrant.Frame_sensor},   {"XYplot", quadrant.XYplot},
            {"Frame_message", quadrant.Frame_message}, {"Cmd_diagramm", quadrant.Cmd_diagramm},
            {"Cmd_diagramm2", quadrant.Cmd_diagramm2}, {"chart", quadrant.chart}};
}

/// Expects the second quadrant to be the first one moved.
void expect_moved(const quadrant_layout& first, const quadrant_layout& second, i32 right, i32 down) {
    const auto from = places_of_quadrant(first);
    const auto to = places_of_quadrant(second);
    for (std::size_t index = 0; index < from.size(); ++index) {
        rectangle expected = from[index].place;
        expected.left += right;
        expected.top += down;
        EXPECT_EQ(to[index].place, expected) << from[index].name;
    }
}

TEST(Layout, AMaximisedWindowHasItsRightColumnAtHalfOfTheWidth) {
    for (const client_size& size : client_sizes) {
        const auto quadrants = layout_window(size.width, size.height, true).quadrants;
        expect_moved(quadrants[0], quadrants[2], size.width / 2, 0);
        expect_moved(quadrants[1], quadrants[3], size.width / 2, 0);
    }
}

TEST(Layout, AMaximisedWindowHasItsLowerRowAtHalfOfTheHeightAboveTextStatusLess36) {
    for (const client_size& size : client_sizes) {
        const window_layout layout = layout_window(size.width, size.height, true);
        const i32 half = (size.height - layout.Text_status.height - 36) / 2;
        expect_moved(layout.quadrants[0], layout.quadrants[1], 0, half);
        expect_moved(layout.quadrants[2], layout.quadrants[3], 0, half);
    }
}

TEST(Layout, ChannelsStandTwoByTwo) {
    const auto quadrants = layout_window(1920, 1058, true).quadrants;
    for (const quadrant_layout& quadrant : quadrants) {
        EXPECT_LT(quadrant.Frame_sensor.left, quadrant.XYplot.left) << "beside each other";
    }
    EXPECT_LT(quadrants[0].chart.left, 960);
    EXPECT_LT(quadrants[1].chart.left, 960);
    EXPECT_GE(quadrants[2].chart.left, 960);
    EXPECT_GE(quadrants[3].chart.left, 960);
    EXPECT_LT(quadrants[0].chart.top, quadrants[1].Frame_sensor.top);
    EXPECT_EQ(quadrants[0].chart.top, quadrants[2].chart.top);
    EXPECT_EQ(quadrants[1].chart.top, quadrants[3].chart.top);
}

TEST(Layout, TextStatusAndStatusBarStandBelowAllPanels) {
    for (const client_size& size : client_sizes) {
        const window_layout layout = layout_window(size.width, size.height, true);
        for (const quadrant_layout& quadrant : layout.quadrants) {
            for (const named_place& control : places_of_quadrant(quadrant)) {
                const i32 bottom = control.place.top + control.place.height;
                EXPECT_LE(bottom, layout.Text_status.top) << control.name;
                EXPECT_LE(bottom, layout.StatusBar.top) << control.name;
            }
        }
        EXPECT_GE(layout.StatusBar.top, layout.Text_status.top + layout.Text_status.height);
        EXPECT_EQ(layout.StatusBar.top + layout.StatusBar.height, size.height);
        EXPECT_EQ(layout.StatusBar.width, size.width);
    }
}

TEST(Layout, TheMessageStandsInThePlaceOfThePlot) {
    for (const client_size& size : client_sizes) {
        for (const quadrant_layout& quadrant : layout_window(size.width, size.height, true).quadrants)
            EXPECT_TRUE(overlap(quadrant.Frame_message, quadrant.XYplot));
    }
}

TEST(Layout, TheNormalWindowHasTheDesignPositionsWhateverItsSize) {
    const window_layout design = layout_window(design_client_width, design_client_height, false);
    for (const client_size& size : {client_size{1272, 911}, {1280, 1002}, {3840, 2100}}) {
        const window_layout layout = layout_window(size.width, size.height, false);
        for (std::size_t index = 0; index < layout.quadrants.size(); ++index)
            expect_moved(design.quadrants[index], layout.quadrants[index], 0, 0);
        EXPECT_EQ(layout.Text_status, design.Text_status);
        EXPECT_EQ(layout.frame_resolution, design.frame_resolution);
        EXPECT_EQ(layout.Lbl_TY_logger, design.Lbl_TY_logger);
        EXPECT_EQ(layout.StatusBar, design.StatusBar);
    }
}

TEST(Layout, ANormalWindowOnASmallScreenHasThePlacesOfItsClientArea) {
    const window_layout normal = layout_window(1024, 690, false);
    const window_layout maximised = layout_window(1024, 690, true);
    for (std::size_t index = 0; index < normal.quadrants.size(); ++index)
        expect_moved(maximised.quadrants[index], normal.quadrants[index], 0, 0);
    EXPECT_EQ(normal.StatusBar, maximised.StatusBar);
}

TEST(Layout, InALowWindowTheInstrumentsKeepTheirHeightAndTheChartsGiveWay) {
    const window_layout design = layout_window(design_client_width, design_client_height, false);
    const i32 instruments = design.quadrants[0].Frame_sensor.height;
    for (const i32 height : {911, 910, 850, 786, 722, 690, 642}) {
        const quadrant_layout quadrant = layout_window(1272, height, true).quadrants[0];
        EXPECT_EQ(quadrant.Frame_sensor.height, instruments) << height;
        EXPECT_EQ(quadrant.Cmd_diagramm.height, design.quadrants[0].Cmd_diagramm.height) << height;
        EXPECT_LE(quadrant.chart.height, 278) << height;
        EXPECT_GE(quadrant.chart.height, 90) << height;
    }
}

TEST(Layout, EvenTheLowestWindowHasBothInstrumentsAndCharts) {
    for (const i32 height : {560, 520, 480, 440}) {
        const quadrant_layout quadrant = layout_window(1024, height, true).quadrants[0];
        EXPECT_GE(quadrant.Frame_sensor.height, 70) << height;
        EXPECT_GE(quadrant.chart.height, 90) << height;
    }
}

TEST(Layout, PlotAndButtonsOfARowHaveOneUpperEdge) {
    for (const client_size& size : client_sizes) {
        const quadrant_layout quadrant = layout_window(size.width, size.height, true).quadrants[0];
        EXPECT_EQ(quadrant.XYplot.top, quadrant.Cmd_diagramm.top) << size.width;
    }
}

TEST(Layout, InAMaximisedWindowTheFramesLineIsThatEdgeToo) {
    print_room print;
    print.frame_line = 19;
    for (const client_size& size : client_sizes) {
        const quadrant_layout quadrant = layout_window(size.width, size.height, true, print).quadrants[0];
        EXPECT_EQ(quadrant.XYplot.top, quadrant.Frame_sensor.top + 19) << size.width;
        EXPECT_EQ(quadrant.Cmd_diagramm.top, quadrant.XYplot.top) << size.width;
        const i32 bottom = quadrant.Frame_sensor.top + quadrant.Frame_sensor.height;
        EXPECT_LE(quadrant.XYplot.top + quadrant.XYplot.height, bottom) << size.width;
        EXPECT_LE(quadrant.Cmd_diagramm2.top + quadrant.Cmd_diagramm2.height, bottom) << size.width;
    }
}

TEST(Layout, LargeLettersGetTheRoomThatTheyNeed) {
    const window_layout layout = layout_window(1920, 1002, true, large_letters);
    EXPECT_EQ(layout.Text_status.height, large_letters.text_height);
    EXPECT_EQ(layout.frame_resolution.width, large_letters.resolution_width);
    EXPECT_EQ(layout.Lbl_TY_logger.width, large_letters.logger_width);
    for (const quadrant_layout& quadrant : layout.quadrants) {
        EXPECT_EQ(quadrant.cmd_zoom_xy.width, large_letters.zoom_width);
        EXPECT_EQ(quadrant.cmd_zoom_xy.height, large_letters.zoom_height);
        EXPECT_EQ(quadrant.Cmd_diagramm.width, large_letters.button_width);
    }
}

TEST(Layout, TheDesignsChartsHaveTheirDesignSize) {
    const window_layout design = layout_window(design_client_width, design_client_height, false);
    for (const quadrant_layout& quadrant : design.quadrants) {
        EXPECT_EQ(quadrant.chart.width, 635);
        EXPECT_EQ(quadrant.chart.height, 278);
    }
}

TEST(Layout, ALargerWindowMakesNoControlSmaller) {
    const window_layout small = layout_window(1280, 1002, true);
    const window_layout large = layout_window(3840, 2100, true);
    for (std::size_t index = 0; index < small.quadrants.size(); ++index) {
        const auto before = places_of_quadrant(small.quadrants[index]);
        const auto after = places_of_quadrant(large.quadrants[index]);
        for (std::size_t control = 0; control < before.size(); ++control) {
            EXPECT_GE(after[control].place.width, before[control].place.width) << before[control].name;
            EXPECT_GE(after[control].place.height, before[control].place.height) << before[control].name;
        }
    }
}

} // namespace
} // namespace tyxo
