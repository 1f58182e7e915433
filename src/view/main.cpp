// xlg-view: the window of the log tool, and its pictures. "xlg view" and "xlg plot" start it.

#include "view/run_view.h"
#include "widgets/light_palette.h"

#include <QApplication>
#include <QLocale>

#include <cstdio>
#include <string>
#include <vector>

int main(int count, char** words) {
    const std::vector<std::string> all(words + 1, words + count);
    const bool view = !all.empty() && all.front() == "view";
    if (!view) {
        std::fputs("xlg-view: \"xlg view\" and \"xlg plot\" start it\n", stderr);
        return 2;
    }
    QLocale::setDefault(QLocale::c());
    QApplication::setStyle("Fusion");
    QApplication::setDesktopFileName(
        "com.example.quarvo.XlgView"); // by which a Wayland desktop finds the icon
    int own_name_only = 1;
    const QApplication application(own_name_only, words);
    tyxo::use_light_palette();
    return tyxo::view::run_view({all.begin() + 1, all.end()});
}
