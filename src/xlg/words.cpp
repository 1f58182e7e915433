#include "xlg/words.h"

#include "basics/ansi.h"

#include <algorithm>
#include <array>

namespace tyxo::xlg {

namespace {

std::string hex_digits(char byte) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    const auto value = static_cast<unsigned char>(byte);
    return {digits[value / 16U], digits[value % 16U]};
}

constexpr std::array<bool, 256> no_text = [] {
    std::array<bool, 256> table{};
    for (unsigned byte = 0; byte < 32; ++byte)
        table[byte] = true;
    for (const unsigned byte : {0x7FU, 0x81U, 0x8DU, 0x8FU, 0x90U, 0x9DU})
        table[byte] = true;
    return table;
}();

} // namespace

bool is_no_text(char byte) {
    return no_text[static_cast<unsigned char>(byte)];
}

std::string shortened(std::string_view ansi, std::size_t most) {
    std::string text;
    for (const char byte : ansi.substr(0, most)) {
        if (is_no_text(byte))
            text += "\\x" + hex_digits(byte);
        else
            text += utf8_from_ansi({&byte, 1});
    }
    return ansi.size() > most ? text + "..." : text;
}

std::string grouped(std::int64_t number) {
    const std::string digits = std::to_string(number);
    std::string text;
    for (std::size_t at = 0; at < digits.size(); ++at) {
        if (at > 0 && (digits.size() - at) % 3 == 0) text += ',';
        text += digits[at];
    }
    return text;
}

std::string counted(std::int64_t number, std::string_view one, std::string_view more) {
    return grouped(number).append(" ").append(number == 1 ? one : more);
}

std::string duration(std::int64_t seconds) {
    const auto two = [](std::int64_t many, const char* unit, std::int64_t few, const char* unit_of_few) {
        return std::to_string(many) + unit + std::to_string(few) + unit_of_few;
    };
    if (seconds < 60) return std::to_string(seconds) + " s";
    if (seconds < 3600) return two(seconds / 60, " min ", seconds % 60, " s");
    return two(seconds / 3600, " h ", seconds % 3600 / 60, " min");
}

std::string bytes_fault(std::string_view text) {
    const auto first = std::ranges::find_if(text, is_no_text);
    if (first == text.end()) return {};
    return counted(std::ranges::count_if(text, is_no_text), "byte is", "bytes are") +
           " no text, the first one 0x" + hex_digits(*first) + " at character " +
           std::to_string(first - text.begin() + 1);
}

bool begins_alarm(std::string_view text) {
    const auto has = [text](std::string_view word) { return text.find(word) != text.npos; };
    return text.ends_with(" ON") && (has("ALARM") || has("Prealarm") || has("Overspeed Alarm"));
}

std::string_view end_fault(line_end end) {
    switch (end) {
    case line_end::lf:
        return "it ends in LF without CR";
    case line_end::cr:
        return "it ends in CR without LF";
    case line_end::none:
        return "it has no line end";
    default:
        return {};
    }
}

void findings::wrong(const line& where, std::string_view what) {
    ++wrong_;
    tell(&where, what);
}

void findings::wrong(std::string_view what) {
    ++wrong_;
    tell(nullptr, what);
}

void findings::remark(const line& where, std::string_view what) {
    ++remarks_;
    tell(&where, "remark: " + std::string(what));
}

void findings::remark(std::string_view what) {
    ++remarks_;
    tell(nullptr, "remark: " + std::string(what));
}

void findings::tell(const line* where, std::string_view what) {
    std::string text = name_;
    if (where != nullptr) text += ":" + std::to_string(where->number);
    text.append(": ").append(what);
    if (where != nullptr) text += " (" + shortened(where->text) + ")";
    out_(text + "\n");
}

void findings::close(std::string_view figures) {
    const std::string wrong = wrong_ == 0 ? "nothing wrong" : grouped(wrong_) + " wrong";
    const std::string remarks = remarks_ == 0 ? "" : ", " + counted(remarks_, "remark", "remarks");
    out_(name_ + ": " + wrong + remarks + "; " + std::string(figures) + "\n");
}

} // namespace tyxo::xlg
