#include "xlg/events.h"

#include "basics/ansi.h"
#include "xlg/csv.h"
#include "xlg/log_clock.h"
#include "xlg/record_form.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace tyxo::xlg {

namespace {

// ##;07-02-2026;13:05:09;KVD Engine 1 ## Main Alarm DC ON
constexpr std::string_view mark = "##;";
constexpr std::size_t time_at = 14;
constexpr std::size_t text_at = 23;

struct event {
    std::optional<local_time> date; ///< the day alone
    int seconds = 0;                ///< since midnight
    std::string_view text;
    std::string fault; ///< why it cannot be read; empty if it can
};

std::optional<local_time> date_of(std::string_view text) {
    if (text.size() != 10 || text[2] != '-' || text[5] != '-') return std::nullopt;
    return date_of_digits(std::string(text.substr(6)).append(text.substr(0, 2)).append(text.substr(3, 2)));
}

/// Where another event begins in the text, or npos.
std::size_t another_event(std::string_view text) {
    for (auto at = text.find(mark, 1); at != text.npos; at = text.find(mark, at + 1))
        if (date_of(text.substr(at + mark.size(), 10))) return at;
    return text.npos;
}

/// "torn, cut behind its date" of a line that is too short.
std::string cut_fault(std::string_view text) {
    const auto fields = std::ranges::count(text, ';');
    constexpr std::string_view names[] = {"beginning", "mark", "date", "time"};
    return "torn, cut behind its " + std::string(names[std::min<std::ptrdiff_t>(fields, 3)]);
}

event read_event(const line& at) {
    const std::string_view text = at.text;
    event found;
    const auto fault = [&found](std::string what) {
        found.fault = std::move(what);
        return found;
    };
    if (at.too_long()) return fault("a line of " + grouped(at.length) + " characters, longer than any event");
    if (text.empty()) return fault("an empty line");
    if (!text.starts_with(mark))
        return fault(mark.starts_with(text) ? cut_fault(text) : "no line of an event file");
    if (const auto again = another_event(text); again != text.npos)
        return fault("torn, another line begins at character " + std::to_string(again + 1));
    if (text.size() < text_at) return fault(cut_fault(text));
    const std::string_view date = text.substr(mark.size(), time_at - mark.size() - 1);
    const std::string_view time = text.substr(time_at, 8);
    found.date = date_of(date);
    if (!found.date || text[time_at - 1] != ';') return fault("its date is none: " + shortened(date));
    if (!is_time(time) || text[text_at - 1] != ';') return fault("its time is none: " + shortened(time));
    found.seconds = seconds_of(time);
    found.text = text.substr(text_at);
    return found;
}

std::string all_faults(const event& one, const line& at) {
    std::string fault = one.fault;
    const std::string bytes = bytes_fault(at.text);
    const bool ended = at.end == line_end::cr_lf;
    if (!bytes.empty()) fault += (fault.empty() ? "" : "; ") + bytes;
    if (!ended) fault.append(fault.empty() ? "torn, " : "; ").append(end_fault(at.end));
    return fault;
}

/// Seconds since some day.
std::int64_t moment_of(const event& one) {
    using namespace std::chrono;
    const sys_days day = year(one.date->year) / one.date->month / one.date->day;
    return 86'400LL * day.time_since_epoch().count() + one.seconds;
}

} // namespace

bool check_events(const std::string& name, byte_source source, const text_sink& out) {
    line_reader lines(std::move(source));
    findings found(name, out);
    std::int64_t events = 0;
    std::optional<std::int64_t> last;
    line at;
    while (lines.next(at)) {
        const event one = read_event(at);
        if (const std::string fault = all_faults(one, at); !fault.empty()) found.wrong(at, fault);
        if (!one.fault.empty()) continue;
        ++events;
        const std::int64_t now = moment_of(one);
        if (last && now < *last) found.remark(at, "time runs back by " + duration(*last - now));
        last = now;
    }
    found.close(counted(at.number, "line", "lines") + ", " + counted(events, "event", "events") + ", " +
                counted(lines.bytes(), "byte", "bytes"));
    return found.wrong_count() == 0;
}

std::string events_csv_head() {
    return "file,line,time,text\r\n";
}

std::int64_t csv_of_events(const std::string& name, byte_source source, const text_sink& out) {
    line_reader lines(std::move(source));
    std::int64_t left_out = 0;
    std::string row;
    line at;
    while (lines.next(at)) {
        const event one = read_event(at);
        if (!one.fault.empty() || !bytes_fault(at.text).empty()) {
            ++left_out;
            continue;
        }
        row.clear();
        append_csv_text(row, name);
        row.append(",").append(std::to_string(at.number)).append(",");
        row.append(iso_time(one.date, 0, one.seconds)).append(",");
        append_csv_text(row, utf8_from_ansi(one.text));
        out(row.append("\r\n"));
    }
    return left_out;
}

} // namespace tyxo::xlg
