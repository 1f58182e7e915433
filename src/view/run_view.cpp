#include "view/run_view.h"

#include "view/log_window.h"

#include <QApplication>

namespace tyxo::view {

int run_view(const std::vector<std::string>& names) {
    log_window window(names);
    window.show();
    return QApplication::exec();
}

} // namespace tyxo::view
