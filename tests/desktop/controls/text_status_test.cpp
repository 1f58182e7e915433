// The status text on the screen follows its box.

#include "desktop/desktop_test.h"
#include "widgets/text_status_view.h"

#include <QElapsedTimer>
#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <random>

namespace {

using namespace tyxo;

/// What the view should show: the box's text without CR, without its last line break.
QString shown(const text_box& box) {
    QString text = QString::fromLatin1(box.text().data(), static_cast<qsizetype>(box.size()));
    text.remove('\r');
    if (text.endsWith('\n')) text.chop(1);
    return text;
}

} // namespace

class text_status_test : public QObject {
    Q_OBJECT

  private slots:
    void shows_added_lines() {
        text_box box;
        text_status_view view(nullptr);
        box.append("one\r\n");
        view.show_control(box);
        QCOMPARE(view.toPlainText(), QString("one"));
        box.append("two\r\nthree\r\n");
        view.show_control(box);
        QCOMPARE(view.toPlainText(), QString("one\ntwo\nthree"));
    }

    void follows_every_cut() {
        std::mt19937 random(7);
        text_box box;
        text_status_view view(nullptr);
        for (int step = 0; step < 2000; ++step) {
            const auto kind = random() % 4;
            if (kind < 3) {
                box.append(std::string(random() % 30, static_cast<char>('a' + step % 26)) + "\r\n");
            } else {
                box.keep_last(random() % 200);
            }
            if (random() % 3 != 0) continue;
            view.show_control(box);
            QCOMPARE(view.toPlainText().toStdString(), shown(box).toStdString());
        }
    }

    void a_new_caret_shows_the_last_line() {
        text_box box;
        text_status_view view(nullptr);
        view.resize(300, 64);
        view.show();
        for (int line = 0; line < 100; ++line)
            box.append("line " + std::to_string(line) + "\r\n");
        box.caret_to_end();
        view.show_control(box);
        QVERIFY(view.verticalScrollBar()->maximum() > 0);
        QCOMPARE(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
        QVERIFY(view.viewport()->rect().contains(view.cursorRect()));
    }

    void the_reader_is_left_alone_until_a_line_comes_with_the_caret() {
        text_box box;
        text_status_view view(nullptr);
        view.resize(300, 64);
        view.show();
        for (int line = 0; line < 100; ++line)
            box.append("line\r\n");
        view.show_control(box);
        view.verticalScrollBar()->setValue(10);
        box.append("more\r\n");
        view.show_control(box);
        QCOMPARE(view.verticalScrollBar()->value(), 10);
        box.caret_to_end(); // by a status frame that changes nothing
        view.show_control(box);
        QCOMPARE(view.verticalScrollBar()->value(), 10);
        box.append("alarm\r\n");
        box.caret_to_end();
        view.show_control(box);
        QCOMPARE(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
    }

    void a_view_that_stands_at_the_end_follows_lines_without_the_caret() {
        text_box box;
        text_status_view view(nullptr);
        view.resize(300, 64);
        view.show();
        for (int line = 0; line < 100; ++line) {
            box.append("Measure started\r\n");
            view.show_control(box);
            QCOMPARE(view.verticalScrollBar()->value(), view.verticalScrollBar()->maximum());
        }
        QVERIFY(view.verticalScrollBar()->maximum() > 50);
    }

    void a_text_that_is_being_copied_stays_selected_behind_a_new_line() {
        text_box box;
        text_status_view view(nullptr);
        box.append("one two\r\n");
        view.show_control(box);
        QTextCursor chosen(view.document());
        chosen.movePosition(QTextCursor::Right, QTextCursor::KeepAnchor, 3);
        view.setTextCursor(chosen);
        box.append("three\r\n");
        view.show_control(box);
        QCOMPARE(view.textCursor().selectedText(), QString("one"));
    }

    /// A line into a box of 60,000 characters costs what it costs in an empty one, give or take the noise of
    /// a busy machine: the medians of many batches are compared.
    void a_line_costs_the_same_in_a_full_box() {
        const double empty = microseconds_per_line(400);
        const double full = microseconds_per_line(60000);
        qInfo("microseconds per line: %.1f nearly empty, %.1f full", empty, full);
        QVERIFY2(full < 3 * empty, "a full box must not cost more");
    }

  private:
    static double microseconds_per_line(std::size_t limit) {
        constexpr int batch = 20;
        const std::string line = "07-02-2026 13:05:09 KVD Engine 1 ## Main Alarm DC ON\r\n";
        text_box box;
        text_status_view view(nullptr);
        view.resize(800, 64);
        view.show();
        while (box.size() + line.size() <= limit)
            box.append(line);
        view.show_control(box);
        std::vector<qint64> times;
        for (int sample = 0; sample < 25; ++sample) {
            QElapsedTimer clock;
            clock.start();
            for (int step = 0; step < batch; ++step) {
                box.keep_last(limit);
                box.append(line);
                box.caret_to_end();
                view.show_control(box);
                view.grab();
            }
            times.push_back(clock.nsecsElapsed());
        }
        std::ranges::nth_element(times, times.begin() + 12);
        return static_cast<double>(times[12]) / 1000 / batch;
    }
};

static const desktop_test<text_status_test> known;
#include "text_status_test.moc"
