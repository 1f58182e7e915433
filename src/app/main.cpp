// The program: the main window, loaded, then shown.

#include "app/mainfrm.h"
#include "app/mainfrm_view.h"
#include "app/wiring.h"
#include "platform/desktop/handlers.h"

#include <QApplication>
#include <QLocale>

#include <csignal>

int main(int /*argc*/, char* argv[]) {
    std::signal(SIGPIPE, SIG_IGN); // a reader of the debug output that goes away must not end the measurement
    QLocale::setDefault(QLocale::c());
    QApplication::setStyle("Fusion");
    int own_name_only = 1; // the command line is not read, by the window system neither
    const QApplication application(own_name_only, argv);

    QApplication::setQuitOnLastWindowClosed(false); // the close request alone ends the program

    tyxo::wire();
    tyxo::mainfrm_view window;
    tyxo::desktop::run_handler(tyxo::desktop::source::operator_,
                               [&window] { tyxo::start_program(window.width(), window.height()); });
    window.show_state();
    window.show();
    return QApplication::exec();
}
