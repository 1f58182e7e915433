// Inhibit reset, software info, About and messages with their real widgets, opened as an operator opens them.

#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "link/channel_rec.h"
#include "link/indicators.h"
#include "platform/desktop/handlers.h"
#include "platform/message_box.h"

#include <QMessageBox>
#include <QPlainTextEdit>
#include <QRegularExpression>

using namespace tyxo;

namespace {

constexpr const char* settings_text = "[tyxo]\r\n"
                                      "max_sensors= 2\r\n"
                                      "location 1=Engine & pump\r\n"
                                      "location 2=K\xFChlung\r\n";

} // namespace

class small_dialogs_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { window_.start(settings_text); }
    void cleanupTestCase() { window_.end(); }

    void cleanup() {
        indicators.Lbl_alminhibit[0].Visible = indicators.Lbl_alminhibit[1].Visible = false;
        window_.show_state();
    }

    // The inhibit time.

    void a_click_on_the_inhibit_label_asks_about_its_channel() {
        QDialog* const dialog = open_inhibit(1);
        QCOMPARE(sensor::state.inhibit_reset_channel, i16{1});
        QCOMPARE(dialog->windowTitle(), QString("Alarm Inhibit Time"));
        QCOMPARE(label(dialog, "Label1"), QString("Restart Alarm Inhibit Time"));
        QCOMPARE(label(dialog, "Lbl_channel"), QString("2: K\u00FChlung"));
        check_texts(dialog);
        close_with_escape(dialog);
        QCOMPARE(status(), QString());
    }

    void the_space_bar_on_the_inhibit_label_does_the_same() {
        indicators.Lbl_alminhibit[0].Visible = true;
        window_.show_state();
        QWidget* const inhibit = window_.widget("Lbl_alminhibit", 0);
        inhibit->setFocus();
        QTest::keyClick(inhibit, Qt::Key_Space);
        QDialog* const dialog = window_.dialog("FrmResetInhTime");
        QTRY_VERIFY(dialog->isVisible());
        QCOMPARE(label(dialog, "Lbl_channel"), QString("1: Engine & pump"));
        QTest::mouseClick(button(dialog, "CmdCancel", "Cancel"), Qt::LeftButton);
        QTRY_VERIFY(!dialog->isVisible());
        QCOMPARE(status(), QString());
    }

    void enter_restarts_the_inhibit_time() {
        QDialog* const dialog = open_inhibit(1);
        QVERIFY(button(dialog, "CmdDo", "Restart")->isDefault());
        QTRY_VERIFY(button(dialog, "CmdDo", "Restart")->hasFocus());
        QTest::keyClick(dialog, Qt::Key_Return); // its port does not exist; the record is made all the same
        QTRY_VERIFY(!dialog->isVisible());
        const QRegularExpression line(
            "^\\d\\d-\\d\\d-\\d{4} \\d\\d:\\d\\d:\\d\\d KVD K\u00FChlung ## Restart Alarm Inhibit Time$");
        QVERIFY2(line.match(status()).hasMatch(), qPrintable(status()));
        indicators.Text_status.keep_last(0);
    }

    void it_locks_the_main_window_and_nothing_else() {
        QDialog* const dialog = open_inhibit(0);
        QVERIFY(dialog->isModal());
        QCOMPARE(dialog->windowModality(), Qt::WindowModal);
        close_with_escape(dialog);
    }

    // Software info.

    void a_click_on_the_programs_name_tells_what_it_is() {
        QDialog* const dialog = open_identity();
        QCOMPARE(dialog->windowTitle(), QString("Software info "));
        QCOMPARE(label(dialog, "headline"), QString("Quarvo / Tyxo Data Logger Info"));
        QVERIFY(dialog->findChild<QWidget*>("Image1")->isVisible());
        check_texts(dialog);
        QTest::mouseClick(button(dialog, "Cmd_ok", "ok"), Qt::LeftButton);
        QTRY_VERIFY(!dialog->isVisible());
    }

    void every_value_stands_beside_its_title() {
        QDialog* const dialog = open_identity();
        const std::vector<std::pair<const char*, const char*>> pairs{{"Type:", "Lbllogtype"},
                                                                     {"Version:", "Lblversion"},
                                                                     {"Date:", "Lbldate"},
                                                                     {"developed by:", "Lbldev"},
                                                                     {"programmed by:", "Lblprog"}};
        int above = -1;
        for (const auto& [title, name] : pairs) {
            const auto* const value = dialog->findChild<QLabel*>(name);
            const QLabel* const fixed = label_of(dialog, value);
            QVERIFY2(fixed != nullptr, name);
            QCOMPARE(fixed->text(), QString(title));
            QVERIFY2(!value->text().isEmpty(), name);
            QCOMPARE(fixed->geometry().center().y(), value->geometry().center().y());
            QVERIFY(fixed->geometry().right() < value->geometry().left());
            QVERIFY(value->y() > above);
            above = value->y();
        }
        QCOMPARE(label(dialog, "Lbllogtype"), QString("four systems"));
        QCOMPARE(label(dialog, "Lblversion"), QString("Version 2.10_4"));
        QCOMPARE(label(dialog, "Lbldate"), QString("02.07.2026"));
        close_with_escape(dialog);
    }

    void enter_on_software_info_is_ok() {
        QDialog* const dialog = open_identity();
        QTest::keyClick(dialog, Qt::Key_Enter);
        QTRY_VERIFY(!dialog->isVisible());
    }

    // About.

    void about_shows_product_version_and_picture() {
        QDialog* const dialog = open_about();
        QCOMPARE(dialog->windowTitle(), QString("About"));
        QCOMPARE(label(dialog, "lblVersion"), QString("Version 2.10_4    02.07.2026"));
        QCOMPARE(label(dialog, "lblProductName"), QString("Quarvo / Tyxo Data Logger"));
        QVERIFY(!label(dialog, "lbllogo").isEmpty());
        QVERIFY(is_painted(dialog->findChild<QWidget*>("Image1")));
        check_texts(dialog);
        close_with_escape(dialog);
    }

    void any_key_closes_about() {
        for (const Qt::Key key : {Qt::Key_A, Qt::Key_Space, Qt::Key_Return, Qt::Key_Tab, Qt::Key_F5}) {
            QDialog* const dialog = open_about();
            QTest::keyClick(dialog, key);
            QTRY_VERIFY2(!dialog->isVisible(), qPrintable(QString::number(key)));
        }
    }

    void a_key_on_the_way_to_another_one_does_not() {
        QDialog* const dialog = open_about();
        for (const Qt::Key key : {Qt::Key_Shift, Qt::Key_Control, Qt::Key_Alt, Qt::Key_Meta})
            QTest::keyClick(dialog, key);
        QTest::qWait(50);
        QVERIFY(dialog->isVisible());
        close_with_escape(dialog);
    }

    void a_click_on_the_frame_closes_about() {
        for (const char* name : {"Frame1", "Image1", "lblVersion"}) {
            QDialog* const dialog = open_about();
            QTest::mouseClick(dialog->findChild<QWidget*>(name), Qt::LeftButton);
            QTRY_VERIFY2(!dialog->isVisible(), name);
        }
    }

    void a_click_beside_the_frame_does_not() {
        QDialog* const dialog = open_about();
        QTest::mouseClick(dialog, Qt::LeftButton, {}, QPoint(2, 2));
        QTest::qWait(50);
        QVERIFY(dialog->isVisible());
        dialog->close();
        QTRY_VERIFY(!dialog->isVisible());
    }

    // A message.

    /// As a sheet of the main window, Wayland would show it without a frame, grey on grey.
    void a_message_is_a_dialog_of_its_own() {
        desktop::run_handler(desktop::source::device, [] { message_box("told"); });
        auto* const box = window_.view().findChild<QMessageBox*>("message_box");
        QVERIFY(box != nullptr);
        QTRY_VERIFY(box->isVisible());
        QCOMPARE(box->windowType(), Qt::Dialog);
        QCOMPARE(box->windowModality(), Qt::WindowModal);
        close_with_escape(box);
    }

    // The picture.

    void all_windows_have_the_programs_icon() {
        const QIcon icon = QGuiApplication::windowIcon();
        for (const int side : {16, 32, 64, 256}) {
            const QImage picture = icon.pixmap(side).toImage();
            QCOMPARE(picture.size(), QSize(side, side));
            QVERIFY(qAlpha(picture.pixel(side / 2, side / 2)) == 255);
            QVERIFY(qAlpha(picture.pixel(0, 0)) == 0);
        }
        QVERIFY(!window_.view().windowIcon().isNull());
        QDialog* const dialog = open_identity();
        QVERIFY(!dialog->windowIcon().isNull());
        close_with_escape(dialog);
    }

  private:
    static QString label(const QDialog* dialog, const char* name) {
        const auto* const found = dialog->findChild<QLabel*>(name);
        if (found == nullptr) qFatal("no label %s", name);
        return found->text();
    }

    static const QLabel* label_of(const QDialog* dialog, const QWidget* buddy) {
        for (const QLabel* one : dialog->findChildren<QLabel*>())
            if (one->buddy() == buddy) return one;
        return nullptr;
    }

    /// More than the colour of an empty window.
    static bool is_painted(QWidget* widget) {
        const QImage image = widget->grab().toImage();
        const QRgb corner = image.pixel(0, 0);
        int other = 0;
        for (int x = 0; x < image.width(); ++x)
            other += image.pixel(x, image.height() / 2) != corner ? 1 : 0;
        return other > image.width() / 2;
    }

    [[nodiscard]] QString status() const {
        return window_.view().centralWidget()->findChild<QPlainTextEdit*>("Text_status")->toPlainText();
    }

    QDialog* open_inhibit(int channel) {
        to_front(&window_.view());
        indicators.Text_status.keep_last(0);
        indicators.Lbl_alminhibit[channel].Visible = true;
        window_.show_state();
        QTest::mouseClick(window_.widget("Lbl_alminhibit", channel), Qt::LeftButton);
        return window_.opened("FrmResetInhTime");
    }

    QDialog* open_identity() {
        to_front(&window_.view());
        QTest::mouseClick(window_.view().findChild<QWidget*>("Lbl_TY_logger"), Qt::LeftButton);
        return window_.opened("Frmlog");
    }

    QDialog* open_about() {
        to_front(&window_.view());
        window_.view().findChild<QAction*>("about")->trigger();
        return window_.opened("frmSplash");
    }

    started_window window_;
};

static const desktop_test<small_dialogs_test> known;
#include "small_dialogs_test.moc"
