#pragma once
// The stop lock in a program that measures on two channels, and what an operator does with it.

#include "desktop/settings_file.h"
#include "desktop/started_window.h"
#include "dialogs/frmabort.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "platform/desktop/handlers.h"
#include "platform/program.h"

#include <QLineEdit>
#include <QTimer>

#include <functional>
#include <optional>

namespace tyxo {

inline constexpr const char* stop_lock_settings = "[tyxo]\r\n"
                                                  "upd_periode= 250\r\n"
                                                  "max_sensors= 2\r\n"
                                                  "passwd=R\xFChe7\r\n"
                                                  "eventfile_ena= 1\r\n"
                                                  "evtpath=.\\\r\n";

inline const QString password = QString::fromUtf8("R\xC3\xBChe7");

class stop_lock_window : public QObject {
  protected:
    void start() {
        window_.start(stop_lock_settings);
        QVERIFY(!is_up());
    }

    [[nodiscard]] static bool is_up() { return shown_window("FrmAbort") != nullptr; }

    void find_lock() {
        lock_ = window_.dialog("FrmAbort");
        box_ = lock_->findChild<QLineEdit*>("TextPassword");
        stop_ = lock_->findChild<QPushButton*>("CmdStop");
        continue_ = lock_->findChild<QPushButton*>("CmdContinue");
        QVERIFY(box_ != nullptr && stop_ != nullptr && continue_ != nullptr);
    }

    void measure() {
        QTRY_VERIFY(!is_up());
        FrmAbort::SetPassword("R\xFChe7");
        sensor::state.measure_running = true;
        sensor::state.channel_running = {{true, true, false, false}};
        indicators.Quit.Enabled = true;
        window_.show_state();
    }

    /// Acts as soon as the lock is up. A lock that is still up behind that is left by its frame.
    void when_asked(std::function<void()> act) {
        auto* const look = new QTimer(this);
        look->setInterval(5);
        connect(look, &QTimer::timeout, this, [this, look, act = std::move(act)] {
            if (!is_up()) return;
            find_lock();
            look->stop();
            look->deleteLater();
            act();
            if (FrmAbort::state.form.Visible) lock_->reject();
        });
        look->start();
    }
    /// The command of all channels, and what the operator does while it asks.
    void ask(std::function<void()> act) {
        ask_by(std::move(act), [&] { window_.open_menu_entry("start", "startstop"); });
    }
    void ask_by(std::function<void()> act, const std::function<void()>& request) {
        bool asked = false;
        when_asked([&] {
            asked = true;
            act();
        });
        request();
        QTRY_VERIFY(asked); // a menu entry asks from the event loop
        QTRY_VERIFY(!is_up());
    }
    /// Into whatever has the focus.
    void type(const QString& text) const {
        for (const QChar letter : text) {
            auto* const box = qobject_cast<QLineEdit*>(lock_->focusWidget());
            if (letter.unicode() < 128 || box == nullptr) {
                QTest::keyClick(lock_->focusWidget(), letter.toLatin1());
            } else {
                QTest::sendKeyEvent(QTest::Click, box, Qt::Key_unknown, QString(letter), Qt::NoModifier);
            }
        }
    }
    static qsizetype stop_lines() {
        return written_file("TY_all_events.txt").count("Tyxo Data Logger software stopped !");
    }

    started_window window_;
    QDialog* lock_ = nullptr;
    QLineEdit* box_ = nullptr;
    QPushButton* stop_ = nullptr;
    QPushButton* continue_ = nullptr;
};

} // namespace tyxo
