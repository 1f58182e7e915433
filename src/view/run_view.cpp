#include "view/run_view.h"

#include "view/log_window.h"

#include <QApplication>

#include <utility>

namespace tyxo::view {

int run_view(std::vector<std::string> names) {
    log_window window(std::move(names));
    window.show();
    return QApplication::exec();
}

} // namespace tyxo::view
