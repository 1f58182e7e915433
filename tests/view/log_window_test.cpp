// The window of the log tool: what it opens and shows, and how it is moved through time.

#include "desktop/accessibility.h"
#include "desktop/desktop_test.h"
#include "displays/frmdetailedpic.h"
#include "view/plant_logs.h"

#include <algorithm>

using namespace tyxo;
using namespace tyxo::view;

class log_window_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        logs_ = std::make_unique<plant_logs>();
        using plant = plant_logs;
        logs_->write("20260702Qu_Engine 1.xlg",
                     plant::steady(3600, 7200, 40) + plant::curve("REC2", 7200, 500) +
                         plant::curve("REC3", 7201, 3000) + plant::steady(7202, 7260, 60) +
                         plant::comment(7260, "KVD Main ALARM DC ON") + plant::steady(7300, 10'800, 80) +
                         plant::comment(10'800, "Measure Stopped"));
        logs_->write("20260703Qu_Engine 1.xlg", plant::steady(3600, 7200, 90));
        logs_->write("20260702Qu_Engine 2.xlg",
                     plant::steady(3600, 5400, 20) + plant::comment(5400, "KVD Prealarm ON") +
                         plant::curve("REC2", 5410, 520) + plant::steady(5411, 7200, 30));
        open({logs_->folder()});
    }
    void cleanup() {
        window_.reset();
        frmdetailedpic::unload();
    }

    void a_folder_is_a_lane_for_each_engine() {
        QCOMPARE(window_->lanes().size(), std::size_t{2});
        QCOMPARE(window_->lanes()[0]->line.location(), std::string("Engine 1"));
        QCOMPARE(window_->lanes()[0]->line.logs().size(), std::size_t{2});
        QCOMPARE(window_->windowTitle(), QString("2026-07-02 to 2026-07-03 - Tyxo Log View"));
        QVERIFY(part<QLabel>(*window_, "status").text().startsWith("3 logs, 2026-07-02 01:00:00 to "));
        QCOMPARE(window_->range(), (time_range{midnight + hour, midnight + 26 * hour}));
        for (int lane = 0; lane < 2; ++lane)
            QVERIFY(
                !part(*window_, qPrintable(QString("lane_%1_chart").arg(lane))).visibleRegion().isEmpty());
    }

    void without_a_log_it_says_so_and_nothing_can_be_done() {
        open({});
        QVERIFY(part(*window_, "nothing").isVisible());
        QVERIFY(!part<QAction>(*window_, "detailed").isEnabled());
        QVERIFY(part<QAction>(*window_, "open").isEnabled());
    }

    void what_cannot_be_read_is_told_and_the_rest_is_shown() {
        open({logs_->folder(), logs_->path("gone.xlg")});
        auto* const box = window_->findChild<QMessageBox*>("message_box");
        QVERIFY(box != nullptr && box->isVisible());
        QVERIFY2(box->text().contains("cannot open") && box->text().contains("gone.xlg"),
                 qPrintable(box->text()));
        QCOMPARE(window_->lanes().size(), std::size_t{2});
    }

    void logs_that_do_not_fit_into_the_memory_are_not_opened() {
        open({});
        window_->ask_memory_of([] { return std::int64_t{1000}; });
        window_->open({logs_->folder()});
        wait_for(*window_);
        QVERIFY(window_->lanes().empty());
        auto* const box = window_->findChild<QMessageBox*>("message_box");
        QVERIFY(box != nullptr && box->text().startsWith("3 more logs would take "));
    }

    void an_empty_folder_is_told_and_watched() {
        const QTemporaryDir empty;
        open({empty.path().toStdString()});
        QVERIFY(window_->findChild<QMessageBox*>("message_box") != nullptr);
        QFile::copy(QString::fromStdString(logs_->path("20260702Qu_Engine 2.xlg")),
                    empty.filePath("20260702Qu_Engine 2.xlg"));
        for (int tick = 0; tick < 5; ++tick)
            window_->follow();
        wait_for(*window_);
        QCOMPARE(window_->lanes().size(), std::size_t{1});
    }

    void values_under_the_cursor_are_those_of_the_nearest_record() {
        set_cursor(midnight + hour + 10 * second);
        QCOMPARE(
            values(*window_, 0),
            QString("2026-07-02 01:00:10   Tsig 40 %   1480 rpm   TmV 12.34 mV   Teff DC 48 %   AC 7 %"));
        QVERIFY(values(*window_, 1).contains("Tsig 20 %"));
        set_cursor(midnight + 2 * hour + 80 * second);
        QCOMPARE(values(*window_, 0), QString("2026-07-02 02:01:20   no record"));
    }

    void the_scope_has_the_last_cycle_up_to_the_cursor() {
        set_cursor(midnight + hour);
        QCOMPARE(part<QLabel>(*window_, "lane_0_cycle").text(), QString("no cycle"));
        QVERIFY(window_->lanes()[0]->scope.curves[1].points.empty());
        set_cursor(midnight + 3 * hour);
        QCOMPARE(part<QLabel>(*window_, "lane_0_cycle").text(), QString("Cycle of 02:00:01"));
        QCOMPARE(window_->lanes()[0]->scope.curves[1].points.size(), std::size_t{256});
        QCOMPARE(window_->lanes()[0]->scope.curves[2].points.size(), std::size_t{256});
        QVERIFY(window_->lanes()[1]->scope.curves[2].points.empty());
    }

    void the_detailed_display_follows_cursor_and_lane() {
        set_cursor(midnight + 3 * hour);
        part<QAction>(*window_, "detailed").trigger();
        settle();
        auto& detailed = part(*window_, "frmdetailedpic");
        QVERIFY(detailed.isVisible());
        QVERIFY(detailed.windowModality() == Qt::NonModal);
        QCOMPARE(detailed.windowTitle(), QString("Detailed Display Engine 1"));
        const auto lines = [] { return frmdetailedpic::state.surface.strokes.size(); };
        const auto both = lines();
        set_cursor(midnight + hour);
        QVERIFY2(lines() < both, "there was no curve at that time");
        set_cursor(midnight + 3 * hour);
        QCOMPARE(lines(), both);
        window_->select(1);
        settle();
        QCOMPARE(detailed.windowTitle(), QString("Detailed Display Engine 2"));
        QVERIFY2(lines() < both, "the second engine has one curve");
        detailed.close();
        settle();
        QVERIFY(!detailed.isVisible());
    }

    void a_scope_that_is_drawn_leaves_the_selected_engine_alone() {
        set_cursor(midnight + 3 * hour);
        static_cast<void>(show_cycle(*window_->lanes()[1], midnight + 3 * hour, false));
        open_detailed_display();
        QCOMPARE(frmdetailedpic::state.form.Caption, std::string("Detailed Display Engine 1"));
    }

    void zooming_leaves_the_time_under_the_mouse_where_it_is() {
        auto& cursor = part(*window_, "lane_0_cursor");
        const QPoint place(cursor.width() / 3, cursor.height() / 2);
        QTest::mouseMove(&cursor, place);
        settle();
        const std::int64_t before = window_->cursor();
        turn_wheel(cursor, place, 10);
        settle();
        QVERIFY(window_->range().span() < 4 * hour);
        QTest::mouseMove(&cursor, place + QPoint(1, 0));
        QTest::mouseMove(&cursor, place);
        settle();
        const double pixel = static_cast<double>(window_->range().span()) / cursor.width();
        QVERIFY(std::abs(static_cast<double>(window_->cursor() - before)) < 4 * pixel);
    }

    void zooming_has_an_end_on_both_sides() {
        for (int key = 0; key < 40; ++key)
            QTest::keyClick(window_.get(), Qt::Key_Plus);
        settle();
        QCOMPARE(window_->range().span(), shortest_span);
        for (int key = 0; key < 60; ++key)
            QTest::keyClick(window_.get(), Qt::Key_Minus);
        settle();
        QVERIFY(window_->range().span() <= 2 * 25 * hour);
        QTest::keyClick(window_.get(), Qt::Key_0, Qt::ControlModifier);
        settle();
        QCOMPARE(window_->range(), (time_range{midnight + hour, midnight + 26 * hour}));
    }

    void dragging_moves_the_time_with_the_mouse() {
        window_->show_range({midnight + hour, midnight + 2 * hour});
        settle();
        auto& cursor = part(*window_, "lane_0_cursor");
        const QPoint from(cursor.width() / 2, cursor.height() / 2);
        QTest::mousePress(&cursor, Qt::LeftButton, {}, from);
        QMouseEvent moved(QEvent::MouseMove, from - QPoint(100, 0), cursor.mapToGlobal(from - QPoint(100, 0)),
                          Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(&cursor, &moved);
        QTest::mouseRelease(&cursor, Qt::LeftButton, {}, from - QPoint(100, 0));
        QVERIFY(window_->range().from > midnight + hour);
        QCOMPARE(window_->range().span(), hour);
    }

    void keys_move_cursor_and_lane() {
        window_->show_range({midnight + hour, midnight + 2 * hour});
        set_cursor(midnight + hour + 30 * minute);
        QTest::keyClick(window_.get(), Qt::Key_Right);
        QCOMPARE(window_->cursor(), midnight + hour + 30 * minute + hour / 400);
        QTest::keyClick(window_.get(), Qt::Key_Left, Qt::ShiftModifier);
        QVERIFY(window_->cursor() < midnight + hour + 30 * minute);
        QTest::keyClick(window_.get(), Qt::Key_Down);
        QCOMPARE(window_->selected(), std::size_t{1});
        QTest::keyClick(window_.get(), Qt::Key_Down);
        QCOMPARE(window_->selected(), std::size_t{1});
        set_cursor(midnight + 2 * hour - second);
        QTest::keyClick(window_.get(), Qt::Key_Right, Qt::ShiftModifier);
        QVERIFY2(window_->range().to > midnight + 2 * hour, "the picture goes along");
        QTest::keyClick(window_.get(), Qt::Key_End);
        QCOMPARE(window_->cursor(), midnight + 26 * hour - second);
    }

    void one_jumps_along_cycles_and_comments() {
        set_cursor(midnight + hour);
        part<QAction>(*window_, "next_cycle").trigger();
        QCOMPARE(window_->cursor(), midnight + 2 * hour);
        part<QAction>(*window_, "next_cycle").trigger();
        QCOMPARE(window_->cursor(), midnight + 2 * hour + second);
        part<QAction>(*window_, "next_cycle").trigger();
        QCOMPARE(window_->cursor(), midnight + 2 * hour + second);
        part<QAction>(*window_, "previous_cycle").trigger();
        QCOMPARE(window_->cursor(), midnight + 2 * hour);

        set_cursor(midnight + hour);
        part<QAction>(*window_, "next_mark").trigger();
        QCOMPARE(window_->cursor(), midnight + hour + 30 * minute);
        QCOMPARE(window_->selected(), std::size_t{1});
        part<QAction>(*window_, "next_mark").trigger();
        QCOMPARE(window_->cursor(), midnight + 2 * hour + minute);
        QCOMPARE(window_->selected(), std::size_t{0});
        part<QAction>(*window_, "next_mark").trigger();
        QCOMPARE(window_->cursor(), midnight + 3 * hour);
        part<QAction>(*window_, "previous_mark").trigger();
        QCOMPARE(window_->cursor(), midnight + 2 * hour + minute);
    }

    void comments_can_be_alarms_only_and_are_jumped_to() {
        auto& table = part<QTableView>(*window_, "marks");
        QCOMPARE(table.model()->rowCount(), 3);
        part<QCheckBox>(*window_, "alarms_only").setChecked(true);
        QCOMPARE(table.model()->rowCount(), 2);
        QCOMPARE(table.model()->index(1, 2).data().toString(), QString("KVD Main ALARM DC ON"));
        emit table.activated(table.model()->index(1, 0));
        QCOMPARE(window_->cursor(), midnight + 2 * hour + minute);
        part<QAction>(*window_, "next_mark").trigger();
        QCOMPARE(window_->cursor(), midnight + 2 * hour + minute);
    }

    void curves_can_be_hidden() {
        part<QAction>(*window_, "curve_1").setChecked(false);
        settle();
        for (const auto& lane : window_->lanes())
            QVERIFY(!lane->chart.curves[1].Visible && lane->chart.curves[0].Visible);
    }

    void what_is_in_sight_is_exported_by_the_ending_of_the_file() {
        const std::string file = logs_->path("picture.png");
        window_->export_to(file);
        const QImage all(QString::fromStdString(file));
        QCOMPARE(all.width(), 1600);
        window_->show_range({midnight + hour, midnight + 2 * hour});
        window_->export_to(file);
        const QImage part_of_it(QString::fromStdString(file));
        QCOMPARE(part_of_it.size(), all.size());
        QVERIFY2(part_of_it != all, "another time is another picture");
        window_->export_to(logs_->path("nowhere/picture.png"));
        auto* const box = window_->findChild<QMessageBox*>("message_box");
        QVERIFY(box != nullptr && box->text().contains("cannot"));
    }

    void a_print_can_be_given_up_and_paper_is_a_file_too() {
        const QString file = QString::fromStdString(logs_->path("printed.pdf"));
        QTimer::singleShot(200, window_.get(), [&] {
            auto* const dialog = window_->findChild<QDialog*>("print_dialog");
            if (dialog != nullptr) dialog->reject();
        });
        part<QAction>(*window_, "print").trigger();
        QVERIFY(!QFile::exists(file));
        window_->export_to(file.toStdString());
        QFile printed(file);
        QVERIFY(printed.open(QIODevice::ReadOnly) && printed.readAll().startsWith("%PDF"));
    }

    void each_stop_of_the_keyboard_has_a_name_of_its_own() {
        QStringList names;
        for (QWidget* control : visible_controls(window_.get())) {
            if (!is_stop(control) || qobject_cast<QScrollArea*>(control) != nullptr) continue;
            const QString name = spoken(control);
            QVERIFY2(!name.isEmpty(), qPrintable(control->objectName()));
            QVERIFY2(!names.contains(name), qPrintable(name));
            names.push_back(name);
        }
        QVERIFY(names.size() >= 4);
    }

    void who_listens_hears_the_values() {
        set_cursor(midnight + hour + 10 * second);
        const QAccessibleInterface* const heard =
            QAccessible::queryAccessibleInterface(&part(*window_, "lane_0_cursor"));
        const QString words = heard->text(QAccessible::Value) + heard->text(QAccessible::Description);
        QVERIFY2(words.contains("Tsig 40 %"), qPrintable(words));
    }

  private:
    void open(const std::vector<std::string>& names) {
        window_.reset();
        window_ = std::make_unique<log_window>(names);
        window_->resize(1280, 900);
        window_->show();
        wait_for(*window_);
    }
    void settle() const { view::settle(*window_); }
    void set_cursor(std::int64_t to) {
        window_->set_cursor(to);
        settle();
    }
    static void turn_wheel(QWidget& over, QPoint place, int steps) {
        QWheelEvent event(place, over.mapToGlobal(place), {}, QPoint(0, 120 * steps), Qt::NoButton, {},
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&over, &event);
    }

    std::unique_ptr<plant_logs> logs_;
    std::unique_ptr<log_window> window_;
};

static const desktop_test<log_window_test> registered;

#include "log_window_test.moc"
