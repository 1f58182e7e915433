#include "xlg/record_form.h"

#include "basics/number_text.h"
#include "logging/log_columns.h"
#include "xlg/words.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cstring>
#include <utility>

namespace tyxo::xlg {

namespace {

constexpr std::size_t time_length = 8;

/// What the Evaluator's frames can bring into a column: docs/file-formats.md.
struct column_range {
    std::string_view type;
    std::uint32_t most;
    std::string_view unit;
};
constexpr auto column_ranges = std::to_array<column_range>({{"T2", 3277, "% of alarm level"},
                                                            {"T3", 6554, "rpm"},
                                                            {"T4", 65535, "converter value"},
                                                            {"T5", 65535, "count"},
                                                            {"T6", 32768, "0.01 mV"},
                                                            {"T7", 6554, "% of alarm level"},
                                                            {"T8", 6554, "% of alarm level"}});

constexpr std::uint64_t ones = 0x0101010101010101;
constexpr std::uint64_t high_bits = 0x8080808080808080;

/// Eight characters at once, the first one in the lowest byte.
std::uint64_t eight_characters(const char* at) {
    std::uint64_t characters = 0;
    std::memcpy(&characters, at, sizeof characters);
    if constexpr (std::endian::native == std::endian::big) characters = __builtin_bswap64(characters);
    return characters;
}

/// The length of the number that begins here and has a blank behind it, or 0 if there is no such number up to
/// the limit. Eight characters can be read.
unsigned number_length(const char* at, const column_limit& limit) {
    const std::uint64_t characters = eight_characters(at);
    const std::uint64_t without_blanks = characters ^ (ones * ' ');
    const std::uint64_t blanks = (without_blanks - ones) & ~without_blanks & high_bits;
    const auto length = static_cast<unsigned>(std::countr_zero(blanks)) / 8;
    if (length - 1 >= limit.digits) return 0; // 0 too, and 8 without a blank
    const std::uint64_t these = ~std::uint64_t{0} >> (64 - 8 * length);
    const std::uint64_t number = characters & these;
    const std::uint64_t digits = number ^ (ones * '0' & these);
    if ((((digits + ones * 0x76) | digits) & high_bits) != 0) return 0;
    if (*at == '0' && length > 1) return 0;
    if (length == limit.digits && __builtin_bswap64(number) > limit.order) return 0;
    return length;
}

column_limit limit_of(std::string_view name, const column_range& range) {
    const std::string text = plain(static_cast<i32>(range.most));
    std::array<char, 8> characters{};
    std::ranges::copy(text, characters.begin());
    return {name, range.unit, range.most, static_cast<unsigned>(text.size()),
            __builtin_bswap64(eight_characters(characters.data()))};
}

record_form make_form(const log::log_record_kind& kind) {
    record_form form;
    form.tag = kind.tag;
    form.opening = "<" + form.tag + "> ";
    form.closing = std::string(kind.gap) + "</" + form.tag + ">";
    for (const log::log_column& column : log::log_columns()) {
        const auto* const range = std::ranges::find(column_ranges, column.type, &column_range::type);
        if (column.frame != kind.frame || range == column_ranges.end()) continue;
        const bool samples = std::holds_alternative<log::curve_samples_of>(column.value);
        form.curve = form.curve || samples;
        form.columns.insert(form.columns.end(), samples ? curve_samples : 1, limit_of(column.name, *range));
    }
    return form;
}

bool digit_at(std::string_view text, std::size_t index) {
    return text[index] >= '0' && text[index] <= '9';
}

bool is_number(std::string_view text) {
    const std::string_view digits = text.starts_with('-') ? text.substr(1) : text;
    return !digits.empty() && digits.find_first_not_of("0123456789") == digits.npos &&
           (digits.size() == 1 || digits[0] != '0');
}

/// "value 3", of a record with a few values with its name.
std::string value_name(const record_form& form, std::size_t index) {
    if (form.curve) return "value " + std::to_string(index + 1);
    return std::string(form.columns[index].name);
}

std::string values_there(const record_form& form, std::size_t count) {
    return std::to_string(count) + " of " + std::to_string(form.columns.size()) + " values";
}

/// Every value with a blank behind it; a rest without one is a value too.
std::vector<std::string_view> split_values(std::string_view text) {
    std::vector<std::string_view> values;
    while (!text.empty()) {
        const auto blank = std::min(text.find(' '), text.size());
        values.push_back(text.substr(0, blank));
        text.remove_prefix(std::min(blank + 1, text.size()));
    }
    return values;
}

record_fault values_fault(const record_form& form, const std::vector<std::string_view>& values) {
    if (values.size() != form.columns.size())
        return {"has " + std::to_string(values.size()) + " values and not " +
                std::to_string(form.columns.size())};
    for (std::size_t index = 0; index < values.size(); ++index)
        if (!is_number(values[index]))
            return {value_name(form, index) + " is no number: " + (values[index].empty() ? "nothing" : "") +
                    shortened(values[index], 20)};
    for (std::size_t index = 0; index < values.size(); ++index) {
        const std::string padded_value = std::string(values[index]) + "        ";
        if (number_length(padded_value.data(), form.columns[index]) != 0) continue;
        return {value_name(form, index) + " is " + shortened(values[index], 20) + ", not within 0 to " +
                    std::to_string(form.columns[index].most),
                true};
    }
    return {"its blanks are not those of a record"};
}

} // namespace

std::string_view record_form::values_of(std::string_view text) const {
    const std::size_t front = opening.size() + time_length + 1;
    return text.substr(front, text.size() - front - closing.size() - 1);
}

bool record_form::fits(std::string_view text) const {
    const std::size_t front = opening.size() + time_length + 1;
    if (text.size() <= front + closing.size() || !text.starts_with(opening) || !text.ends_with(closing))
        return false;
    if (!is_time(text.substr(opening.size(), time_length)) || text[front - 1] != ' ') return false;
    const char* at = text.data() + front;
    const char* const end = text.data() + text.size() - closing.size(); // seven characters or more behind it
    for (const column_limit& limit : columns) {
        if (at >= end) return false;
        const unsigned length = number_length(at, limit);
        if (length == 0) return false;
        at += length + 1;
    }
    return at == end;
}

std::span<const record_form> record_forms() {
    static const std::vector<record_form> forms = [] {
        std::vector<record_form> made;
        for (const log::log_record_kind& kind : log::log_record_kinds())
            made.push_back(make_form(kind));
        return made;
    }();
    return forms;
}

const record_form* form_of(std::string_view text) {
    for (const record_form& form : record_forms())
        if (text.starts_with(form.opening)) return &form;
    return nullptr;
}

record_fault fault_of(const record_form& form, std::string_view text) {
    const std::string_view inside = text.substr(form.opening.size());
    if (const auto again = inside.find("<REC"); again != inside.npos)
        return {"torn, another line begins at character " + std::to_string(form.opening.size() + again + 1)};
    const std::size_t values_at = time_length + 1;
    if (!text.ends_with(form.closing)) {
        if (text.ends_with("</" + form.tag + ">")) return {"its blanks are not those of a record"};
        const bool timed = inside.size() >= values_at && is_time(inside.substr(0, time_length));
        const std::string_view values = timed ? inside.substr(values_at) : "";
        const auto count = static_cast<std::size_t>(std::ranges::count(values, ' '));
        if (count <= form.columns.size())
            return {"torn, cut behind " + (timed ? values_there(form, count) : "its beginning")};
        return {"torn, cut in its end"};
    }
    const std::string_view content = inside.substr(0, inside.size() - form.closing.size());
    const std::string_view time = content.substr(0, content.find(' '));
    if (!is_time(time)) return {"its time is none: " + shortened(time, 20)};
    return values_fault(form, split_values(content.substr(std::min(values_at, content.size()))));
}

bool is_time(std::string_view text) {
    if (text.size() != time_length || text[2] != ':' || text[5] != ':') return false;
    for (const std::size_t index : {0U, 1U, 3U, 4U, 6U, 7U})
        if (!digit_at(text, index)) return false;
    return text.substr(0, 2) < "24" && text[3] < '6' && text[6] < '6';
}

int seconds_of(std::string_view time) {
    const auto two = [time](std::size_t at) { return 10 * (time[at] - '0') + (time[at + 1] - '0'); };
    return 3600 * two(0) + 60 * two(3) + two(6);
}

} // namespace tyxo::xlg
