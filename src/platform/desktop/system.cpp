// Message boxes and the event loop.

#include "basics/ansi.h"
#include "platform/debug_output.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/open_ports.h"
#include "platform/desktop/output_file.h"
#include "platform/desktop/parent_window.h"
#include "platform/desktop/process.h"
#include "platform/message_box.h"
#include "platform/program.h"

#include <QApplication>
#include <QMessageBox>
#include <QScreen>

#include <chrono>
#include <cstdlib>

namespace tyxo {

namespace {

bool held = false;
bool no_screen = false;

QString shown_text(std::string_view text) {
    return QString::fromStdString(utf8_from_ansi(text)).replace("\r\n", "\n");
}

} // namespace

box_answer message_box(std::string_view text, box_icon icon, box_buttons buttons, std::string_view title) {
    if (no_screen) {
        debug_output(text);
        return buttons == box_buttons::ok ? box_answer::ok : box_answer::cancel;
    }
    auto* const box = new QMessageBox(dialog_parent());
    box->setObjectName("message_box");
    box->setAttribute(Qt::WA_DeleteOnClose);
    box->setTextFormat(Qt::PlainText);
    box->setText(shown_text(text));
    box->setWindowTitle(shown_text(title));
    // A message box's own `setWindowModality` makes it a sheet, which Wayland shows without a frame.
    if (box->parentWidget() != nullptr) box->QWidget::setWindowModality(Qt::WindowModal);
    if (icon == box_icon::critical) box->setIcon(QMessageBox::Critical);
    if (icon == box_icon::information) box->setIcon(QMessageBox::Information);
    box->setStandardButtons(QMessageBox::Ok);
    if (buttons == box_buttons::ok_cancel) box->addButton(QMessageBox::Cancel);
    if (buttons == box_buttons::ok && (desktop::inside_device_handler() || held)) {
        box->open();
        return box_answer::ok;
    }
    return box->exec() == QMessageBox::Ok ? box_answer::ok : box_answer::cancel;
}

void end_program(int exit_code) {
    desktop::close_ports();
    desktop::finish_files(std::chrono::seconds(1));
    std::_Exit(exit_code);
}

void do_events() {
    desktop::yield();
}

void wait_events(int milliseconds) {
    desktop::wait(milliseconds);
}

void hold_events(bool hold) {
    held = hold;
    if (!hold) desktop::deliver_waiting_bytes();
}

void desktop::screen_lost() {
    no_screen = true;
}

bool desktop::events_held() {
    return held;
}

screen_size screen() {
    const QSize size = QGuiApplication::primaryScreen()->size();
    return {size.width(), size.height()};
}

} // namespace tyxo
