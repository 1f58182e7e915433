#include "words.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdio>

namespace months::check {

namespace {

void put(std::string& text, std::size_t at, int digits, int number) {
    for (int place = digits - 1; place >= 0; --place, number /= 10)
        text[at + static_cast<std::size_t>(place)] = static_cast<char>('0' + number % 10);
}

} // namespace

void clock_now::set(std::int64_t new_ms, const wall_time& new_local) {
    ms = new_ms;
    if (new_local == local) return;
    local = new_local;
    put(hms, 0, 2, local.hour);
    put(hms, 3, 2, local.minute);
    put(hms, 6, 2, local.second);
    put(mdy, 0, 2, local.month);
    put(mdy, 3, 2, local.day);
    put(mdy, 6, 4, local.year);
    put(digits, 0, 4, local.year);
    put(digits, 4, 2, local.month);
    put(digits, 6, 2, local.day);
}

void append_number(std::string& text, std::int64_t number) {
    char digits[24];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    text.append(digits, end);
}

std::string blank_number(double number) {
    if (number == 0) return " 0";
    char digits[40]; // d.ddddddddddddddE-03
    std::snprintf(digits, sizeof digits, "%.14E", std::abs(number));
    std::string mantissa(digits, std::string_view(digits).find('E'));
    const int exponent = std::atoi(digits + mantissa.size() + 1);
    mantissa.erase(1, 1); // the point
    mantissa.erase(mantissa.find_last_not_of('0') + 1);
    const int count = static_cast<int>(mantissa.size());
    std::string text(1, number < 0 ? '-' : ' ');
    if (exponent < 0 && count - exponent - 1 <= 15) {
        text += '.' + std::string(static_cast<std::size_t>(-exponent - 1), '0') + mantissa;
    } else if (exponent >= 0 && exponent < 15) {
        if (count <= exponent + 1) {
            text += mantissa + std::string(static_cast<std::size_t>(exponent + 1 - count), '0');
        } else {
            text += mantissa.insert(static_cast<std::size_t>(exponent + 1), ".");
        }
    } else {
        if (count > 1) mantissa.insert(1, ".");
        std::snprintf(digits, sizeof digits, "E%c%02d", exponent < 0 ? '-' : '+', std::abs(exponent));
        text += mantissa + digits;
    }
    return text;
}

std::int64_t nearest(double number) {
    const double below = std::floor(number);
    const double rest = number - below;
    const auto whole = static_cast<std::int64_t>(below);
    if (rest > 0.5 || (rest == 0.5 && whole % 2 != 0)) return whole + 1;
    return whole;
}

std::int64_t tenth(std::int64_t number) {
    const std::int64_t whole = number / 10;
    const std::int64_t rest = number % 10;
    return whole + (rest > 5 || (rest == 5 && whole % 2 != 0) ? 1 : 0);
}

double leading_number(std::string_view text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    if (text.starts_with('+')) text.remove_prefix(1);
    double number = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), number);
    return read.ec == std::errc() && std::isfinite(number) ? number : 0;
}

std::string lower(std::string_view text) {
    std::string result(text);
    for (char& c : result)
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    return result;
}

std::string plain_path(std::string_view path) {
    std::string plain;
    for (char c : path) {
        if (c == '\\') c = '/';
        if (c == '/' && plain.ends_with('/')) continue;
        plain += c;
        if (plain == "./") plain.clear();
    }
    return plain;
}

std::string shown(std::string_view text) {
    std::string result = "\"";
    for (const char c : text.substr(0, 200)) {
        if (c == '\r') {
            result += "\\r";
        } else if (c == '\n') {
            result += "\\n";
        } else {
            result += c;
        }
    }
    if (text.size() > 200) result += "... (" + std::to_string(text.size()) + " characters)";
    return result + '"';
}

void byte_sum::add(std::string_view bytes) {
    constexpr std::uint64_t k = 0x9E3779B97F4A7C15u;
    constexpr std::uint64_t k2 = k * k, k4 = k2 * k2;
    length += bytes.size();
    std::size_t i = 0;
    const auto byte = [&](std::size_t at) -> std::uint64_t {
        return static_cast<unsigned char>(bytes[at]) + 1u;
    };
    for (; i + 4 <= bytes.size(); i += 4)
        sum = sum * k4 + (byte(i) * k + byte(i + 1)) * k2 + byte(i + 2) * k + byte(i + 3);
    for (; i < bytes.size(); ++i)
        sum = sum * k + byte(i);
}

void complaint_book::add(std::string what) {
    if (full()) return;
    const wall_time& local = now_.local;
    char moment[64];
    std::snprintf(moment, sizeof moment, "%04d-%02d-%02d %s: ", local.year, local.month, local.day,
                  now_.hms.c_str());
    complaints.push_back({now_.ms, moment + std::move(what)});
}

} // namespace months::check
