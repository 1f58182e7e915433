#include "controls/gauge_geometry.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <numbers>

namespace tyxo {

namespace {

constexpr double pitch_of_height = 0.80;

bool overlap(const label_box& one, const label_box& other) {
    const double across = std::abs(one.x - other.x) * 2 - (one.size.width + other.size.width);
    const double upright = std::abs(one.y - other.y) * 2 - (one.size.height + other.size.height);
    return across < 0 && upright < 0;
}

bool step_fits(std::span<const label_box> labels, std::size_t step) {
    for (std::size_t one = 0; one < labels.size(); one += step)
        for (std::size_t other = one + step; other < labels.size(); other += step)
            if (overlap(labels[one], labels[other])) return false;
    return true;
}

std::string fixed_text(double value, i32 precision) {
    std::array<char, 340> digits{}; // the greatest double has 309 digits before the point
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), value,
                                   std::chars_format::fixed, precision);
    return {digits.data(), end.ptr};
}

} // namespace

double scale_share(double value, const scale_limits& limits) {
    // Halves, since the distance of two finite numbers can be beyond the greatest.
    const double extent = limits.greatest / 2 - limits.least / 2;
    if (std::isnan(value) || !std::isfinite(extent) || extent <= 0) return 0;
    return std::clamp((value / 2 - limits.least / 2) / extent, 0.0, 1.0);
}

double arc_angle(double share, i32 start, i32 range) {
    return start % 360 - share * std::clamp(range, 0, 360);
}

double line_place(double share, double begin, double end) {
    return begin + share * (end - begin);
}

std::vector<section_range> section_ranges(const scale_limits& limits, std::span<const double> ends,
                                          i32 count) {
    const auto most = static_cast<i32>(ends.size()) + 1;
    const i32 sections = std::clamp(count, 0, most);
    std::vector<section_range> result;
    double from = 0;
    for (i32 index = 0; index < sections; ++index) {
        const bool last = index + 1 == sections;
        const double to = last ? 1.0 : scale_share(ends[static_cast<std::size_t>(index)], limits);
        if (to <= from) continue;
        result.push_back({from, to, index});
        from = to;
    }
    return result;
}

std::vector<tick_mark> tick_marks(const scale_limits& limits, i32 major_count, i32 minor_count) {
    const i32 majors = std::clamp(major_count, 0, most_major_ticks);
    const i32 parts = std::clamp(minor_count, 0, most_minor_ticks) + 1;
    std::vector<tick_mark> result;
    if (majors == 0) return result;
    const i32 steps = (majors - 1) * parts;
    for (i32 step = 0; step <= steps; ++step) {
        const double share = steps == 0 ? 0 : static_cast<double>(step) / steps;
        const double value = limits.least * (1 - share) + limits.greatest * share;
        result.push_back({share, value, step % parts == 0});
    }
    return result;
}

std::string tick_text(double value, double distance) {
    constexpr i32 most_decimals = 3;
    constexpr double tolerance = 1e-6;
    i32 decimals = 0;
    for (double scaled = std::abs(distance); decimals < most_decimals; ++decimals, scaled *= 10)
        if (!(std::abs(scaled - std::nearbyint(scaled)) > tolerance)) break;
    return display_text(value, decimals);
}

label_box arc_label(double angle, double radius, const box_size& size) {
    const double radians = angle * std::numbers::pi / 180;
    const double across = std::cos(radians);
    const double upright = std::sin(radians);
    // The ellipse in the box touches the circle; the corners of a box are empty in nearly every digit.
    const double reach = radius - std::hypot(across * size.width / 2, upright * size.height / 2);
    return {reach * across, -reach * upright, size};
}

i32 label_step(std::span<const label_box> labels) {
    if (labels.size() <= 1) return static_cast<i32>(labels.size());
    const std::size_t last = labels.size() - 1;
    for (std::size_t step = 1; step < last; ++step)
        if (last % step == 0 && step_fits(labels, step)) return static_cast<i32>(step);
    for (std::size_t step = 1; step < last; ++step)
        if (step_fits(labels, step)) return static_cast<i32>(step);
    return step_fits(labels, last) ? static_cast<i32>(last) : 0;
}

std::string display_text(double value, i32 precision) {
    if (!std::isfinite(value)) return "---";
    constexpr i32 most_decimals = 9;
    std::string text = fixed_text(value, std::clamp(precision, 0, most_decimals));
    const bool zero = text.find_first_of("123456789") == std::string::npos;
    if (zero && text.front() == '-') text.erase(0, 1);
    return text;
}

std::string signed_display_text(double value, i32 precision, bool show_sign) {
    std::string text = display_text(value, precision);
    const bool zero = text.find_first_of("123456789") == std::string::npos;
    if (show_sign && !zero && text.front() != '-') text.insert(0, 1, '+');
    return text;
}

std::vector<digit_place> digit_places(std::string_view text, i32 least_count) {
    std::vector<digit_place> result;
    for (const char symbol : text) {
        if (symbol == '.' && !result.empty()) {
            result.back().point = true;
        } else {
            result.push_back({symbol, false});
        }
    }
    const auto least = static_cast<std::size_t>(std::clamp(least_count, 0, most_blank_digits));
    if (result.size() < least) result.insert(result.begin(), least - result.size(), digit_place{});
    return result;
}

u8 segment_bits(char symbol) {
    constexpr std::array<u8, 10> digits{0x3F, 0x06, 0x5B, 0x4F, 0x66, 0x6D, 0x7D, 0x07, 0x7F, 0x6F};
    if (symbol >= '0' && symbol <= '9') return digits[static_cast<std::size_t>(symbol - '0')];
    if (symbol == '-') return segment::middle;
    if (symbol == '+') return segment::middle | segment::upright_of_plus;
    return 0;
}

double digit_pitch(i32 count, double width, double height) {
    const double suits = std::max(height, 0.0) * pitch_of_height;
    if (count <= 0) return suits;
    return std::min(suits, std::max(width, 0.0) / count);
}

} // namespace tyxo
