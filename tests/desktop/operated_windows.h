#pragma once
// What an operator does with each of the windows beside the main window.

#include "desktop/all_windows.h"
#include "desktop/started_window.h"
#include "platform/desktop/handlers.h"

#include <QApplication>
#include <QLineEdit>
#include <QTest>
#include <QTimer>

namespace tyxo {

inline constexpr const char* all_windows_settings =
    "[tyxo]\r\nupd_periode= 250\r\nmax_sensors= 4\r\npasswd=Secret7\r\n"
    "eventfile_ena= 1\r\nevtpath=.\\\r\n"
    "scale_polar_a= .7\r\nscale_polar_t= 3\r\nlog_mode= 0\r\n"
    "location 1=Engine & pump\r\nlocation 2=<b>two</b>\r\n"
    "location 3=WWWWWWWWWWWWWWWWWWWWWWWWWWWWWW\r\nlocation 4=K\xFChlung\r\n";

/// A data row for every window that is wanted, and the row of the running test.
inline void add_all_windows(bool (*wanted)(const window_row&) = [](const window_row&) { return true; }) {
    QTest::addColumn<int>("index");
    for (std::size_t index = 0; index < all_windows().size(); ++index) {
        const window_row& row = all_windows()[index];
        if (wanted(row)) QTest::newRow(row.name) << static_cast<int>(index);
    }
}
inline const window_row& this_window() {
    QFETCH(int, index);
    return all_windows()[static_cast<std::size_t>(index)];
}

/// Opens a window by its command and acts as soon as it is there; the command may be one that waits until
/// the window has closed. What is still open behind that is left.
template <class Act> void while_open(const window_row& row, Act act) {
    to_front(shown_window("mainfrm")); // this screen leaves the keyboard with a hidden window
    bool acted = false;
    QTimer look;
    look.setInterval(5);
    QObject::connect(&look, &QTimer::timeout, &look, [&] {
        QWidget* const window = shown_window(row.name);
        if (window == nullptr) return;
        look.stop();
        to_front(window);
        act(window);
        acted = true;
        desktop::run_handler(desktop::source::operator_, row.leave);
    });
    look.start();
    desktop::run_handler(desktop::source::operator_, row.open);
    QVERIFY2(QTest::qWaitFor([&] { return acted; }), row.name);
    QVERIFY2(QTest::qWaitFor([&] { return shown_window(row.name) == nullptr; }), row.name);
    QVERIFY2(QTest::qWaitFor([&] { return QApplication::activeModalWidget() == nullptr; }), row.name);
}

/// The box of a window that an operator types into, empty and with the focus; none if it has none.
inline QLineEdit* text_box(const window_row& row, const QWidget* window) {
    if (row.text_box == nullptr) return nullptr;
    auto* const box = window->findChild<QLineEdit*>(row.text_box);
    if (box == nullptr) qFatal("%s has no %s", row.name, row.text_box);
    box->setFocus();
    box->selectAll();
    QTest::keyClick(box, Qt::Key_Backspace);
    return box;
}

/// Keys, for whatever has the keyboard.
inline void press_keys(const char* letters) {
    for (const char* letter = letters; *letter != '\0'; ++letter)
        QTest::keyClick(QApplication::focusWindow(), *letter);
}

/// The key that leaves a window; the gateway's has a button only.
inline void leave_by_hand(const window_row& row, QWidget* window) {
    if (row.kind == window_kind::beside) {
        QTest::mouseClick(window->findChild<QPushButton*>("Cmd_close"), Qt::LeftButton);
    } else {
        QTest::keyClick(window, Qt::Key_Escape);
    }
}

} // namespace tyxo
