#pragma once
// The plant-wide event file: one line per event of the whole system, in the order in which they happened.

#include "basics/types.h"
#include "platform/files.h"

#include <string>
#include <string_view>

namespace tyxo {

struct event_file_state {
    std::string event_path;         ///< of the event file
    i16 event_fileno = 0;           ///< from the range above those of the logs
    output_file event_output;       ///< open while a line is written
    bool event_file_failed = false; ///< a write has failed: no more lines in this run
};

inline event_file_state event_file;

/// Reads the folder and builds the path, when the event file is enabled.
void event_file_init();

/// Appends "##;" and the text as one line; the disk is waited for as `output_file` tells. The first failure
/// is told in a message box, which waits as `message_box` tells, and ends the event file for this run.
void event_line(std::string_view text);

} // namespace tyxo
