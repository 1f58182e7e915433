#pragma once
// The alarm alert's window, and the frames that raise it. These wait with qWaitFor, which looks a hundred
// times a second, and QTRY_VERIFY twenty times: for every alarm in every window that makes a difference.

#include "dialogs/frmalert.h"
#include "link/channel_rec.h"
#include "link/frame_dispatch.h"
#include "link/frames.h"
#include "link/indicators.h"
#include "platform/desktop/handlers.h"
#include "widgets/colour.h"

#include <QApplication>
#include <QDialog>
#include <QTest>

namespace tyxo {

inline constexpr const char* alert_settings =
    "[tyxo]\r\nupd_periode= 250\r\nmax_sensors= 4\r\n"
    "scale_polar_a= .7\r\nscale_polar_t= 3\r\nlog_mode= 0\r\n"
    "location 1=Engine & pump\r\nlocation 2=<b>two</b>\r\n"
    "location 3=WWWWWWWWWWWWWWWWWWWWWWWWWWWWWW\r\nlocation 4=K\xFChlung\r\n";

inline constexpr i32 alarm_ac = 0x0088; ///< main alarm relay and main alarm AC

inline QDialog* alert_window() {
    for (QWidget* const window : QApplication::topLevelWidgets())
        if (window->objectName() == "FrmAlert") return qobject_cast<QDialog*>(window);
    return nullptr;
}

/// A status frame of a channel, as its serial port delivers it.
inline void take_status(i16 channel, i32 alarm) {
    desktop::run_handler(desktop::source::device,
                         [=] { sensor::frame_dispatch(link_testing::status({.alarm = alarm}), channel); });
}

/// The relay of a channel closes, and the alert is on the screen.
inline void raise_alarm(i16 channel) {
    take_status(channel, alarm_ac);
    QVERIFY(QTest::qWaitFor([] { return alert_window()->isVisible(); }));
    QTest::qWait(50);
}

/// The relays of all channels close, one behind the other.
inline void raise_all_alarms() {
    for (i16 channel = 0; channel < channel_count; ++channel) {
        take_status(channel, alarm_ac);
        QTest::qWait(5);
    }
    QVERIFY(QTest::qWaitFor([] { return alert_window()->isVisible(); }));
    QTest::qWait(50);
}

/// The alert's next phase, before its timer brings it, and none behind it.
inline void next_phase() {
    FrmAlert::timer_alert.Interval(60'000);
    const colour phase = FrmAlert::state.BackColor;
    desktop::run_handler(desktop::source::device, FrmAlert::timer_alert_tick);
    QVERIFY(FrmAlert::state.BackColor != phase);
    QVERIFY(QTest::qWaitFor([] {
        return alert_window()->palette().color(QPalette::Window) == qt_colour(FrmAlert::state.BackColor);
    }));
}

/// The alert has the keyboard, and has had it long enough to take keys.
inline void wait_until_it_takes_keys() {
    QVERIFY(QTest::qWaitFor([] { return alert_window()->isActiveWindow(); }));
    QTest::qWait(750);
}

inline void confirm_alert() {
    desktop::run_handler(desktop::source::operator_, FrmAlert::CmdAck_click);
    QVERIFY(QTest::qWaitFor([] { return !alert_window()->isVisible(); }));
}

/// Nothing is left of a test's alarms.
inline void end_alarms() {
    confirm_alert();
    for (i16 channel = 0; channel < channel_count; ++channel)
        take_status(channel, 0);
}

/// The alert has gone, and the status text says by whom.
inline void expect_confirmed() {
    QVERIFY(QTest::qWaitFor([] { return !alert_window()->isVisible(); }));
    QVERIFY(!sensor::state.alert_open);
    QVERIFY(!FrmAlert::timer_alert.Enabled());
    QVERIFY(indicators.Text_status.text().ends_with(" Mainalarm confirmed by operator!\r\n"));
}

} // namespace tyxo
