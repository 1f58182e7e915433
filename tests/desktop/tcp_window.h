#pragma once
// The gateway's window in the started program, and what an operator does there.

#include "desktop/started_window.h"

#include <QLineEdit>
#include <QMainWindow>

namespace tyxo {

class tcp_window {
  public:
    void start(const char* settings_text) {
        window_.start(settings_text);
        QVERIFY(shown_window("FrmSetupTCP") == nullptr);
    }
    void end() { window_.end(); }

    /// Opens the window from the menu of the main window.
    void open() {
        window_.open_menu_entry("Setup_menue", "setup_tcp");
        QTRY_VERIFY(shown_window("FrmSetupTCP") != nullptr);
        form_ = qobject_cast<QMainWindow*>(shown_window("FrmSetupTCP"));
    }

    [[nodiscard]] bool is_open() const { return form_ != nullptr && form_->isVisible(); }
    /// Once it was open.
    [[nodiscard]] QMainWindow* form() const { return form_; }
    void show_state() { window_.show_state(); }

    [[nodiscard]] QLineEdit* edit(const char* name) const { return form_->findChild<QLineEdit*>(name); }
    [[nodiscard]] QLineEdit* box(int index) const {
        return form_->findChild<QLineEdit*>(QString("Text4(%1)").arg(index));
    }
    [[nodiscard]] QGroupBox* group(const char* name) const { return form_->findChild<QGroupBox*>(name); }
    [[nodiscard]] QPushButton* button(const char* name) const { return form_->findChild<QPushButton*>(name); }
    [[nodiscard]] QAction* item(const char* name) const { return form_->findChild<QAction*>(name); }

    static void type(QLineEdit* into, const QString& text) {
        into->setFocus();
        into->selectAll();
        for (const QChar letter : text) {
            if (letter.unicode() < 128) {
                QTest::keyClick(into, letter.toLatin1());
            } else {
                into->insert(letter); // the test library has no keys for it
            }
        }
    }

    void choose(const char* menu_name, const char* item_name) const {
        auto* const menu = form_->findChild<QMenu*>(menu_name);
        menu->popup(form_->mapToGlobal(QPoint(10, 10)));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(item(item_name)).center());
    }

  private:
    started_window window_;
    QMainWindow* form_ = nullptr;
};

inline constexpr const char* tcp_settings = "[tyxo]\r\n"
                                            "max_sensors= 1\r\n"
                                            "IPAdr=127.0.0.1\r\n"
                                            "IPport= 502\r\n"
                                            "REGBase= 1000\r\n"
                                            "REGView= 1\r\n"
                                            "Sendbase= 40\r\n"
                                            "IPRefresh= 1\r\n";

} // namespace tyxo
