// Enter in every window, with real widgets: it presses the button with the focus, else the default button.

#include "desktop/desktop_test.h"
#include "desktop/operated_windows.h"

#include <QStringList>

using namespace tyxo;

class dialog_keys_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        window_.start(all_windows_settings);
        sensor::state.channels[0].param_valid = true;
        FrmAbort::SetPassword("");
    }
    void cleanup() { sensor::state.measure_running = false; }
    void cleanupTestCase() { window_.end(); }

    void enter_presses_the_button_with_the_focus_and_no_other_data() { add_all_windows(); }
    void enter_presses_the_button_with_the_focus_and_no_other() {
        while_open(this_window(), [](QWidget* window) {
            QStringList pressed;
            for (QPushButton* const button : window->findChildren<QPushButton*>()) {
                button->disconnect(SIGNAL(clicked(bool))); // from here on it does nothing
                connect(button, &QPushButton::clicked, window,
                        [&pressed, button] { pressed << button->objectName(); });
            }
            for (QPushButton* const button : window->findChildren<QPushButton*>()) {
                if (!button->isVisible()) continue;
                button->setEnabled(true);
                for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter}) {
                    pressed.clear();
                    button->setFocus();
                    QTRY_VERIFY2(button->hasFocus(), qPrintable(button->objectName()));
                    QTest::keyClick(window->windowHandle(), key);
                    QCOMPARE(pressed, QStringList(button->objectName()));
                }
            }
            for (QPushButton* const button : window->findChildren<QPushButton*>())
                button->disconnect(SIGNAL(clicked(bool))); // the list of what was pressed ends here
        });
    }

  private:
    started_window window_;
};

static const desktop_test<dialog_keys_test> known;
#include "dialog_keys_test.moc"
