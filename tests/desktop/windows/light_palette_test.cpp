// All windows on a desktop that wants dark ones.

#include "desktop/accessibility.h"
#include "desktop/all_windows.h"
#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "link/channel_rec.h"
#include "widgets/light_palette.h"

#include <QToolTip>

using namespace tyxo;

namespace {

QPalette dark_palette() {
    QPalette dark(QColor(0x2A, 0x2A, 0x2A), QColor(0x1E, 0x1E, 0x1E));
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText,
                                QPalette::ToolTipText, QPalette::PlaceholderText})
            dark.setColor(group, role, QColor(0xDD, 0xDD, 0xDD));
        for (const auto role : {QPalette::Base, QPalette::AlternateBase, QPalette::ToolTipBase})
            dark.setColor(group, role, QColor(0x14, 0x14, 0x14));
    }
    return dark;
}

/// A desktop theme gives palettes to the application, to classes of widgets and to the tool tips.
void turn_dark() {
    QToolTip::setPalette(dark_palette());
    for (const char* widgets : {"QLabel", "QMenu", "QMenuBar", "QLineEdit", "QCheckBox", "QTabBar"})
        QApplication::setPalette(dark_palette(), widgets);
    QApplication::setPalette(dark_palette());
}

bool light(const QPalette& palette) {
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled}) {
        for (const auto ground : {QPalette::Window, QPalette::Base, QPalette::Button, QPalette::ToolTipBase})
            if (luminance(palette.color(group, ground)) < 0.5) return false;
    }
    return true;
}

} // namespace

class light_palette_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        turn_dark();
        QVERIFY(!light(QApplication::palette()));
        window_.start(accessible_settings); // applies the palette as the program does
        for (i16 channel = 0; channel < channel_count; ++channel) {
            sensor::state.channels[channel].numzyl = 6;
            sensor::state.channels[channel].param_valid = true;
            sensor::state.channels[channel].status_valid = true;
        }
    }
    void cleanupTestCase() { window_.end(); }

    void every_window_is_light_and_legible() { check_all_windows(); }

    void tool_tips_are_light() {
        QVERIFY(light(QToolTip::palette()));
        QVERIFY(contrast(QToolTip::palette().color(QPalette::ToolTipText),
                         QToolTip::palette().color(QPalette::ToolTipBase)) >= least_contrast);
    }

    void a_desktop_that_turns_dark_meanwhile_changes_nothing() {
        turn_dark();
        QCoreApplication::processEvents();
        QVERIFY(light(QApplication::palette()));
        QVERIFY(light(QToolTip::palette()));
        check_all_windows();
    }

  private:
    void check_all_windows() {
        for (const window_row& row : window_states()) {
            row.open();
            window_.show_state();
            QTest::qWait(10);
            QWidget* const window = shown_window(row.window());
            QVERIFY2(window != nullptr, row.name);
            if (!QString(row.name).startsWith("FrmAlert")) QVERIFY2(light(window->palette()), row.name);
            for (const QWidget* control : visible_controls(window)) {
                const auto colours = text_colours(control);
                if (!colours) continue;
                const double found = contrast(colours->first, colours->second);
                QVERIFY2(found >= least_contrast, qPrintable(QString(row.name) + ": " + described(control) +
                                                             ": " + QString::number(found, 'f', 2)));
            }
            row.leave();
            window_.show_state();
        }
    }

    started_window window_;
};

static const desktop_test<light_palette_test> known;
#include "light_palette_test.moc"
