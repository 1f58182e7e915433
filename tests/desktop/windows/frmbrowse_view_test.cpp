// The folder browser of the setup dialog with its real window and real folders.

#include "desktop/desktop_test.h"
#include "desktop/setup_window.h"
#include "dialogs/frmbrowse.h"
#include "settings/settings.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QMessageBox>
#include <QTimer>

using namespace tyxo;

class frmbrowse_view_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        setup_.start();
        here_ = QDir::currentPath();
        QVERIFY(QDir().mkpath("logs/north"));
        QVERIFY(QDir().mkpath("logs/south"));
        QVERIFY(QDir().mkpath(QString::fromUtf8("K\xC3\xBChlung")));
    }
    void init() {
        sensor::state.channels[0].logpath = "kept/";
        setup_.open();
    }
    void cleanup() {
        if (QFileDialog* const window = browser()) window->close();
        QTRY_VERIFY(browser() == nullptr);
        setup_.close();
    }
    void cleanupTestCase() { setup_.end(); }

    void it_stands_in_front_of_the_setup_and_begins_in_the_working_directory() {
        open("cmd_browse_path(0)");
        QCOMPARE(browser()->windowTitle(), QString("Pathselect"));
        QCOMPARE(browser()->windowModality(), Qt::WindowModal);
        QCOMPARE(browser()->parentWidget(), setup_.dialog());
        QCOMPARE(browser()->directory().absolutePath(), here_);
    }

    void it_begins_in_the_rows_folder() {
        sensor::state.channels[0].logpath = (here_ + "\\logs\\").toStdString();
        setup_.click("cmd_Refresh");
        QTRY_VERIFY(setup_.find<QLineEdit>("Text_logfile_path", 0)->text().endsWith("logs\\"));
        open("cmd_browse_path(0)");
        QCOMPARE(browser()->directory().absolutePath(), here_ + "/logs");
    }

    void ok_takes_the_folder_with_its_closing_separator_at_once() {
        browse_to("cmd_browse_path(0)", here_ + "/logs");
        QCOMPARE(sensor::state.channels[0].logpath, (here_ + "/logs/").toStdString());
        QTRY_COMPARE(setup_.find<QLineEdit>("Text_logfile_path", 0)->text(), here_ + "/logs/");
        setup_.click("cmd_cancel");
        QTRY_VERIFY(!setup_.dialog()->isVisible());
        QCOMPARE(sensor::state.channels[0].logpath, (here_ + "/logs/").toStdString());
    }

    void umlauts_arrive_in_the_systems_letters() {
        browse_to("cmd_browse_path(1)", here_ + QString::fromUtf8("/K\xC3\xBChlung"));
        QVERIFY(sensor::state.channels[1].logpath.ends_with("/K\xFChlung/"));
    }

    void the_event_files_folder_counts_with_ok() {
        const std::string before = settings.evtpath;
        browse_to("cmd_browse_evtpath", here_ + "/logs/south");
        QTRY_COMPARE(setup_.find<QLineEdit>("Text_evtlogfile_path")->text(), here_ + "/logs/south/");
        QCOMPARE(settings.evtpath, before);
        setup_.click("cmd_OK");
        QTRY_COMPARE(settings.evtpath, (here_ + "/logs/south/").toStdString());
    }

    void the_keyboard_alone_walks_into_a_folder_and_takes_it() {
        open("cmd_browse_path(2)");
        auto* const list = browser()->findChild<QWidget*>("treeView");
        QVERIFY(list != nullptr);
        for (int stop = 0; stop < 20 && browser()->focusWidget() != list; ++stop)
            QTest::keyClick(browser()->focusWidget(), Qt::Key_Tab);
        QCOMPARE(browser()->focusWidget(), list);
        QTest::qWait(200); // its folders are read in the background
        QTest::keyClick(list, Qt::Key_End);
        QTest::keyClick(list, Qt::Key_L); // "logs"
        QTest::keyClick(list, Qt::Key_Return);
        QTRY_COMPARE(browser()->directory().absolutePath(), here_ + "/logs");
        QVERIFY(browser()->isVisible());
        auto* const ok = browser()->findChild<QPushButton*>("Ok");
        for (int stop = 0; stop < 20 && !ok->hasFocus(); ++stop)
            QTest::keyClick(browser()->focusWidget(), Qt::Key_Tab);
        QTest::keyClick(ok, Qt::Key_Space);
        QTRY_VERIFY(browser() == nullptr);
        QCOMPARE(sensor::state.channels[2].logpath, (here_ + "/logs/").toStdString());
    }

    void every_other_end_keeps_the_path_that_stood_there() {
        browse_to("cmd_browse_path(0)", here_ + "/logs/north");
        const std::function<void()> ends[] = {
            [this] { QTest::keyClick(browser(), Qt::Key_Escape); }, [this] { browser()->close(); },
            [this] {
                auto* const buttons = browser()->findChild<QDialogButtonBox*>();
                QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
            }};
        for (const auto& end : ends) {
            sensor::state.channels[1].logpath = "other/";
            open("cmd_browse_path(1)");
            browser()->setDirectory("/");
            end();
            QTRY_VERIFY(browser() == nullptr);
            QCOMPARE(sensor::state.channels[1].logpath, std::string("other/"));
        }
    }

    void a_typed_folder_that_does_not_exist_is_not_taken() {
        open("cmd_browse_path(0)");
        auto* const line = browser()->findChild<QLineEdit*>("fileNameEdit");
        setup_.type(line, here_ + "/nowhere");
        QTest::keyClick(line, Qt::Key_Return);
        QTest::qWait(50);
        static_cast<QDialog*>(browser())->accept();
        QTest::qWait(50);
        QVERIFY(browser() != nullptr);
        QVERIFY(QApplication::activeModalWidget() == browser()); // no box in front of it
        QCOMPARE(sensor::state.channels[0].logpath, std::string("kept/"));
    }

    void a_folder_that_the_settings_cannot_name_is_told_and_not_taken() {
        const QString greek = here_ + QString::fromUtf8("/\xCE\xA9mega");
        QVERIFY(QDir().mkpath(greek));
        open("cmd_browse_path(0)");
        auto* const line = browser()->findChild<QLineEdit*>("fileNameEdit");
        setup_.type(line, greek);
        QString told;
        QTimer::singleShot(0, this, [&told] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            told = box->text();
            QTest::keyClick(box, Qt::Key_Return);
        });
        static_cast<QDialog*>(browser())->accept();
        QVERIFY2(told.startsWith("This folder's name has letters that the settings cannot hold:"),
                 qPrintable(told));
        QVERIFY(browser() != nullptr);
        QCOMPARE(sensor::state.channels[0].logpath, std::string("kept/"));
    }

    void nothing_can_be_renamed_or_deleted() {
        open("cmd_browse_path(0)");
        QVERIFY(browser()->testOption(QFileDialog::ReadOnly));
        QVERIFY(browser()->testOption(QFileDialog::DontUseNativeDialog));
        QCOMPARE(browser()->fileMode(), QFileDialog::Directory);
    }

  private:
    QFileDialog* browser() const {
        auto* const window = setup_.dialog()->findChild<QFileDialog*>("frmbrowse");
        return window != nullptr && window->isVisible() ? window : nullptr;
    }

    void open(const char* button) {
        setup_.click(button);
        QTRY_VERIFY(browser() != nullptr);
        QVERIFY(QTest::qWaitForWindowActive(browser()));
        to_front(browser()); // its list puts names into a text box that has not got the keyboard yet
    }

    void browse_to(const char* button, const QString& folder) {
        open(button);
        auto* const line = browser()->findChild<QLineEdit*>("fileNameEdit");
        setup_.type(line, folder);
        auto* const ok = browser()->findChild<QPushButton*>("Ok");
        QCOMPARE(ok->text(), QString("Ok"));
        QTRY_VERIFY(ok->isEnabled());
        QTest::mouseClick(ok, Qt::LeftButton);
        QTRY_VERIFY(browser() == nullptr);
    }

    setup_window setup_;
    QString here_;
};

static const desktop_test<frmbrowse_view_test> known;
#include "frmbrowse_view_test.moc"
