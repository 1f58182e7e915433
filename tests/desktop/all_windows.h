#pragma once
// Every window, and how an operator opens and leaves it, with the states in which it looks different. A new
// window takes one row.

#include "app/mainfrm.h"
#include "desktop/shown_window.h"
#include "desktop/window_states.h"
#include "dialogs/frmabort.h"
#include "dialogs/frmalert.h"
#include "dialogs/frmbrowse.h"
#include "dialogs/frmlog.h"
#include "dialogs/frmpwd.h"
#include "dialogs/frmresetinhtime.h"
#include "dialogs/frmscale_polar.h"
#include "dialogs/frmselectprint.h"
#include "dialogs/frmsplash.h"
#include "dialogs/frmstatustext.h"
#include "dialogs/setup/frmsetup.h"
#include "displays/bar_diagram.h"
#include "displays/frmdetailedpic.h"
#include "gateway/frmsetuptcp.h"
#include "link/channel_rec.h"
#include "link/start_stop.h"

#include <QDialog>
#include <QString>

#include <algorithm>
#include <iterator>
#include <vector>

namespace tyxo {

/// What a window is to the others.
enum class window_kind {
    main,    ///< all others stand beside it
    alert,   ///< opened by an alarm
    dialog,  ///< locks the main window
    asking,  ///< a dialog whose command waits until it has closed
    scope,   ///< a dialog that an alert hides
    beside,  ///< locks nothing
    diagram, ///< locks nothing, an alert hides it
    state    ///< of one of the other windows
};

struct window_row {
    const char* name; ///< the window's, and behind a blank what is special about a state
    window_kind kind;
    void (*open)();
    void (*leave)();
    const char* text_box = nullptr; ///< that an operator types into
    const char* picture = nullptr;  ///< its file's name, if it needs nothing but to be opened

    [[nodiscard]] QString window() const { return QString(name).section(' ', 0, 0); }
    [[nodiscard]] bool is_operated() const {
        return kind != window_kind::main && kind != window_kind::alert && kind != window_kind::state;
    }
    [[nodiscard]] bool locks() const {
        return kind == window_kind::dialog || kind == window_kind::asking || kind == window_kind::scope;
    }
    [[nodiscard]] bool hidden_by_alert() const {
        return kind == window_kind::scope || kind == window_kind::diagram;
    }
    /// The others scale their print with their size.
    [[nodiscard]] bool grows_with_font() const { return kind != window_kind::main && !hidden_by_alert(); }
};

inline const std::vector<window_row>& window_table() {
    using enum window_kind;
    static const std::vector<window_row> rows{
        {"mainfrm", main, [] {}, [] {}},
        {"FrmSetupTCP", beside, mainfrm::setup_tcp_click, FrmSetupTCP::Cmd_close_click, "Txt_IPport"},
        {"FrmSetupTCP registers", state,
         [] {
             mainfrm::setup_tcp_click();
             if (!FrmSetupTCP::state.Reg_content) FrmSetupTCP::Reg_content_click();
         },
         [] {
             FrmSetupTCP::Reg_content_click();
             FrmSetupTCP::Cmd_close_click();
         }},
        {"frmdetailedpic", scope, [] { mainfrm::XYplot_click(0); }, frmdetailedpic::unload},
        {"frmbarpic", diagram, [] { mainfrm::Cmd_diagramm_click(0); }, frmbarpic::unload},
        {"Frmbarpic2", diagram, [] { mainfrm::Cmd_diagramm2_click(0); }, Frmbarpic2::unload},
        {"frmscale_polar", dialog, mainfrm::setup_scale_click, frmscale_polar::unload, nullptr,
         "setup-scales"},
        {"frmselectprint", dialog, mainfrm::prt_click, frmselectprint::cmd_cancel_click, nullptr,
         "select-print"},
        {"print_dialog", asking,
         [] {
             mainfrm::prt_click();
             frmselectprint::Cmd_ok_click();
         },
         [] {
             if (auto* const window = qobject_cast<QDialog*>(shown_window("print_dialog"))) window->reject();
         }},
        {"FrmResetInhTime", dialog, [] { mainfrm::Lbl_alminhibit_click(1); },
         FrmResetInhTime::CmdCancel_click, nullptr, "inhibit-reset"},
        {"frmstatustext", dialog, mainfrm::Text_status_dblclick, frmstatustext::Cmdclose_click, nullptr,
         "status-window"},
        {"Frmlog", dialog, mainfrm::Lbl_TY_logger_click, Frmlog::Cmd_ok_click, nullptr, "software-info"},
        {"frmSplash", dialog, mainfrm::about_click, frmSplash::unload, nullptr, "about"},
        {"frmSetup", dialog, mainfrm::setup_click, frmSetup::cmd_cancel_click, "Text_sensor_loc(0)"},
        {"frmSetup measuring", state, [] { open_setup(0, true); }, close_setup},
        {"frmSetup tab 1", state, [] { open_setup(1, false); }, close_setup},
        {"frmSetup tab 2 measuring", state, [] { open_setup(2, true); }, close_setup},
        {"frmSetup tab 3", state, [] { open_setup(3, false); }, close_setup},
        {"frmSetup tab 4", state, [] { open_setup(4, false); }, close_setup},
        {"frmbrowse", dialog,
         [] {
             mainfrm::setup_click();
             frmSetup::cmd_browse_path_click(0);
         },
         [] {
             frmbrowse::unload();
             frmSetup::cmd_cancel_click();
         },
         "fileNameEdit"},
        {"frmpwd", dialog, mainfrm::setup_passwd_click, frmpwd::CmdCancel_click, "newpasswd"},
        {"frmpwd known", state, [] { mainfrm::setup_passwd_click(), frmpwd::oldpasswd_change(""); },
         frmpwd::CmdCancel_click},
        {"FrmAbort", asking,
         [] {
             sensor::state.measure_running = true;
             mainfrm::startstop_click();
         },
         FrmAbort::unload, "TextPassword"},
        {"FrmAbort typed", state, [] { show_stop_lock("x"); }, FrmAbort::unload},
        {"FrmAbort known", state, [] { show_stop_lock(""); }, FrmAbort::unload},
        {"FrmAlert red", alert, [] { show_alert(alert_colour::red); }, FrmAlert::unload},
        {"FrmAlert light", alert, [] { show_alert(alert_colour::light); }, FrmAlert::unload},
    };
    return rows;
}

inline std::vector<window_row> windows_where(bool (*wanted)(const window_row&)) {
    std::vector<window_row> rows;
    std::ranges::copy_if(window_table(), std::back_inserter(rows), wanted);
    return rows;
}

/// Every window beside the main window that an operator opens and leaves.
inline const std::vector<window_row>& all_windows() {
    static const std::vector<window_row> rows =
        windows_where([](const window_row& row) { return row.is_operated(); });
    return rows;
}

/// Every window in every state, opened by commands that do not wait.
inline const std::vector<window_row>& window_states() {
    static const std::vector<window_row> rows =
        windows_where([](const window_row& row) { return row.kind != window_kind::asking; });
    return rows;
}

} // namespace tyxo
