#pragma once
// The measurement logs: one ".xlg" file per channel and period, written only.
//
// Lines go through only while the channel's `log_state` is 2. Nothing here tells the operator of an error: a
// line that cannot be written is lost, and logging goes on with the next file that can be. A file holds
// nobody up longer than `output_file` tells, 10 ms; only the settings are read as long as their disk takes.

#include "basics/per_channel.h"
#include "basics/types.h"
#include "platform/files.h"

#include <string_view>

namespace tyxo::log {

/// The local date, in hourly mode with the hour, else with -1.
struct period {
    i32 year = 0;
    i32 month = 0;
    i32 day = 0;
    i32 hour = 0;
    bool operator==(const period&) const = default;
};

struct open_logs {
    period log_period;                  ///< of the files in use, one for all channels
    per_channel<output_file> log_files; ///< the open file of each channel
};

inline open_logs state;

/// Begins the channel's file of this period, or goes on with it when it exists; a new file gets its header.
/// A file that does not open raises nothing: its lines try again.
void createlog(i16 channel);

/// Writes a record of the frame's kind: "1", "3" or "4". Other kinds write nothing. Failure: the file does
/// not take the line.
void log_record(i16 channel, std::string_view kind);

/// Writes the text as a comment line, which is lost without a failure when the file does not take it.
void log_comment(i16 channel, std::string_view text);

/// Writes the text as a hash comment line. Likewise.
void log_note(i16 channel, std::string_view text);

/// Writes the closing comment and closes the file; `log_state` stays.
void close_log(i16 channel);

} // namespace tyxo::log
