#pragma once
// What the command line says of a picture.

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tyxo::xlg {

/// A time as users tell it: of a day, or of the one that the logs are of.
struct told_time {
    std::optional<std::int64_t> midnight; ///< of its day, in seconds since 1970-01-01 00:00
    std::int64_t seconds = 0;             ///< of the day
    bool operator==(const told_time&) const = default;

    /// In seconds since 1970-01-01 00:00. Of any day, it is on the day of `first`.
    [[nodiscard]] std::int64_t on_day_of(std::int64_t first) const;
};

/// Of "2026-07-02T13:05:09", "13:05:09", "13:05", "2026-07-02". Failure: it is none of these, in words for
/// the user.
[[nodiscard]] told_time time_told(std::string_view text);

/// In pixels.
struct picture_size {
    int width = 0;
    int height = 0;
    bool operator==(const picture_size&) const = default;
};

/// Of "1600x600", from 400x300 to 20000x20000. Failure: likewise.
[[nodiscard]] picture_size size_told(std::string_view text);

/// What of the logs a picture shows.
enum class picture_kind { chart, scope, detail, speed_bars, thermo_bars };
[[nodiscard]] picture_kind kind_told(std::string_view text);

/// By what a file is written as a picture; the lower case letters behind its last point.
enum class picture_format { png, svg, pdf };
[[nodiscard]] picture_format format_told(std::string_view file);

/// What `plot` is to draw.
struct plot_wishes {
    picture_kind kind = picture_kind::chart;
    std::optional<told_time> from;
    std::optional<told_time> to;
    std::optional<told_time> cycle;
    std::optional<picture_size> size;
    std::string title;    ///< in UTF-8
    std::string settings; ///< the settings file of the plant
};

} // namespace tyxo::xlg
