// Texts: the settings file's, a text box, Windows-1252.

#include "fuzz/machine.h"
#include "fuzz/numbers_and_texts.h"

#include "basics/ansi.h"
#include "controls/text_box.h"
#include "platform/simulation.h"
#include "settings/ini.h"
#include "settings/ini_text.h"

namespace tyxo::fuzzing {

namespace {

/// Letters, digits and blanks inside, as the program's own keys have them.
std::string key_of(input& in) {
    std::string key = "k";
    for (i32 left = in.below(8); left > 0; --left)
        key += "abcXYZ 12_"[in.below(10)];
    return key + 'k';
}

std::ptrdiff_t lines_in(std::string_view text) {
    return std::ranges::count(text, '\n') + (text.empty() || text.ends_with('\n') ? 0 : 1);
}

void settings_texts(input& in) {
    const std::string key = key_of(in);
    const std::string other = key_of(in);
    const std::string value = typed_text(in);
    const std::string text(in.rest());
    const std::string written = Ini::set_key(text, "tyxo", key, value);
    expect(Ini::get_key(written, "TYXO", key) == read_of(value), "what was written is read back");
    expect(Ini::set_key(written, "tyxo", key, value) == written, "writing twice is writing once");
    const std::string line = key + '=' + value;
    const auto more = lines_in(written) - lines_in(text);
    const bool section =
        written.ends_with("[tyxo]\r\n" + line + "\r\n") || written.ends_with("[tyxo]\n" + line + "\n");
    expect(more == 0 || more == 1 || (more == 2 && section), "a key needs a line, a section another");
    const bool same = std::ranges::equal(key, other, {}, tolower, tolower);
    expect(same || Ini::get_key(written, "tyxo", other) == Ini::get_key(text, "tyxo", other),
           "other keys stay");
    expect(Ini::get_key(written, "other", key) == Ini::get_key(text, "other", key), "other sections stay");
}

void settings_files(input& in) {
    const std::string key = key_of(in);
    const std::string value = typed_text(in);
    simulation::put_file("tyxo.ini", in.rest());
    Ini::ini_write(key, value);
    expect(Ini::ini_read(key) == read_of(value).substr(0, Ini::value_limit), "what was written is read back");
    {
        const Ini::one_change both;
        Ini::ini_write(key, "1");
        Ini::ini_write(key + 'x', "2");
        expect(Ini::ini_read(key) == "1", "a change is read before it ends");
    }
    expect(Ini::ini_read(key) == "1" && Ini::ini_read(key + 'x') == "2", "a change is written as a whole");
}

void text_boxes(input& in) {
    text_box box;
    std::string model;
    std::uint64_t appended = 0;
    while (!in.empty()) {
        if (in.flag()) {
            const std::string_view line = in.short_text();
            box.append(line);
            model += line;
            appended += line.size();
        } else {
            const std::size_t kept = in.byte();
            box.keep_last(kept);
            if (model.size() > kept) model.erase(0, model.size() - kept);
        }
        expect(box.text() == model && box.size() == model.size(), "a box holds the last of its text");
        expect(box.appended() == appended && box.dropped() == appended - model.size(), "a box counts");
        expect(box.caret() <= box.appended(), "the caret is in the text");
    }
}

void characters(input& in) {
    const std::string_view text = in.rest();
    const std::string utf8 = utf8_from_ansi(text);
    std::string back(text);
    for (char& letter : back)
        if (std::string_view("\x81\x8D\x8F\x90\x9D").find(letter) != std::string_view::npos) letter = '?';
    expect(ansi_from_utf8(utf8) == back, "what has a character comes back");
    const std::string ansi = ansi_from_utf8(text);
    expect(ansi.size() <= text.size(), "no character becomes two");
    expect(ansi_from_utf8(utf8_from_ansi(ansi)) == ansi, "Windows-1252 has only characters of its own");
}

} // namespace

void check_texts(input& in) {
    constexpr auto checks =
        std::to_array<void (*)(input&)>({settings_texts, settings_files, text_boxes, characters});
    at(checks, in.below(static_cast<i32>(checks.size())))(in);
}

} // namespace tyxo::fuzzing
