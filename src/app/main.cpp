// The program: the main window, loaded, then shown.

#include "app/mainfrm.h"
#include "app/mainfrm_view.h"
#include "app/wiring.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/process.h"
#include "platform/desktop/standard_output.h"
#include "widgets/light_palette.h"

#include <QApplication>
#include <QLocale>
#include <QMessageBox>

#include <cstdlib>

namespace {

/// The display has gone. An X connection's end calls `exit`, a Wayland connection's end is told by a message.
/// Whoever watches over the program sees a failure and may start it again.
void end_with_the_screen() {
    tyxo::desktop::screen_lost();
    tyxo::mainfrm::end_without_question(tyxo::mainfrm::lost_screen_code);
}

/// What the start had to say stands in front of the main window, also where nobody manages windows.
void raise_boxes() {
    for (QWidget* const window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && qobject_cast<QMessageBox*>(window) != nullptr) window->raise();
    }
}

} // namespace

int main(int /*argc*/, char* argv[]) {
    tyxo::desktop::prepare_standard_descriptors();
    tyxo::desktop::take_qt_messages(end_with_the_screen);
    tyxo::desktop::start_no_session_bus();
    QLocale::setDefault(QLocale::c());
    QApplication::setStyle("Fusion");
    QApplication::setDesktopFileName("com.example.quarvo.Tyxo"); // by which a Wayland desktop finds the icon
    int own_name_only = 1; // the command line is not read, by the window system neither
    const QApplication application(own_name_only, argv);
    tyxo::use_light_palette();

    QApplication::setQuitOnLastWindowClosed(false); // the close request alone ends the program
    tyxo::desktop::on_end_signal([] {
        tyxo::desktop::run_handler(tyxo::desktop::source::device,
                                   [] { tyxo::mainfrm::end_without_question(0); });
    });
    std::atexit(end_with_the_screen);

    tyxo::wire();
    tyxo::mainfrm_view window;
    tyxo::desktop::run_handler(tyxo::desktop::source::operator_,
                               [&window] { tyxo::mainfrm::start_program(window.width(), window.height()); });
    window.show_state();
    window.show();
    raise_boxes();
    return QApplication::exec();
}
