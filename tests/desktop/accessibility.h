#pragma once
// What makes a window usable with keys alone, by ear, and with larger or stronger print: how a test sees it.

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QGroupBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QTest>
#include <QToolButton>

#include <algorithm>
#include <cmath>
#include <optional>
#include <vector>

namespace tyxo {

/// Of a text and its ground, for weak eyes and bad light.
constexpr double least_contrast = 4.5;

/// What an operator can see of a window.
inline std::vector<QWidget*> visible_controls(const QWidget* window) {
    std::vector<QWidget*> controls;
    for (QWidget* control : window->findChildren<QWidget*>()) {
        if (control->isVisible() && control->window() == window) controls.push_back(control);
    }
    return controls;
}

inline bool is_stop(const QWidget* control) {
    return control->isEnabled() && control->focusProxy() == nullptr &&
           (control->focusPolicy() & Qt::TabFocus) != 0;
}

inline bool is_painted_value(const QWidget* control) {
    for (const char* property : {"Value", "Position", "Active", "XAxisMin", "ScaleWidth"}) {
        if (control->metaObject()->indexOfProperty(property) >= 0) return true;
    }
    return control->objectName().startsWith("iPlotX") || control->objectName().startsWith("Image");
}

/// As a screen reader says it.
inline QString spoken(QWidget* control) {
    const QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(control);
    return told == nullptr ? QString() : told->text(QAccessible::Name);
}

/// What it says behind the name.
inline QString explained(QWidget* control) {
    const QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(control);
    return told == nullptr ? QString() : told->text(QAccessible::Description);
}

/// A listener is told what it is; a plain area is of no use to him.
inline bool has_role(QWidget* control) {
    const QAccessibleInterface* const told = QAccessible::queryAccessibleInterface(control);
    return told != nullptr && told->role() != QAccessible::NoRole && told->role() != QAccessible::Client;
}

inline QString described(const QWidget* control) {
    return control->objectName() + " (" + control->metaObject()->className() + ')';
}

inline QRect on_window(const QWidget* control) {
    return {control->mapTo(control->window(), QPoint()), control->size()};
}

inline double luminance(const QColor& color) {
    const auto linear = [](double part) {
        return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

inline double contrast(const QColor& one, const QColor& other) {
    const double first = luminance(one);
    const double second = luminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

/// A button that bears a picture only, of a size of its own.
inline bool is_picture_button(const QWidget* control) {
    const auto* const button = qobject_cast<const QToolButton*>(control);
    return button != nullptr && button->toolButtonStyle() == Qt::ToolButtonIconOnly &&
           !button->icon().isNull();
}

/// The text's colour and its ground; nothing for a control without text. Painted controls have the colours
/// that the plant's operators know: they are no texts on the window's ground.
inline std::optional<std::pair<QColor, QColor>> text_colours(const QWidget* control) {
    if (is_picture_button(control)) return std::nullopt;
    const QPalette& palette = control->palette();
    const auto group = control->isEnabled() ? QPalette::Active : QPalette::Disabled;
    const auto pair = [&](QPalette::ColorRole text, QPalette::ColorRole ground) {
        return std::pair(palette.color(group, text), palette.color(group, ground));
    };
    if (qobject_cast<const QLineEdit*>(control) || qobject_cast<const QPlainTextEdit*>(control))
        return pair(QPalette::Text, QPalette::Base);
    if (qobject_cast<const QPushButton*>(control)) return pair(QPalette::ButtonText, QPalette::Button);
    if (qobject_cast<const QLabel*>(control) || qobject_cast<const QGroupBox*>(control) ||
        qobject_cast<const QAbstractButton*>(control))
        return pair(QPalette::WindowText, QPalette::Window);
    return std::nullopt;
}

/// Neither back nor up, but for the top of the next column.
inline bool follows_the_eye(const QRect& before, const QRect& after) {
    const bool above = after.bottom() < before.top();
    const bool left = after.right() < before.left();
    const bool right = after.left() > before.right();
    const bool below = after.top() > before.bottom();
    return !(above && !right) && !(left && !below);
}

/// Where the Tab key stops, from the window's first stop on.
inline std::vector<QWidget*> walk(QWidget* window) {
    std::vector<QWidget*> stops;
    const auto first = [window] {
        for (QWidget* next = window->nextInFocusChain(); next != window; next = next->nextInFocusChain())
            if (next->isVisible() && next->window() == window && is_stop(next)) return next;
        return window;
    };
    first()->setFocus(Qt::TabFocusReason);
    for (QWidget* focus = QApplication::focusWidget();
         focus != nullptr && focus != window && std::ranges::count(stops, focus) == 0;
         focus = QApplication::focusWidget()) {
        stops.push_back(focus);
        QTest::keyClick(focus, Qt::Key_Tab);
    }
    return stops;
}

/// Every control lies inside of its parent and has room for what it says; the window fits the screen.
inline void check_room(const QWidget* window) {
    for (const QWidget* control : visible_controls(window)) {
        const QString name = described(control);
        const QWidget* const parent = control->parentWidget();
        QVERIFY2(parent->rect().contains(control->geometry()) || control->objectName().startsWith("qt_"),
                 qPrintable(name));
        if (is_picture_button(control)) continue;
        QVERIFY2(control->width() >= control->minimumSizeHint().width(), qPrintable(name));
        // The headings of a list ask for the height of a list.
        const bool headings = qobject_cast<const QHeaderView*>(control) != nullptr;
        const int least_height =
            headings ? control->sizeHint().height() : control->minimumSizeHint().height();
        QVERIFY2(control->height() >= least_height, qPrintable(name));
        if (const auto* const area = qobject_cast<const QScrollArea*>(control))
            QVERIFY2(area->widget()->height() <= area->viewport()->height(), qPrintable(name));
        const auto fits = [&](const QString& text) {
            return control->fontMetrics().size(Qt::TextShowMnemonic, text).width() <= control->width();
        };
        if (const auto* const label = qobject_cast<const QLabel*>(control))
            QVERIFY2(fits(label->text()), qPrintable(label->text()));
        if (const auto* const button = qobject_cast<const QAbstractButton*>(control))
            QVERIFY2(fits(button->text()), qPrintable(button->text()));
        if (const auto* const frame = qobject_cast<const QGroupBox*>(control))
            QVERIFY2(fits(frame->title()), qPrintable(frame->title()));
    }
    QVERIFY2(window->screen()->availableSize().width() >= window->width() &&
                 window->screen()->availableSize().height() >= window->height(),
             qPrintable(window->objectName()));
}

} // namespace tyxo
