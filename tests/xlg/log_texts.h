#pragma once
// Logs for the tests: golden ones, and what can be done to them.

#include "xlg/line_reader.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace tyxo::xlg {

/// The bytes of a text, in pieces of so many at most.
inline byte_source source_of(std::string text, std::size_t piece = 1 << 20) {
    struct place {
        std::string text;
        std::size_t at = 0;
    };
    const auto from = std::make_shared<place>(place{std::move(text)});
    return [from, piece](std::span<char> room) {
        const std::size_t length = from->text.copy(room.data(), std::min(room.size(), piece), from->at);
        from->at += length;
        return length;
    };
}

inline std::string file_content(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << "no file " << path;
    return {std::istreambuf_iterator<char>(stream), {}};
}

inline std::filesystem::path golden_folder() {
    return std::filesystem::path(__FILE__).parent_path().parent_path() / "logging" / "golden";
}

/// A header of 106 lines, and REC1, REC2, REC3, a note, REC1 and two comments in lines 107 to 113.
inline std::string six_cylinders() {
    return file_content(golden_folder() / "six_cylinders_in_line.xlg");
}

/// The first 106 lines of it.
inline std::string a_header() {
    const std::string log = six_cylinders();
    return log.substr(0, log.find("<LOG>\r\n") + 7);
}

/// The text with the first `from` in it replaced, which has to be there.
inline std::string changed(std::string text, std::string_view from, std::string_view to) {
    const auto at = text.find(from);
    EXPECT_NE(at, text.npos) << "there is no " << from;
    if (at != text.npos) text.replace(at, from.size(), to);
    return text;
}

/// The golden log likewise.
inline std::string golden_with(std::string_view from, std::string_view to) {
    return changed(six_cylinders(), from, to);
}

/// The header with these lines behind it.
inline std::string log_of(const std::vector<std::string>& lines) {
    std::string text = a_header();
    for (const std::string& line : lines)
        text += line + "\r\n";
    return text;
}

/// A curve record, its values from `first` on.
inline std::string curve_line(const std::string& tag, int first = 500, int count = 256) {
    std::string text = "<" + tag + "> 13:05:09 ";
    for (int value = first; value < first + count; ++value)
        text += std::to_string(value) + " ";
    return text + " </" + tag + ">";
}

inline std::vector<std::string> lines_of(const std::string& text) {
    std::vector<std::string> lines;
    std::size_t begin = 0;
    for (auto end = text.find('\n'); end != text.npos; end = text.find('\n', begin)) {
        lines.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    if (begin < text.size()) lines.push_back(text.substr(begin));
    return lines;
}

} // namespace tyxo::xlg
