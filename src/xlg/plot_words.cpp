#include "xlg/plot_words.h"

#include "basics/failure.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <chrono>
#include <utility>

namespace tyxo::xlg {

namespace {

constexpr std::int64_t day = 86'400; // s
constexpr picture_size least_picture{400, 300};
constexpr int longest_side = 20'000;

/// A number of so many digits at most, all of the text.
std::optional<int> digits(std::string_view text, std::size_t most) {
    int value = 0;
    if (text.empty() || text.size() > most || text.front() == '-') return std::nullopt;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

std::optional<std::int64_t> midnight_told(std::string_view text) {
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    const auto year = digits(text.substr(0, 4), 4);
    const auto month = digits(text.substr(5, 2), 2);
    const auto date = digits(text.substr(8), 2);
    if (!year || !month || !date) return std::nullopt;
    const std::chrono::year_month_day told{std::chrono::year(*year),
                                           std::chrono::month(static_cast<unsigned>(*month)),
                                           std::chrono::day(static_cast<unsigned>(*date))};
    if (!told.ok()) return std::nullopt;
    return std::chrono::sys_days(told).time_since_epoch().count() * day;
}

/// Of "13:05" or "13:05:09".
std::optional<std::int64_t> seconds_told(std::string_view text) {
    if ((text.size() != 5 && text.size() != 8) || text[2] != ':') return std::nullopt;
    const auto hour = digits(text.substr(0, 2), 2);
    const auto minute = digits(text.substr(3, 2), 2);
    std::optional<int> second = 0;
    if (text.size() == 8) second = text[5] == ':' ? digits(text.substr(6), 2) : std::nullopt;
    if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
    return 3600 * *hour + 60 * *minute + *second;
}

template <class Value, std::size_t Count>
Value named_in(const std::array<std::pair<std::string_view, Value>, Count>& names, std::string_view name,
               const std::string& otherwise) {
    for (const auto& [text, value] : names)
        if (text == name) return value;
    throw failure(otherwise);
}

constexpr auto kind_names = std::to_array<std::pair<std::string_view, picture_kind>>({
    {"scope", picture_kind::scope},
    {"detail", picture_kind::detail},
    {"speed-bars", picture_kind::speed_bars},
    {"thermo-bars", picture_kind::thermo_bars},
});

constexpr auto format_names = std::to_array<std::pair<std::string_view, picture_format>>({
    {"png", picture_format::png},
    {"svg", picture_format::svg},
    {"pdf", picture_format::pdf},
});

} // namespace

std::int64_t told_time::on_day_of(std::int64_t first) const {
    const std::int64_t own = first / day - (first % day < 0 ? 1 : 0);
    return midnight.value_or(own * day) + seconds;
}

told_time time_told(std::string_view text) {
    if (const auto seconds = seconds_told(text)) return {std::nullopt, *seconds};
    const auto midnight = midnight_told(text.substr(0, std::min<std::size_t>(text.size(), 10)));
    if (midnight && text.size() == 10) return {midnight, 0};
    if (midnight && (text[10] == 'T' || text[10] == ' ')) {
        if (const auto seconds = seconds_told(text.substr(11))) return {midnight, *seconds};
    }
    throw failure("\"" + std::string(text) + "\" is no time; 2026-07-02T13:05:09, 13:05:09 and 13:05 are");
}

picture_size size_told(std::string_view text) {
    const auto by = std::min(text.find('x'), text.size());
    const auto width = digits(text.substr(0, by), 5);
    const auto height = digits(text.substr(std::min(by + 1, text.size())), 5);
    if (!width || !height)
        throw failure("\"" + std::string(text) + "\" is no size; 1600x600 is, width and height in pixels");
    if (*width < least_picture.width || *height < least_picture.height || *width > longest_side ||
        *height > longest_side)
        throw failure("a picture has from 400x300 to 20000x20000 pixels, not " + std::string(text));
    return {*width, *height};
}

picture_kind kind_told(std::string_view text) {
    return named_in(kind_names, text,
                    "there is no picture \"" + std::string(text) +
                        "\" of a cycle; there are scope, detail, speed-bars and thermo-bars");
}

picture_format format_told(std::string_view file) {
    const auto point = file.rfind('.');
    std::string ending(point == file.npos ? std::string_view() : file.substr(point + 1));
    std::ranges::transform(ending, ending.begin(), [](char letter) {
        return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
    });
    return named_in(format_names, ending,
                    "a picture ends in .png, .svg or .pdf, which \"" + std::string(file) + "\" does not");
}

} // namespace tyxo::xlg
