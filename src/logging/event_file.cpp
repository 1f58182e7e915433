#include "logging/event_file.h"

#include "basics/failure.h"
#include "platform/message_box.h"
#include "settings/ini.h"
#include "settings/settings.h"

namespace tyxo {

void event_file_init() {
    if (settings.eventfile_ena != 1) return;
    // Looks like a mistake and stays: nothing is put between the two
    // (EventFile.FolderAndNameAreJoinedWithoutASeparator).
    event_file.event_path = Ini::ini_read("evtpath") + "TY_all_events.txt";
    event_file.event_fileno = 256;
}

void event_line(std::string_view text) {
    if (settings.eventfile_ena != 1 || event_file.event_file_failed) return;
    const auto failed = attempt([text] {
        if (event_file.event_output.failed_late()) throw failure("The last line was lost");
        // Open for this line only, so that the file is whole at any moment.
        event_file.event_output.open({.path = event_file.event_path, .each_line = true});
        event_file.event_output.print("##;" + std::string(text));
    });
    event_file.event_output.close();
    if (!failed) return;
    // Looks like a mistake and stays: no further try in this run, and one message for all reasons
    // (EventFile.AMissingFolderIsToldOnceAndEndsItForThisRun,
    // EventFile.EveryKindOfFailureHasTheSameMessage).
    event_file.event_file_failed = true;
    message_box("Directory for Eventfile doesn't exist, start setup Installation !");
}

} // namespace tyxo
