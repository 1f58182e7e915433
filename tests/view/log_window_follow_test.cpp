// Logs that are being written, and days beside each other.

#include "desktop/desktop_test.h"
#include "view/plant_logs.h"

using namespace tyxo;
using namespace tyxo::view;

class log_window_follow_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        logs_ = std::make_unique<plant_logs>();
        logs_->write("20260702Qu_Engine 1.xlg", plant_logs::steady(3600, 7200, 40));
        open();
    }

    void a_log_that_grows_moves_the_window_that_shows_its_end() {
        window_->show_range({midnight + 2 * hour - 10 * minute, midnight + 2 * hour});
        logs_->append("20260702Qu_Engine 1.xlg", plant_logs::steady(7200, 7260, 70));
        window_->follow();
        QCOMPARE(window_->range(),
                 (time_range{midnight + 2 * hour - 9 * minute, midnight + 2 * hour + minute}));
        window_->set_cursor(midnight + 2 * hour + 30 * second);
        settle(*window_);
        QVERIFY(values(*window_, 0).contains("Tsig 70 %"));
    }

    void who_looks_at_something_else_is_left_alone() {
        const time_range before{midnight + hour, midnight + hour + 10 * minute};
        window_->show_range(before);
        logs_->append("20260702Qu_Engine 1.xlg", plant_logs::steady(7200, 7260, 70));
        window_->follow();
        QCOMPARE(window_->range(), before);
        QCOMPARE(window_->lanes()[0]->line.last() * second, midnight + 2 * hour + 59 * second);
    }

    void the_whole_time_stays_the_whole_time() {
        logs_->append("20260702Qu_Engine 1.xlg", plant_logs::steady(7200, 7260, 70));
        window_->follow();
        QCOMPARE(window_->range(), (time_range{midnight + hour, midnight + 2 * hour + minute}));
    }

    void records_of_the_minute_that_was_read_before_are_not_missed() {
        window_->show_range({midnight + 2 * hour - 2 * minute, midnight + 2 * hour});
        logs_->append("20260702Qu_Engine 1.xlg", plant_logs::steady(7200, 7210, 70));
        window_->follow();
        window_->set_cursor(midnight + 2 * hour + 9 * second);
        settle(*window_);
        logs_->append("20260702Qu_Engine 1.xlg", plant_logs::steady(7210, 7220, 75));
        window_->follow();
        window_->set_cursor(midnight + 2 * hour + 19 * second);
        settle(*window_);
        QVERIFY2(values(*window_, 0).contains("02:00:19   Tsig 75 %"), qPrintable(values(*window_, 0)));
    }

    void comments_that_come_are_in_the_list_and_others_stay_where_they_are() {
        auto& table = part<QTableView>(*window_, "marks");
        logs_->append("20260702Qu_Engine 1.xlg", plant_logs::comment(7200, "KVD Prealarm ON"));
        window_->follow();
        QCOMPARE(table.model()->rowCount(), 1);
        table.setFocus();
        table.selectRow(0);
        logs_->append("20260702Qu_Engine 1.xlg", plant_logs::steady(7201, 7210, 70));
        window_->follow();
        settle(*window_);
        QVERIFY(table.selectionModel()->isRowSelected(0));
    }

    void folders_far_below_are_not_looked_into() {
        const QDir folder(QString::fromStdString(logs_->folder()));
        QVERIFY(folder.mkpath("a/b/c/d/e/f"));
        QVERIFY(QFile::copy(folder.filePath("20260702Qu_Engine 1.xlg"), folder.filePath("a/b/near.xlg")));
        QVERIFY(
            QFile::copy(folder.filePath("20260702Qu_Engine 1.xlg"), folder.filePath("a/b/c/d/e/f/far.xlg")));
        const std::vector<std::string> found = logs_named({logs_->folder()});
        QCOMPARE(found.size(), std::size_t{2});
        QVERIFY(found[1].ends_with("near.xlg"));
    }

    void the_log_of_a_new_day_joins_its_engine() {
        logs_->write("20260703Qu_Engine 1.xlg", ""); // has its header only, for now
        look_at_the_folder();
        QCOMPARE(window_->lanes()[0]->line.logs().size(), std::size_t{1});
        logs_->append("20260703Qu_Engine 1.xlg", plant_logs::steady(0, 60, 90));
        look_at_the_folder();
        QCOMPARE(window_->lanes().size(), std::size_t{1});
        QCOMPARE(window_->lanes()[0]->line.logs().size(), std::size_t{2});
        QCOMPARE(window_->range().to, midnight + 24 * hour + minute);
    }

    void what_is_not_followed_stays_as_it_is() {
        part<QAction>(*window_, "follow").setChecked(false);
        logs_->append("20260702Qu_Engine 1.xlg", plant_logs::steady(7200, 7260, 70));
        window_->follow();
        QCOMPARE(window_->lanes()[0]->line.last() * second, midnight + 2 * hour - second);
    }

    void a_log_that_has_gone_is_told_and_its_picture_stays() {
        QFile::remove(QString::fromStdString(logs_->path("20260702Qu_Engine 1.xlg")));
        window_->follow();
        QVERIFY(window_->statusBar()->currentMessage().contains("cannot open"));
        QCOMPARE(window_->lanes().size(), std::size_t{1});
        window_->show_range({midnight + hour, midnight + hour + minute});
        settle(*window_);
        QVERIFY(window_->isVisible());
    }

    void days_stand_beside_each_other_at_the_same_place() {
        logs_->write("20260703Qu_Engine 1.xlg", plant_logs::steady(3600, 7200, 90));
        open();
        part<QAction>(*window_, "days").setChecked(true);
        QCOMPARE(window_->lanes().size(), std::size_t{2});
        QCOMPARE(window_->lanes()[1]->shift, 24 * hour);
        QCOMPARE(window_->lanes()[1]->chart.Title, std::string("Engine 1, 2026-07-03"));
        QCOMPARE(window_->range(), (time_range{midnight + hour, midnight + 2 * hour}));
        window_->set_cursor(midnight + hour + minute);
        settle(*window_);
        QVERIFY(values(*window_, 0).contains("2026-07-02 01:01:00   Tsig 40 %"));
        QVERIFY(values(*window_, 1).contains("2026-07-03 01:01:00   Tsig 90 %"));
        part<QAction>(*window_, "days").setChecked(false);
        QCOMPARE(window_->lanes().size(), std::size_t{1});
        QCOMPARE(window_->range(), (time_range{midnight + hour, midnight + 26 * hour}));
    }

  private:
    void open() {
        window_.reset();
        window_ = std::make_unique<log_window>(std::vector<std::string>{logs_->folder()});
        window_->resize(1280, 900);
        window_->show();
        wait_for(*window_);
    }
    void look_at_the_folder() {
        for (int tick = 0; tick < 5; ++tick)
            window_->follow();
        wait_for(*window_);
    }

    std::unique_ptr<plant_logs> logs_;
    std::unique_ptr<log_window> window_;
};

static const desktop_test<log_window_follow_test> registered;

#include "log_window_follow_test.moc"
