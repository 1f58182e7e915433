#pragma once
// The folder browser of the setup dialog.

#include "controls/controls.h"

#include <functional>
#include <string>
#include <string_view>

namespace tyxo::frmbrowse {

struct window {
    Form form{.Caption = "Pathselect"};
    std::string start_folder;     ///< where the list begins; the working directory if there is no such folder
    std::string result;           ///< of the last browsing that ended with "Ok"; one for the whole program
    std::function<void()> chosen; ///< runs when the window has closed with "Ok"
};

inline window state;

/// Shows the browser; `chosen` runs when it has closed with a folder.
void browse(std::function<void()> chosen);

/// A folder was chosen: the result is its path with a closing separator.
void Ok_click(std::string_view path);

/// The window was closed without a choice: what stood there stays.
void unload();

} // namespace tyxo::frmbrowse
