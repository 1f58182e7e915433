#pragma once
// Finding a window on the screen.

#include <QApplication>
#include <QWidget>

namespace tyxo {

/// The window of this name that is on the screen.
inline QWidget* shown_window(const QString& name) {
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (window->isVisible() && window->objectName() == name) return window;
    return nullptr;
}

} // namespace tyxo
