#include "text.h"

#include <charconv>
#include <cmath>
#include <cstdio>

namespace tyxo::evaluator_sim {

namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string quoted(std::string_view word) {
    std::string text = printable(word);
    text.insert(text.begin(), '\'');
    text.push_back('\'');
    return text;
}

std::string plain(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%g", value);
    return text;
}

} // namespace

std::vector<std::string> split_words(std::string_view line) {
    std::vector<std::string> words;
    for (;;) {
        const size_t begin = line.find_first_not_of(blanks);
        if (begin == std::string_view::npos) return words;
        line.remove_prefix(begin);
        const size_t end = line.find_first_of(blanks);
        words.emplace_back(line.substr(0, end));
        if (end == std::string_view::npos) return words;
        line.remove_prefix(end);
    }
}

std::string_view trim(std::string_view text) {
    const size_t begin = text.find_first_not_of(blanks);
    if (begin == std::string_view::npos) return {};
    return text.substr(begin, text.find_last_not_of(blanks) - begin + 1);
}

double read_number(std::string_view word, std::string_view what, double low, double high) {
    double value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value);
    if (error != std::errc() || end != word.data() + word.size() || !std::isfinite(value))
        throw InputError(std::string(what) + ": " + quoted(word) + " is not a number");
    if (value < low || value > high)
        throw InputError(std::string(what) + ": " + quoted(word) + " is not in " + plain(low) + " to " +
                         plain(high));
    return value;
}

int read_integer(std::string_view word, std::string_view what, int low, int high) {
    const double value = read_number(word, what, low, high);
    if (value != std::floor(value))
        throw InputError(std::string(what) + ": " + quoted(word) + " is not a whole number");
    return static_cast<int>(value);
}

unsigned read_hex(std::string_view word, std::string_view what) {
    unsigned value = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), value, 16);
    if (word.empty() || word.size() > 4 || error != std::errc() || end != word.data() + word.size())
        throw InputError(std::string(what) + ": " + quoted(word) + " is not one to four hexadecimal digits");
    return value;
}

std::string unescape(std::string_view text) {
    std::string bytes;
    for (size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            bytes += text[i];
            continue;
        }
        const char kind = ++i < text.size() ? text[i] : '\0';
        switch (kind) {
        case 'r':
            bytes += '\r';
            break;
        case 'n':
            bytes += '\n';
            break;
        case 't':
            bytes += '\t';
            break;
        case '\\':
            bytes += '\\';
            break;
        case 'x':
            if (i + 2 >= text.size()) throw InputError("two hexadecimal digits must follow \\x");
            bytes += static_cast<char>(read_hex(text.substr(i + 1, 2), "\\x"));
            i += 2;
            break;
        default:
            throw InputError("after a backslash only r, n, t, xHH or a backslash may follow");
        }
    }
    return bytes;
}

std::string printable(std::string_view bytes) {
    std::string text;
    for (const char c : bytes) {
        if (c == '\r') {
            text += "\\r";
        } else if (c == '\n') {
            text += "\\n";
        } else if (c == '\t') {
            text += "\\t";
        } else if (c == '\\') {
            text += "\\\\";
        } else if (c >= ' ' && c <= '~') {
            text += c;
        } else {
            char escape[8];
            std::snprintf(escape, sizeof escape, "\\x%02X",
                          static_cast<unsigned>(static_cast<unsigned char>(c)));
            text += escape;
        }
    }
    return text;
}

} // namespace tyxo::evaluator_sim
