#include "settings/ini_text.h"

#include <algorithm>

namespace tyxo::Ini {

namespace {

constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

char lower(char letter) {
    return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter + 32) : letter;
}

bool same_name(std::string_view one, std::string_view other) {
    return std::ranges::equal(one, other, {}, lower, lower);
}

std::string_view unquoted(std::string_view value) {
    const bool quoted =
        value.size() >= 2 && (value.front() == '"' || value.front() == '\'') && value.back() == value.front();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

/// A line of the text: its place without the line end, and its parts if it is a key.
struct line {
    std::size_t begin;
    std::size_t end;  ///< behind the last character before CR LF or LF
    std::size_t next; ///< begin of the next line
    std::string_view content;
};

line line_at(std::string_view text, std::size_t begin) {
    const auto feed = std::min(text.find('\n', begin), text.size());
    const bool carriage_return = feed > begin && feed < text.size() && text[feed - 1] == '\r';
    const std::size_t end = carriage_return ? feed - 1 : feed;
    return {begin, end, std::min(feed + 1, text.size()), trimmed(text.substr(begin, end - begin))};
}

/// The name of a section line, or nothing for any other line.
std::string_view section_name(std::string_view content) {
    const auto close = content.find(']');
    if (!content.starts_with('[') || close == content.npos) return {};
    return trimmed(content.substr(1, close - 1));
}

/// Where the key stands, or where it would be added.
struct place {
    bool section_found = false;
    bool key_found = false;
    line key_line{};
    std::size_t insert_at = 0; ///< behind the last line of the section that is not blank
};

place find(std::string_view text, std::string_view section, std::string_view key) {
    place result;
    for (std::size_t at = 0; at < text.size();) {
        const line current = line_at(text, at);
        at = current.next;
        if (current.content.starts_with('[')) {
            if (result.section_found) break;
            result.section_found = same_name(section_name(current.content), section);
        }
        if (!result.section_found) continue;
        if (!current.content.empty()) result.insert_at = current.next;
        const auto equals = current.content.find('=');
        if (current.content.starts_with(';') || current.content.starts_with('[') ||
            equals == std::string_view::npos)
            continue;
        if (same_name(trimmed(current.content.substr(0, equals)), key)) {
            result.key_found = true;
            result.key_line = current;
            break;
        }
    }
    return result;
}

std::string_view line_end(std::string_view text) {
    const auto feed = text.find('\n');
    const bool plain_feed = feed != text.npos && (feed == 0 || text[feed - 1] != '\r');
    return plain_feed ? "\n" : "\r\n";
}

} // namespace

std::string get_key(std::string_view text, std::string_view section, std::string_view key) {
    const place where = find(text, section, key);
    if (!where.key_found) return {};
    const std::string_view content = where.key_line.content;
    return std::string(unquoted(trimmed(content.substr(content.find('=') + 1))));
}

std::string set_key(std::string_view text, std::string_view section, std::string_view key,
                    std::string_view value) {
    const place where = find(text, section, key);
    std::string result(text);
    if (where.key_found) {
        // The key keeps the spelling that it has in the file.
        const auto equals = text.find('=', where.key_line.begin);
        return result.replace(equals + 1, where.key_line.end - equals - 1, value);
    }
    const std::string_view end = line_end(text);
    const std::string added = std::string(key) + '=' + std::string(value) + std::string(end);
    std::size_t at = where.section_found ? where.insert_at : result.size();
    if (at > 0 && result[at - 1] != '\n') {
        result.insert(at, end);
        at += end.size();
    }
    if (where.section_found) return result.insert(at, added);
    return result + '[' + std::string(section) + ']' + std::string(end) + added;
}

} // namespace tyxo::Ini
