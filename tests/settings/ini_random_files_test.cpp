// Random settings files against a reader and writer of another making: whole lines in a list.

#include "settings/ini_text.h"

#include <gtest/gtest.h>

#include <array>
#include <cctype>
#include <random>
#include <vector>

namespace tyxo::Ini {
namespace {

constexpr std::string_view section = "tyxo";

struct reference_line {
    std::string text;
    std::string line_end;
};

std::vector<reference_line> lines_of(const std::string& text) {
    std::vector<reference_line> lines;
    reference_line line;
    for (const char letter : text) {
        if (letter != '\n') {
            line.text += letter;
            continue;
        }
        line.line_end = "\n";
        if (!line.text.empty() && line.text.back() == '\r') {
            line.text.pop_back();
            line.line_end = "\r\n";
        }
        lines.push_back(line);
        line = {};
    }
    if (!line.text.empty()) lines.push_back(line);
    return lines;
}

std::string upper(std::string text) {
    for (char& letter : text)
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - 'a' + 'A');
    return text;
}

std::string stripped(std::string text) {
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.erase(0, 1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.pop_back();
    return text;
}

/// The index of the key's line, or the count of lines.
std::size_t line_of_key(const std::vector<reference_line>& lines, const std::string& key) {
    bool inside = false;
    for (std::size_t index = 0; index < lines.size(); ++index) {
        const std::string text = stripped(lines[index].text);
        if (!text.empty() && text[0] == '[') {
            if (inside) break;
            inside = upper(text) == "[" + upper(std::string(section)) + "]";
            continue;
        }
        const std::size_t equals = text.find('=');
        if (!inside || text.empty() || text[0] == ';' || equals == text.npos) continue;
        if (upper(stripped(text.substr(0, equals))) == upper(key)) return index;
    }
    return lines.size();
}

std::string reference_value(const std::vector<reference_line>& lines, const std::string& key) {
    const std::size_t index = line_of_key(lines, key);
    if (index == lines.size()) return "";
    std::string value = stripped(lines[index].text.substr(lines[index].text.find('=') + 1));
    const bool quoted = value.size() > 1 && (value[0] == '"' || value[0] == '\'') && value[0] == value.back();
    return quoted ? value.substr(1, value.size() - 2) : value;
}

class random_file {
  public:
    explicit random_file(unsigned seed) : source_(seed) {}

    std::string text() {
        const std::array<std::string, 2> kinds{"\r\n", "\n"};
        const int manner = below(3); // all CR LF, all LF, mixed
        std::string whole;
        const int count = below(25);
        for (int line = 0; line < count; ++line) {
            whole += one_line();
            const bool last = line + 1 == count;
            if (last && below(3) == 0) break;
            whole += kinds[static_cast<std::size_t>(manner == 2 ? below(2) : manner)];
        }
        return whole;
    }
    std::string key() { return pick<6>({"alpha", "Beta", "IPport", "location 1", "gamma", "x"}); }
    std::string value() {
        return pick<9>(
            {" 500", "-1", "C:\\log files\\", "", "M\xFCller \x80", "a=b", "; no comment", "\" q \"", "'"});
    }

  private:
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(source_); }
    template <std::size_t N> std::string pick(const std::array<std::string, N>& choices) {
        return choices[static_cast<std::size_t>(below(static_cast<int>(N)))];
    }
    std::string other_case(std::string text) {
        for (char& letter : text)
            if (below(2) == 0) letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
        return text;
    }
    std::string one_line() {
        switch (below(8)) {
        case 0:
            return pick<4>({"[tyxo]", "[TYXO]", "[other]", " [Tyxo] "});
        case 1:
            return pick<4>({"", "   ", "\t", "; alpha=comment"});
        case 2:
            return pick<4>({"alpha", ";[tyxo]", "no key at all", "=value of no key"});
        default:
            return pick<3>({"", " ", "\t"}) + other_case(key()) + pick<3>({"", " ", "\t "}) + "=" +
                   pick<3>({"", " ", "  "}) + value() + pick<3>({"", " ", "\t"});
        }
    }
    std::mt19937 source_;
};

constexpr unsigned files = 1500;

TEST(IniRandomFiles, EveryKeyReadsLikeTheReferenceReadsIt) {
    for (unsigned seed = 0; seed < files; ++seed) {
        random_file random(seed);
        const std::string text = random.text();
        for (const char* key : {"alpha", "beta", "ipPORT", "location 1", "gamma", "x", "missing"}) {
            ASSERT_EQ(get_key(text, section, key), reference_value(lines_of(text), key))
                << "seed " << seed << ", key " << key << ", file:\n"
                << text;
        }
    }
}

TEST(IniRandomFiles, WritingAKeyLeavesEveryOtherLineByteForByte) {
    for (unsigned seed = 0; seed < files; ++seed) {
        random_file random(seed);
        const std::string text = random.text();
        const std::string key = random.key();
        const std::string value = random.value();
        const std::string written = set_key(text, section, key, value);
        const auto before = lines_of(text);
        auto after = lines_of(written);
        const std::string trace =
            "seed " + std::to_string(seed) + ", key " + key + ", file:\n" + text + "\nwritten:\n" + written;

        const std::size_t place = line_of_key(after, key);
        ASSERT_LT(place, after.size()) << trace;
        ASSERT_TRUE(after[place].text.ends_with("=" + value)) << trace;

        const bool replaced = line_of_key(before, key) < before.size();
        if (replaced) {
            ASSERT_EQ(place, line_of_key(before, key)) << trace;
            ASSERT_EQ(after[place].line_end, before[place].line_end) << trace;
            const std::size_t equals = before[place].text.find('=');
            ASSERT_EQ(after[place].text.substr(0, equals + 1), before[place].text.substr(0, equals + 1))
                << trace;
            after[place] = before[place];
        } else {
            after.erase(after.begin() + static_cast<std::ptrdiff_t>(place));
            const bool section_added = after.size() > before.size();
            if (section_added) {
                ASSERT_EQ(after.back().text, "[tyxo]") << trace;
                after.pop_back();
            }
            // A last line without an end gets one, and nothing else.
            if (!before.empty() && before.back().line_end.empty() && after.size() == before.size())
                after.back().line_end.clear();
        }
        ASSERT_EQ(after.size(), before.size()) << trace;
        for (std::size_t line = 0; line < before.size(); ++line) {
            ASSERT_EQ(after[line].text, before[line].text) << trace;
            ASSERT_EQ(after[line].line_end, before[line].line_end) << trace;
        }
    }
}

TEST(IniRandomFiles, AWrittenNumberOrTextIsReadBack) {
    for (unsigned seed = 0; seed < files; ++seed) {
        random_file random(seed);
        const std::string text = random.text();
        const std::string key = random.key();
        for (const std::string value : {" 500", "-7", "C:\\log files\\", "M\xFCller", "a=b;c"}) {
            const std::string read = get_key(set_key(text, section, key, value), section, upper(key));
            ASSERT_EQ(read, stripped(value)) << "seed " << seed << ", key " << key << ", file:\n" << text;
        }
    }
}

} // namespace
} // namespace tyxo::Ini
