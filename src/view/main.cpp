// xlg-view: the window of the log tool, and its pictures. "xlg view" and "xlg plot" start it.

#include "basics/failure.h"
#include "view/run_plot.h"
#include "view/run_view.h"
#include "widgets/light_palette.h"
#include "xlg/arguments.h"
#include "xlg/run_files.h"

#include <QApplication>
#include <QLocale>
#include <QPalette>
#include <QStyle>

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

using namespace tyxo;
using xlg::command;

/// Pictures are the same on every machine: no screen and none of its scales take part, and what Qt has to say
/// about them is nothing to the user.
void use_no_screen() {
    qInstallMessageHandler([](QtMsgType, const QMessageLogContext&, const QString&) {});
    qputenv("QT_QPA_PLATFORM", "offscreen");
    for (const char* const scale : {"QT_SCALE_FACTOR", "QT_SCREEN_SCALE_FACTORS", "QT_FONT_DPI"})
        qunsetenv(scale);
}

void use_white_paper() {
    QPalette palette = QApplication::style()->standardPalette();
    palette.setColor(QPalette::Window, Qt::white);
    QApplication::setPalette(palette);
}

/// The window system's library would abort the program where it finds no screen.
void end_without_screen(QtMsgType type, const QMessageLogContext& /*place*/, const QString& /*words*/) {
    if (type != QtFatalMsg) return;
    std::fputs("xlg: there is no screen that the window could be shown on\n", stderr);
    std::_Exit(xlg::exit_codes::failed);
}

int run(const xlg::arguments& wanted, char** words) {
    if (wanted.what == command::plot) use_no_screen();
    QLocale::setDefault(QLocale::c());
    QApplication::setStyle("Fusion");
    // By this a Wayland desktop finds the icon.
    QApplication::setDesktopFileName("com.example.quarvo.XlgView");
    int own_name_only = 1; // the rest is for us, and none of it for the window system
    const QtMessageHandler own = qInstallMessageHandler(end_without_screen);
    const QApplication application(own_name_only, words);
    qInstallMessageHandler(own);
    if (wanted.what == command::plot)
        use_white_paper();
    else
        use_light_palette();
    return wanted.what == command::plot ? view::run_plot(wanted) : view::run_view(wanted.files);
}

} // namespace

int main(int count, char** words) {
    const std::vector<std::string_view> all(words + 1, words + count);
    try {
        const xlg::arguments wanted = xlg::arguments_of(all);
        if (wanted.help) {
            std::fputs(std::string(xlg::help_page(wanted.what)).c_str(), stdout);
            return xlg::exit_codes::fine;
        }
        if (wanted.what != command::plot && wanted.what != command::view)
            throw failure("\"xlg view\" and \"xlg plot\" start this program");
        return run(wanted, words);
    } catch (const failure& why) {
        std::fprintf(stderr, "xlg: %s\n", why.what());
        return xlg::exit_codes::failed;
    }
}
