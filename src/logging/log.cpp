#include "logging/log.h"

#include "basics/number.h"
#include "basics/number_text.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "logging/log_columns.h"
#include "logging/log_header.h"
#include "platform/clock.h"
#include "platform/files.h"
#include "settings/ini.h"
#include "settings/settings.h"

namespace tyxo::log {

namespace {

bool hourly() {
    return settings.log_mode == 1;
}

period period_of(const local_time& moment) {
    return {moment.year, moment.month, moment.day, hourly() ? moment.hour : -1};
}

std::string name_digits(const local_time& moment) {
    std::string digits = date_digits(moment);
    if (hourly()) append_padded(digits, moment.hour, 2);
    return digits;
}

/// Gives every channel in use a new file when the period has changed. Looks like a mistake and stays: also a
/// channel that is not logging gets one (LogPeriod.AllChannelsInUseRotateAlsoThoseThatDoNotLog).
void check_period(const local_time& now) {
    const period current = period_of(now);
    if (current == state.log_period) return;
    state.log_period = current;
    for (i16 channel = 0; channel < sensor::state.max_sensors; ++channel) {
        close_log(channel);
        createlog(channel);
    }
}

/// The line being composed; it keeps its memory from one line to the next.
std::string line;

void print_record(i16 channel, const log_record_kind& kind, const std::string& time) {
    line.assign("<").append(kind.tag).append("> ");
    append_values(line, kind, sensor::state.channels[channel], time);
    line.append(kind.gap).append("</").append(kind.tag).append(">");
    state.log_files[channel].print(line);
}

void print_comment(i16 channel, std::string_view begin, std::string_view text) {
    if (sensor::channel_at(channel).log_state != log_states::open) return;
    const local_time now = local_now();
    const std::string time = time_text(now);
    check_period(now);
    attempt([&] {
        line.assign(begin).append(time).append(" ").append(text).append(" -->");
        state.log_files[channel].print(line);
    });
}

} // namespace

void createlog(i16 channel) {
    channel_rec& rec = sensor::channel_at(channel);
    const local_time now = local_now();
    state.log_period = period_of(now);
    // Looks like a mistake and stays: nothing is put between the two
    // (LogLifecycle.LogPathAndLocationAreJoinedWithoutASeparator).
    const std::string folder = Ini::ini_read("logpath " + channel_number(channel)) +
                               Ini::ini_read("location " + channel_number(channel));
    rec.log_fileno = static_cast<i16>(channel + 1); // every channel has a file of its own
    rec.logname = name_digits(now) + "Qu_" + Ini::ini_read("location " + channel_number(channel)) + ".xlg";
    // Looks like a mistake and stays: the debug output's words are said whatever the reason
    // (LogLifecycle.TheFolderIsMadeOnceAndThenExists).
    attempt([&] {
        state.log_files[channel].open({.path = folder + "\\" + rec.logname,
                                       .folder = folder,
                                       .no_folder = "createlog : Path exists",
                                       .header = log_header(channel)});
    });
    // Looks like a mistake and stays: in the first file of a measurement this line is lost, as `log_state`
    // follows only afterwards (LogLifecycle.AFileBeginsWithItsHeaderAndWithoutACommentOfTheStart).
    log_comment(channel, "Log Started");
}

void log_record(i16 channel, std::string_view kind) {
    const channel_rec& rec = sensor::channel_at(channel);
    if (rec.log_state != log_states::open) return;
    const local_time now = local_now();
    const std::string time = time_text(now);
    check_period(now);
    const i32 frame = round_even<i32>(leading_number(kind));
    for (const log_record_kind& row : log_record_kinds())
        if (row.frame == frame) print_record(channel, row, time);
}

void log_comment(i16 channel, std::string_view text) {
    print_comment(channel, "<!-- ", text);
}

void log_note(i16 channel, std::string_view text) {
    print_comment(channel, "<#-- ", text);
}

void close_log(i16 channel) {
    log_comment(channel, "Measure Stopped");
    state.log_files[channel].close();
}

} // namespace tyxo::log
