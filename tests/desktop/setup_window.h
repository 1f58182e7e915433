#pragma once
// The setup dialog in the started program, and what an operator does there.

#include "desktop/started_window.h"
#include "dialogs/setup/frmsetup.h"
#include "link/channel_rec.h"
#include "settings/serial_ports.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>

namespace tyxo {

inline constexpr const char* setup_settings = "[tyxo]\r\nmax_sensors= 3\r\n"
                                              "comport 1= 2\r\ncomport 2= 17\r\ncomport 3= 99\r\n"
                                              "location 1=Engine & pump\r\nlocation 2=K\xFChlung\r\n"
                                              "location 3=<b>Bold</b>\r\n"
                                              "xy_tha= 1\r\nxy_tmv= 0\r\nxy_theff= 1\r\nxy_theff_AC= 1\r\n";

class setup_window {
  public:
    void start() {
        start(setup_settings);
        serial::serial_ports = std::vector<i16>{1, 2, 17, 256};
        for (i16 channel = 0; channel < 2; ++channel)
            sensor::state.channels[channel].status_valid = true;
    }
    void start(const char* settings_text) {
        window_.start(settings_text);
        QVERIFY(shown_window("frmSetup") == nullptr);
    }
    void end() { window_.end(); }

    void open() {
        window_.open_menu_entry("Setup_menue", "setup");
        dialog_ = window_.opened("frmSetup");
    }
    void close() const {
        if (is_open()) close_with_escape(dialog_);
    }

    [[nodiscard]] bool is_open() const { return dialog_ != nullptr && dialog_->isVisible(); }
    /// Once it was open.
    [[nodiscard]] QDialog* dialog() const { return dialog_; }
    [[nodiscard]] QDialog* other_dialog(const char* name) const { return window_.dialog(name); }
    void choose(const char* menu, const char* entry) const { window_.open_menu_entry(menu, entry); }
    [[nodiscard]] mainfrm_view& main() const { return window_.view(); }
    void show_state() { window_.show_state(); }

    template <class Widget = QWidget> [[nodiscard]] Widget* find(const QString& name) const {
        auto* const found = dialog_->findChild<Widget*>(name);
        if (found == nullptr) qFatal("no %s", qPrintable(name));
        return found;
    }
    template <class Widget = QWidget> [[nodiscard]] Widget* find(const char* array, int index) const {
        return find<Widget>(QString("%1(%2)").arg(array).arg(index));
    }
    [[nodiscard]] QTabWidget* tabs() const { return find<QTabWidget>("SSTab"); }

    void click(const char* name) const { QTest::mouseClick(find<QPushButton>(name), Qt::LeftButton); }
    void press_space(const QString& name) const {
        auto* const check = find(name);
        check->setFocus();
        QTest::keyClick(check, Qt::Key_Space);
    }
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

  private:
    started_window window_;
    QDialog* dialog_ = nullptr;
};

/// Every tab can be read whole, and the dialog has room on a screen of 1280 x 1024.
inline void check_dialog_size(const setup_window& setup) {
    for (int tab = 0; tab < 5; ++tab) {
        setup.tabs()->setCurrentIndex(tab);
        check_texts(setup.dialog());
        for (const auto* const box : setup.tabs()->widget(tab)->findChildren<QLineEdit*>()) {
            if (!box->isReadOnly()) continue;
            const int needed = box->fontMetrics().horizontalAdvance(box->text());
            QVERIFY2(needed <= box->width() - 8, qPrintable(box->objectName()));
        }
    }
    const QSize size = setup.dialog()->size();
    QVERIFY2(size.width() <= 1275 && size.height() <= 980,
             qPrintable(QString("%1 x %2").arg(size.width()).arg(size.height())));
}

} // namespace tyxo
