#include "basics/ansi.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace tyxo {

namespace {

constexpr char32_t no_character = 0xFFFD;

// The code points of the bytes 0x80 to 0x9F; all other bytes are their own code point.
constexpr std::array<char32_t, 32> upper_controls{
    0x20AC,       no_character, 0x201A, 0x0192, 0x201E, 0x2026,       0x2020, 0x2021,
    0x02C6,       0x2030,       0x0160, 0x2039, 0x0152, no_character, 0x017D, no_character,
    no_character, 0x2018,       0x2019, 0x201C, 0x201D, 0x2022,       0x2013, 0x2014,
    0x02DC,       0x2122,       0x0161, 0x203A, 0x0153, no_character, 0x017E, 0x0178};

char32_t code_point(char byte) {
    const auto value = static_cast<unsigned char>(byte);
    return value >= 0x80 && value < 0xA0 ? upper_controls[value - 0x80U] : value;
}

void append_utf8(std::string& text, char32_t code) {
    const auto tail = [](char32_t bits) { return static_cast<char>(0x80U | (bits & 0x3FU)); };
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0U | (code >> 6U));
        text += tail(code);
    } else {
        text += static_cast<char>(0xE0U | (code >> 12U));
        text += tail(code >> 6U);
        text += tail(code);
    }
}

char ansi_byte(char32_t code) {
    if (code < 0x80 || (code >= 0xA0 && code < 0x100)) return static_cast<char>(code);
    const auto* const found = std::find(upper_controls.begin(), upper_controls.end(), code);
    if (found == upper_controls.end() || code == no_character) return '?';
    return static_cast<char>(0x80 + (found - upper_controls.begin()));
}

/// Takes one character off the text at `at`; bytes that are no UTF-8 are `no_character`, one by one.
char32_t next_code_point(std::string_view utf8, std::size_t& at) {
    const auto byte = [&utf8](std::size_t index) { return static_cast<unsigned char>(utf8[index]); };
    const unsigned char lead = byte(at++);
    if (lead < 0x80) return lead;
    const std::size_t tail = lead < 0xC0 ? 0 : lead < 0xE0 ? 1 : lead < 0xF0 ? 2 : lead < 0xF8 ? 3 : 0;
    if (tail == 0 || at + tail > utf8.size()) return no_character;
    char32_t code = lead & (0x3FU >> tail);
    for (std::size_t index = at; index < at + tail; ++index) {
        if ((byte(index) & 0xC0U) != 0x80) return no_character;
        code = (code << 6U) | (byte(index) & 0x3FU);
    }
    at += tail;
    return code;
}

} // namespace

std::string utf8_from_ansi(std::string_view ansi) {
    std::string text;
    text.reserve(ansi.size());
    for (const char byte : ansi)
        append_utf8(text, code_point(byte));
    return text;
}

std::string ansi_from_utf8(std::string_view utf8) {
    std::string text;
    for (std::size_t at = 0; at < utf8.size();) {
        const char32_t code = next_code_point(utf8, at);
        text += ansi_byte(code);
    }
    return text;
}

} // namespace tyxo
