// The status window with its real widgets: a large copy of the status text.

#include "desktop/desktop_test.h"
#include "desktop/started_window.h"
#include "dialogs/frmstatustext.h"
#include "link/indicators.h"

#include <QClipboard>
#include <QElapsedTimer>
#include <QPlainTextEdit>
#include <QScrollBar>

using namespace tyxo;

class status_window_view_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { window_.start("[tyxo]\r\nmax_sensors= 2\r\n"); }
    void cleanupTestCase() { window_.end(); }

    void a_double_click_on_the_status_text_shows_its_large_copy() {
        fill_status(3);
        QDialog* const dialog = open_status();
        QCOMPARE(dialog->windowTitle(), QString("Status window"));
        QCOMPARE(copy()->toPlainText(), QString("line 0\nline 1\nline 2\n"));
        QVERIFY(copy()->isReadOnly());
        QVERIFY(dialog->width() >= 800 && dialog->height() >= 500);
        check_texts(dialog);
        close_with_escape(dialog);
    }

    void enter_on_the_status_text_does_the_same() {
        QWidget* const box = window_.view().centralWidget()->findChild<QWidget*>("Text_status");
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Return);
        QDialog* const dialog = window_.dialog("frmstatustext");
        QTRY_VERIFY(dialog->isVisible());
        QTest::keyClick(dialog, Qt::Key_Return); // "Close" is the default button
        QTRY_VERIFY(!dialog->isVisible());
    }

    void a_new_line_shows_only_after_refresh() {
        fill_status(1);
        QDialog* const dialog = open_status();
        indicators.Text_status.append("new\r\n");
        window_.show_state();
        QCOMPARE(copy()->toPlainText(), QString("line 0\n"));
        QTest::mouseClick(button(dialog, "Cmdrefresh", "Refresh"), Qt::LeftButton);
        QTRY_COMPARE(copy()->toPlainText(), QString("line 0\nnew\n"));
        close_status();
        indicators.Text_status.append("newer\r\n");
        open_status();
        QCOMPARE(copy()->toPlainText(), QString("line 0\nnew\nnewer\n"));
        close_status();
    }

    void the_last_line_is_seen_and_the_caret_is_behind_it() {
        fill_status(500);
        open_status();
        QVERIFY(copy()->textCursor().atEnd());
        QVERIFY(copy()->verticalScrollBar()->maximum() > 0);
        QCOMPARE(copy()->verticalScrollBar()->value(), copy()->verticalScrollBar()->maximum());
        close_status();
    }

    void the_reader_is_left_alone_until_refresh() {
        fill_status(500);
        QDialog* const dialog = open_status();
        copy()->verticalScrollBar()->setValue(7);
        window_.show_state();
        QCOMPARE(copy()->verticalScrollBar()->value(), 7);
        indicators.Text_status.append("new\r\n");
        QTest::mouseClick(button(dialog, "Cmdrefresh", "Refresh"), Qt::LeftButton);
        QTRY_COMPARE(copy()->verticalScrollBar()->value(), copy()->verticalScrollBar()->maximum());
        close_status();
    }

    void it_grows_with_the_window() {
        fill_status(3);
        QDialog* const dialog = open_status();
        const QSize before = copy()->size();
        const QSize size = dialog->size();
        dialog->resize(size + QSize(200, 150));
        QTRY_COMPARE(copy()->size(), before + QSize(200, 150));
        dialog->resize(size);
        close_status();
    }

    void text_is_selected_and_copied_with_keys_in_both_boxes() {
        fill_status(3);
        copy_all(window_.view().centralWidget()->findChild<QPlainTextEdit*>("Text_status"),
                 "line 0\nline 1\nline 2");
        open_status();
        copy_all(copy(), "line 0\nline 1\nline 2\n");
        close_status();
    }

    void keys_move_through_the_large_copy() {
        fill_status(3);
        open_status();
        QVERIFY(copy()->hasFocus());
        QTest::keyClick(copy(), Qt::Key_Home, Qt::ControlModifier);
        QCOMPARE(copy()->textCursor().position(), 0);
        QTest::keyClick(copy(), Qt::Key_End, Qt::ShiftModifier);
        QCOMPARE(copy()->textCursor().selectedText(), QString("line 0"));
        QTest::keyClick(copy(), 'x');
        QCOMPARE(copy()->toPlainText(), QString("line 0\nline 1\nline 2\n"));
        close_status();
    }

    void sixty_thousand_characters_open_without_delay() {
        fill_status(0);
        while (indicators.Text_status.size() < 60000)
            indicators.Text_status.append("07-02-2026 13:05:09 KVD Engine 1 ## Main Alarm DC ON\r\n");
        window_.show_state();
        QElapsedTimer clock;
        clock.start();
        mainfrm::Text_status_dblclick();
        window_.show_state();
        QVERIFY(!copy()->grab().isNull());
        const qint64 took = clock.elapsed();
        qInfo("opening with 60,000 characters: %lld ms", static_cast<long long>(took));
        QVERIFY2(took < 1000, "the window must open at once");
        close_status();
        fill_status(0);
    }

  private:
    void fill_status(int lines) {
        indicators.Text_status.keep_last(0);
        for (int line = 0; line < lines; ++line)
            indicators.Text_status.append("line " + std::to_string(line) + "\r\n");
        window_.show_state();
    }

    QDialog* open_status() {
        to_front(&window_.view());
        auto* const box = window_.view().centralWidget()->findChild<QPlainTextEdit*>("Text_status");
        QTest::mouseDClick(box->viewport(), Qt::LeftButton);
        return window_.opened("frmstatustext");
    }

    void close_status() {
        QDialog* const dialog = window_.dialog("frmstatustext");
        QTest::mouseClick(button(dialog, "Cmdclose", "Close"), Qt::LeftButton);
        QTRY_VERIFY(!dialog->isVisible());
    }

    [[nodiscard]] QPlainTextEdit* copy() const {
        return window_.dialog("frmstatustext")->findChild<QPlainTextEdit*>("Text_status");
    }

    static void copy_all(QPlainTextEdit* box, const char* expected) {
        to_front(box->window());
        QGuiApplication::clipboard()->clear();
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Home, Qt::ControlModifier);
        QTest::keyClick(box, Qt::Key_End, Qt::ShiftModifier);
        QCOMPARE(box->textCursor().selectedText(), QString("line 0"));
        QTest::keyClick(box, 'a', Qt::ControlModifier);
        QTest::keyClick(box, 'c', Qt::ControlModifier);
        QCOMPARE(QGuiApplication::clipboard()->text(), QString(expected));
    }

    started_window window_;
};

static const desktop_test<status_window_view_test> known;
#include "status_window_view_test.moc"
