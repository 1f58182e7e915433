#pragma once
// The desktop's half of a `disk_file`.

#include "platform/desktop/flusher.h"
#include "platform/disk_file.h"

#include <memory>
#include <string>

namespace tyxo {

struct disk_file::state {
    std::shared_ptr<const desktop::descriptor> file; ///< shared with a sync that is under way
    std::string path;
    bool local = false;    ///< a write ends in this machine's memory, and no server is asked
    bool created = false;  ///< and the folder's entry is not on the disk yet
    bool unnamed = false;  ///< it gets its name with what is appended first
    bool unsynced = false; ///< something was appended that no sync at once was asked for
    std::string end;       ///< that a torn last line needs
    desktop::flusher flusher;
};

} // namespace tyxo
