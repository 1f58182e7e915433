#include "xlg/arguments.h"

namespace tyxo::xlg {

namespace {

constexpr std::string_view tool_page =
    R"(xlg COMMAND [OPTION]... FILE...    reads the logs and the event file of the Tyxo Data Logger

  check      what is wrong in a log, at which line, in which record
  summary    engine, period, records, alarms, extremes of the values, gaps
  csv        records, curves or comments as a table
  mend       a repaired copy of a log
  events     what is wrong in an event file, or the event file as a table
  plot       a picture of the logs: strip charts of any time, or one engine cycle
  view       the logs in a window

"xlg COMMAND --help" tells about one of them. A FILE "-" is standard input. Several files are read at a
time, and told in their order: --jobs N sets how many, as many as there are processors unless told.

Ends with 0 if all is fine, 1 if something was found wrong, 2 if a file could not be read or written, or if
the command line cannot be understood.
)";

constexpr std::string_view check_page =
    R"(xlg check [--gap MINUTES] [--jobs N] FILE...    what is wrong in logs

Tells each finding in a line, FILE:LINE: WHAT (WORDS OF THE LINE), and the figures of each file in a last one.
A clock that was set back, a log that goes on behind midnight, a header that more than 24 cylinders cut short,
and one of zeros for a channel that did not measure are remarks and no damage.

  --gap MINUTES    a longer time between two lines is wrong too, unless the measurement was stopped before it
  --jobs N         files at a time

Ends with 0 if nothing is wrong, 1 if something is, 2 if a file could not be read.
)";

constexpr std::string_view summary_page =
    R"(xlg summary [--gap MINUTES] [--jobs N] FILE...    what logs hold

Tells engine and Evaluator, the first and the last time, how many lines there are of each kind, what was
alarmed how often, least and greatest of each value with their times, and the gaps. Lines that are damaged are
left out.

  --gap MINUTES    tells times between two lines that are longer; 10 unless told
  --jobs N         files at a time

Ends with 0, with 1 if lines were left out, with 2 if a file could not be read.
)";

constexpr std::string_view csv_page =
    R"(xlg csv [--what records|curves|comments] [--jobs N] FILE...    logs as one table

Writes rows separated by commas in UTF-8, with a first row of names and units: file, line, time, and what the
line holds. The date is that of the file's name, else that of the header; it goes on behind midnight.

  --what records     measured values, REC1; these unless told
  --what curves      curves, REC2 and REC3, 256 values each
  --what comments    comments and notes
  --jobs N           files at a time

Lines that are damaged are left out, and standard error tells how many. Ends with 0, with 1 if lines were left
out, with 2 if a file could not be read.
)";

constexpr std::string_view mend_page =
    R"(xlg mend [--force] -o COPY FILE    a repaired copy of a log

Line ends that are missing are added. In the place of a line that cannot be read, or of a second header,
stands a comment that tells what was dropped. All else stays as it is, also values out of their ranges.
Standard output tells each change.

  -o COPY    the file to write; it may not be there yet, and is never FILE itself
  --force    it may be there, and is replaced

Ends with 0 if nothing had to be mended, 1 if something was, 2 if a file could not be read or written.
)";

constexpr std::string_view events_page =
    R"(xlg events [--csv] [--jobs N] FILE...    what is wrong in event files

Tells each finding in a line, as check does of logs.

  --csv       writes the events as a table instead: file, line, time, text
  --jobs N    files at a time

Ends with 0 if nothing is wrong, 1 if something is, 2 if a file could not be read.
)";

constexpr std::string_view plot_page =
    R"(xlg plot [OPTION]... FILE|FOLDER...                   strip charts of logs as a picture
xlg plot --cycle TIME [--as KIND] [OPTION]... FILE...   one engine cycle as a picture

Draws as the program does on its screen and on paper. Logs of one engine are one line of time, several engines
are charts below each other over the same time.

  --from TIME        where the charts begin and end; the whole time of the logs unless told
  --to TIME
  --cycle TIME       the last curves up to this time, of one engine
  --as KIND          its polar scope, Detailed Display or bars: scope, detail, speed-bars, thermo-bars
  -o PICTURE         the file to write, by its ending .png, .svg or .pdf; the name of the first log with .png
                     in this folder unless told. It may not be there yet
  --force            it may be there, and is replaced
  --size WxH         of the picture in pixels, 96 to an inch of paper
  --title TEXT       the line above, else engine and time
  --settings FILE    the settings of the plant: curves that are shown, scales of scopes, order of bars; else
                     the "tyxo.ini" in the folder of the first log or up to three above it

A TIME is 2026-07-02T13:05:09, or 13:05:09 or 13:05 on the first day of the logs.

Ends with 0, with 1 if nothing was measured in that time, with 2 if a file could not be read or written.
It is part of the package xlg-view.
)";

constexpr std::string_view view_page =
    R"(xlg view [FILE|FOLDER]...    logs in a window

Shows the logs as strip charts over any time, the engine cycles under a cursor, alarms and notes. What is
still being written is followed.

Ends with 0 when the window is closed, with 2 if the command line cannot be understood or there is no screen.
It is part of the package xlg-view.
)";

} // namespace

std::string_view help_page(command what) {
    switch (what) {
    case command::check:
        return check_page;
    case command::summary:
        return summary_page;
    case command::csv:
        return csv_page;
    case command::mend:
        return mend_page;
    case command::events:
        return events_page;
    case command::plot:
        return plot_page;
    case command::view:
        return view_page;
    default:
        return tool_page;
    }
}

} // namespace tyxo::xlg
