// Clock, message boxes and the event loop.

#include "basics/ansi.h"
#include "platform/clock.h"
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
#include <ctime>

namespace tyxo {

namespace {

bool held = false;
bool no_screen = false;

QString shown_text(std::string_view text) {
    return QString::fromStdString(utf8_from_ansi(text)).replace("\r\n", "\n");
}

local_time local_of(std::time_t moment) {
    std::tm parts{};
    localtime_r(&moment, &parts);
    return {parts.tm_year + 1900, parts.tm_mon + 1, parts.tm_mday, parts.tm_hour, parts.tm_min, parts.tm_sec};
}

std::int64_t nanoseconds_of(clockid_t clock) {
    std::timespec now{};
    clock_gettime(clock, &now);
    return std::int64_t{1'000'000'000} * now.tv_sec + now.tv_nsec;
}

std::int64_t milliseconds_of(clockid_t clock) {
    return nanoseconds_of(clock) / 1'000'000;
}

} // namespace

local_time local_now() {
    return local_of(std::time(nullptr));
}

double seconds_of_day() {
    const std::int64_t now = milliseconds_of(CLOCK_REALTIME);
    const local_time time = local_of(static_cast<std::time_t>(now / 1000));
    return 3600.0 * time.hour + 60.0 * time.minute + time.second + static_cast<double>(now % 1000) / 1000;
}

std::int64_t running_ms() {
    return milliseconds_of(CLOCK_BOOTTIME);
}

local_time local_at(std::int64_t running) {
    // Not from milliseconds: cut off twice, their difference would be one more in some readings. And not
    // each time anew: a clock that follows another one is set by a little all the time, and a chart drawn
    // twice would not be the same.
    constexpr std::int64_t unseen = 20'000'000; // ns
    static std::int64_t ahead = 0;
    const std::int64_t now = nanoseconds_of(CLOCK_REALTIME) - nanoseconds_of(CLOCK_BOOTTIME);
    if (now > ahead + unseen || now < ahead - unseen) ahead = now;
    const std::int64_t moment = running + (ahead + 500'000) / 1'000'000;
    return local_of(static_cast<std::time_t>((moment + 500) / 1000));
}

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
    if (box->parentWidget() != nullptr) box->setWindowModality(Qt::WindowModal);
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
