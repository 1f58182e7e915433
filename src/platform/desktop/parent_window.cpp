#include "platform/desktop/parent_window.h"

#include <QApplication>
#include <QMainWindow>

namespace tyxo {

QWidget* dialog_parent() {
    if (QWidget* const dialog = QApplication::activeModalWidget()) return dialog;
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (window->isVisible() && window->parentWidget() == nullptr && qobject_cast<QMainWindow*>(window))
            return window;
    }
    return nullptr;
}

} // namespace tyxo
