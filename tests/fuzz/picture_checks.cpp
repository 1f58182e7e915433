// What controls show of a number: scales, ticks, digits, time labels, the visible part of a line.

#include "fuzz/numbers_and_texts.h"

#include "controls/curve_strokes.h"
#include "controls/gauge_geometry.h"
#include "controls/time_axis.h"
#include "controls/xy_plot_geometry.h"

#include <cmath>

namespace tyxo::fuzzing {

namespace {

void scales(input& in) {
    const scale_limits limits{in.raw<double>(), in.raw<double>()};
    const double share = scale_share(in.raw<double>(), limits);
    expect(share >= 0 && share <= 1, "a value lies on its scale");
    const double angle = arc_angle(share, in.raw<i32>(), in.raw<i32>());
    expect(std::isfinite(angle), "every value has an angle");
    const std::array<double, 3> ends{in.raw<double>(), in.raw<double>(), in.raw<double>()};
    double begin = 0;
    for (const section_range& section : section_ranges(limits, ends, in.raw<i32>())) {
        expect(section.from == begin && section.to > begin && section.to <= 1, "sections have no holes");
        begin = section.to;
    }
}

void ticks(input& in) {
    const scale_limits limits{in.raw<double>(), in.raw<double>()};
    const auto marks = tick_marks(limits, in.raw<i32>(), in.raw<i32>());
    expect(marks.size() <= (most_major_ticks - 1) * (most_minor_ticks + 1U) + 1, "ticks that can be drawn");
    for (std::size_t index = 1; index < marks.size(); ++index)
        expect(marks[index].share > marks[index - 1].share, "ticks are in the order of the scale");
    static_cast<void>(tick_text(in.raw<double>(), in.raw<double>()));
}

void digits(input& in) {
    const auto value = in.raw<double>();
    const auto precision = in.raw<i32>();
    const std::string text = display_text(value, precision);
    expect(std::isfinite(value) != (text == "---"), "every finite number is shown");
    expect(!text.starts_with('-') || text.find_first_of("123456789-", 1) != text.npos,
           "no minus before a zero");
    const auto least = in.raw<i32>();
    const auto places = digit_places(text, least);
    expect(places.size() >= static_cast<std::size_t>(std::clamp(least, 0, most_blank_digits)),
           "filled with blanks");
    for (const digit_place& place : places)
        static_cast<void>(segment_bits(place.symbol));
    static_cast<void>(signed_display_text(value, precision, in.flag()));
}

void time_labels(input& in) {
    time_axis axis;
    axis.from = in.raw<std::uint32_t>();
    axis.to = axis.from + in.raw<std::uint32_t>() % 200'000'000;
    axis.least_distance = in.raw<std::uint32_t>() % 200'000'000;
    axis.minor_count = in.below(20);
    const std::int64_t jump = axis.from + in.raw<std::uint32_t>() % 200'000'000;
    const std::int64_t by = (in.raw<i16>() % 8000) * std::int64_t{1000};
    const std::string format(in.rest());
    axis.format = format;
    const time_ticks ticks = ticks_of(axis, [&](std::int64_t running) {
        const std::int64_t seconds = (running + (running >= jump ? by : 0) + 100'000'000) / 1000;
        const auto of_day = static_cast<i32>(seconds % 86'400);
        const auto day = static_cast<i32>(seconds / 86'400 % 28) + 1;
        return local_time{2026, 7, day, of_day / 3600, of_day / 60 % 60, of_day % 60};
    });
    expect(ticks.labels.size() <= 100, "at most a hundred labels");
    std::int64_t before = axis.from - 1;
    for (const time_label& label : ticks.labels) {
        expect(label.time > before && label.time <= axis.to, "labels stand in their order on the axis");
        before = label.time;
    }
}

void plot_lines(input& in) {
    const auto point = [&in] { return plot_point{in.raw<double>(), in.raw<double>()}; };
    const auto axis = [&in] { return plot_axis{in.raw<double>(), in.raw<double>()}; };
    const plot_line line{point(), point()};
    const plot_axis x = axis();
    const plot_axis y = axis();
    const auto part = visible_part(line, x, y);
    if (!part) return;
    for (const plot_point& end : {part->from, part->to})
        expect(std::isfinite(end.x) && std::isfinite(end.y), "what shows of a line has finite ends");
}

void curve_lines(input& in) {
    const curve_area area{in.below(50), in.between(50, 500), in.below(50), in.between(50, 500)};
    const i32 thickness = in.between(1, 9);
    std::vector<curve_corner> corners;
    double x = in.raw<i16>();
    while (!in.empty() && corners.size() < 300) {
        x += in.byte() / 16.0;
        corners.push_back({x, in.flag() ? in.raw<double>() : in.raw<i16>()});
    }
    curve_painter painter;
    for (const curve_stroke& stroke : painter.strokes(corners, area, thickness)) {
        expect(stroke.width > 0 && stroke.height > 0, "a stroke is something");
        expect(stroke.left >= area.left - thickness && stroke.left + stroke.width <= area.right + thickness,
               "strokes stay in their area");
    }
}

} // namespace

void check_pictures(input& in) {
    constexpr auto checks =
        std::to_array<void (*)(input&)>({scales, ticks, digits, time_labels, plot_lines, curve_lines});
    at(checks, in.below(static_cast<i32>(checks.size())))(in);
}

} // namespace tyxo::fuzzing
