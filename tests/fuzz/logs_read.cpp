// Any log and any event file, read by the tool that reads them again.

#include "fuzz/targets.h"

#include "link/channel_rec.h"
#include "logging/log_header.h"
#include "platform/simulation.h"
#include "xlg/check.h"
#include "xlg/csv.h"
#include "xlg/events.h"
#include "xlg/log_reader.h"
#include "xlg/mend.h"
#include "xlg/summary.h"

#include <algorithm>
#include <vector>

namespace tyxo::fuzzing {

namespace {

using namespace xlg;

/// The text in pieces of so many bytes at most.
byte_source pieces_of(std::string_view text, std::size_t piece) {
    return [text, piece](std::span<char> room) mutable {
        const std::size_t length = text.copy(room.data(), std::min(room.size(), piece));
        text.remove_prefix(length);
        return length;
    };
}

byte_source source_of(std::string_view text) {
    return pieces_of(text, text.size() + 1);
}

/// What a command says.
template <class Command> std::string said_by(const Command& command) {
    std::string text;
    command([&text](std::string_view more) { text += more; });
    return text;
}

std::ptrdiff_t count(std::string_view text, char byte) {
    return std::ranges::count(text, byte);
}

std::ptrdiff_t lines_in(std::string_view text) {
    return count(text, '\n') + (text.empty() || text.ends_with('\n') ? 0 : 1);
}

/// The states of the lines, and that each of them is what its content says.
void check_entries(std::string_view log) {
    log_reader reader(source_of(log));
    entry one;
    std::int64_t lines = 0;
    while (reader.next(one)) {
        expect(one.at.number == ++lines, "lines are numbered");
        const bool told = !one.faults.empty() || !one.faults_of_log.empty();
        expect(told || one.sound() || one.kind == line_kind::header, "what is not sound is told");
        expect(one.seconds < 86'400, "a time is one of the day");
        const bool known = one.kind == line_kind::record && one.sound();
        expect(!known || one.form != nullptr, "a sound record has a form");
        expect(!known || count(one.body, ' ') + 1 == static_cast<std::ptrdiff_t>(one.form->columns.size()),
               "a sound record has all its values");
    }
    expect(lines == lines_in(log), "every line is read");
}

void check_commands(std::string_view log, std::size_t piece) {
    const auto checked = [log](std::size_t pieces) {
        return said_by(
            [&](const text_sink& out) { static_cast<void>(check_log("F", pieces_of(log, pieces), 1, out)); });
    };
    expect(checked(piece) == checked(log.size() + 1), "pieces do not matter");
    const std::string summary =
        said_by([&](const text_sink& out) { static_cast<void>(summarise_log("F", source_of(log), 1, out)); });
    expect(summary.starts_with("F\n") && summary.ends_with("\n\n"), "a summary is whole");
    std::ptrdiff_t rows = 0;
    std::int64_t left_out = 0;
    for (const csv_lines kind : {csv_lines::records, csv_lines::curves, csv_lines::comments}) {
        const std::string table =
            said_by([&](const text_sink& out) { left_out = csv_of_log("F", source_of(log), kind, out); });
        rows += count(table, '\n');
        expect(count(table, '"') % 2 == 0, "quotes are closed");
    }
    expect(rows + left_out <= lines_in(log), "no line is in two tables");
}

void check_mended(std::string_view log) {
    const text_sink nobody = [](std::string_view) {};
    std::string copy;
    const bool sound = mend_log(
        "F", source_of(log), [&copy](std::string_view text) { copy += text; }, nobody);
    expect(!sound || copy == log, "what is sound is copied");
    const std::string again = said_by(
        [&](const text_sink& out) { static_cast<void>(mend_log("F", source_of(copy), out, nobody)); });
    expect(again == copy, "mending again changes nothing");
    log_reader reader(source_of(copy));
    entry one;
    while (reader.next(one))
        expect(one.state == damage::none || one.state == damage::doubtful, "what is mended can be read");
}

void check_event_file(std::string_view events, std::size_t piece) {
    const auto checked = [events](std::size_t pieces) {
        return said_by([&](const text_sink& out) {
            static_cast<void>(check_events("F", pieces_of(events, pieces), out));
        });
    };
    expect(checked(piece) == checked(events.size() + 1), "pieces do not matter");
    std::int64_t left_out = 0;
    const std::string table =
        said_by([&](const text_sink& out) { left_out = csv_of_events("F", source_of(events), out); });
    expect(count(table, '\n') + left_out == lines_in(events), "every event is a row");
}

/// Half of the inputs begin with a header, so that what is behind one is reached.
const std::string& a_header() {
    static const std::string header = [] {
        simulation::fresh_world();
        sensor::state.channels[0].enginetype = 4;
        return log::log_header(0);
    }();
    return header;
}

} // namespace

void logs_read(input in) {
    const u8 choice = in.byte();
    const std::size_t piece = 1 + in.byte();
    std::string text((choice & 1U) != 0 ? a_header() : "");
    // A line that is repeated grows too long, and a curve gets its many values.
    const std::string_view repeated = in.short_text();
    for (int times = in.below(40); times > 0; --times)
        text += repeated;
    text += in.rest();
    if ((choice & 2U) != 0) return check_event_file(text, piece);
    check_entries(text);
    check_commands(text, piece);
    check_mended(text);
}

} // namespace tyxo::fuzzing
