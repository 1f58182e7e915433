// What the command line says of pictures.

#include "xlg/plot_words.h"

#include "basics/failure.h"
#include "xlg/arguments.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

namespace tyxo::xlg {
namespace {

constexpr std::int64_t midnight = 1'782'950'400; // 2026-07-02

arguments read_words(const std::vector<std::string_view>& words) {
    return arguments_of(words);
}

std::string refusal(const std::vector<std::string_view>& words) {
    return attempt([&] { static_cast<void>(read_words(words)); }).value_or("taken");
}

TEST(XlgTimes, AreOfADayOrOfTheDayOfTheLogs) {
    EXPECT_EQ(time_told("2026-07-02T13:05:09"), (told_time{midnight, 47'109}));
    EXPECT_EQ(time_told("2026-07-02 13:05"), (told_time{midnight, 47'100}));
    EXPECT_EQ(time_told("2026-07-02"), (told_time{midnight, 0}));
    EXPECT_EQ(time_told("00:00:01"), (told_time{std::nullopt, 1}));
    EXPECT_EQ(time_told("23:59").on_day_of(midnight + 5), midnight + 86'340);
    EXPECT_EQ(time_told("2026-07-02T00:01").on_day_of(0), midnight + 60);
    EXPECT_EQ(time_told("00:01").on_day_of(-1), -86'340);
}

TEST(XlgTimes, ThatAreNoneAreRefused) {
    for (const std::string_view text : {"", "13", "24:00", "13:60", "13:05:60", "13:05:9", "1:05", "13-05",
                                        "2026-02-30", "2026-13-01T13:05", "2026-07-02T", "2026-07-02X13:05",
                                        "2026-07-02T13:05:09Z", "-1:05", "+1:05", "20260702"})
        EXPECT_EQ(attempt([&] { static_cast<void>(time_told(text)); }),
                  "\"" + std::string(text) + "\" is no time; 2026-07-02T13:05:09, 13:05:09 and 13:05 are");
}

TEST(XlgPictures, OfAnySizeThatCanBeSeenAreTaken) {
    EXPECT_EQ(size_told("1600x600"), (picture_size{1600, 600}));
    EXPECT_EQ(size_told("400x300"), (picture_size{400, 300}));
    EXPECT_EQ(size_told("20000x20000"), (picture_size{20'000, 20'000}));
    for (const std::string_view text : {"399x300", "400x299", "20001x600", "600x20001", "0x0"})
        EXPECT_EQ(attempt([&] { static_cast<void>(size_told(text)); }),
                  "a picture has from 400x300 to 20000x20000 pixels, not " + std::string(text));
    for (const std::string_view text : {"", "x", "1600", "1600x", "x600", "1600X600", "-800x600", "1e3x600"})
        EXPECT_EQ(attempt([&] { static_cast<void>(size_told(text)); }),
                  "\"" + std::string(text) + "\" is no size; 1600x600 is, width and height in pixels");
}

TEST(XlgPictures, AreWrittenByTheirEnding) {
    EXPECT_EQ(format_told("a.png"), picture_format::png);
    EXPECT_EQ(format_told("a.b/c.SVG"), picture_format::svg);
    EXPECT_EQ(format_told(".pdf"), picture_format::pdf);
    for (const std::string_view text : {"", "png", "a.jpg", "a.png.xlg", "a."})
        EXPECT_EQ(attempt([&] { static_cast<void>(format_told(text)); }),
                  "a picture ends in .png, .svg or .pdf, which \"" + std::string(text) + "\" does not");
}

TEST(XlgArguments, OfAPictureAreTaken) {
    const arguments chart =
        read_words({"plot", "--from", "13:05", "--to", "2026-07-02T14:00", "-o", "a.svg", "--size", "800x600",
                    "--title", "A week", "--settings", "tyxo.ini", "--force", "a", "b"});
    EXPECT_EQ(chart.what, command::plot);
    EXPECT_EQ(chart.plot.kind, picture_kind::chart);
    EXPECT_EQ(chart.plot.from, time_told("13:05"));
    EXPECT_EQ(chart.plot.to, time_told("2026-07-02T14:00"));
    EXPECT_EQ(chart.plot.size, (picture_size{800, 600}));
    EXPECT_EQ(chart.plot.title, "A week");
    EXPECT_EQ(chart.plot.settings, "tyxo.ini");
    EXPECT_EQ(chart.output, "a.svg");
    EXPECT_TRUE(chart.force);
    EXPECT_EQ(chart.files, (std::vector<std::string>{"a", "b"}));
    const arguments bars = read_words({"plot", "--cycle", "13:05:09", "--as", "speed-bars", "a"});
    EXPECT_EQ(bars.plot.cycle, time_told("13:05:09"));
    EXPECT_EQ(bars.plot.kind, picture_kind::speed_bars);
    EXPECT_EQ(read_words({"plot", "--cycle", "13:05", "a"}).plot.kind, picture_kind::scope);
    EXPECT_TRUE(read_words({"view"}).files.empty());
    EXPECT_EQ(read_words({"view", "a", "b"}).files.size(), 2U);
}

TEST(XlgArguments, OfAPictureThatCannotBeMadeAreRefusedInWords) {
    EXPECT_EQ(refusal({"plot"}), "a log is missing");
    EXPECT_EQ(refusal({"plot", "-"}), "pictures are made of files, which standard input is not");
    EXPECT_EQ(refusal({"view", "-"}), "pictures are made of files, which standard input is not");
    EXPECT_EQ(refusal({"plot", "--as", "detail", "a"}), "--as needs --cycle and a time");
    EXPECT_EQ(refusal({"plot", "--cycle", "13:05", "--from", "13:00", "a"}),
              "a cycle has no length: --cycle stands without --from and --to");
    EXPECT_EQ(
        refusal({"plot", "--cycle", "13:05", "--as", "chart", "a"}),
        "there is no picture \"chart\" of a cycle; there are scope, detail, speed-bars and thermo-bars");
    EXPECT_EQ(refusal({"plot", "-o", "a.jpg", "a"}),
              "a picture ends in .png, .svg or .pdf, which \"a.jpg\" does not");
    EXPECT_EQ(refusal({"plot", "--jobs", "2", "a"}), "there is no option --jobs here");
    EXPECT_EQ(refusal({"plot", "--gap", "2", "a"}), "there is no option --gap here");
    EXPECT_EQ(refusal({"view", "--from", "13:05", "a"}), "there is no option --from here");
    EXPECT_EQ(refusal({"check", "--from", "13:05", "a"}), "there is no option --from here");
    EXPECT_EQ(refusal({"plot", "a", "--to"}), "a value is missing behind --to");
}

TEST(XlgArguments, ThePagesOfPicturesTellWhoDrawsThem) {
    for (const command each : {command::plot, command::view}) {
        EXPECT_NE(help_page(each).find("package xlg-view"), std::string_view::npos);
        EXPECT_NE(help_page(each).find("Ends with 0"), std::string_view::npos);
    }
}

} // namespace
} // namespace tyxo::xlg
