// The pictures of all windows are taken: each is there, has its size, and shows something.

#include "desktop/all_windows.h"
#include "desktop/desktop_test.h"

#include <QDir>
#include <QImage>
#include <QMap>
#include <QProcess>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace tyxo;

namespace {

/// The pictures with their sizes; none for a dialog, which is as large as its texts need.
QMap<QString, QSize> expected_pictures() {
    QMap<QString, QSize> sizes{{"main-window", {1272, 930}},
                               {"main-window-frozen-and-enlarged", {1272, 930}},
                               {"gateway", {1000, 680}},
                               {"gateway-automatic", {1000, 680}}};
    for (const char* name : {"alert", "alert-dark", "gateway-without-registers", "password", "setup-browse",
                             "stop-lock", "stop-lock-open"})
        sizes[name] = QSize();
    for (const window_row& row : window_table())
        if (row.picture != nullptr) sizes[row.picture] = QSize();
    sizes["status-window"] = {900, 600};
    for (int tab = 0; tab < 5; ++tab)
        sizes[QString("setup-%1").arg(tab)] = sizes[QString("setup-measuring-%1").arg(tab)] = QSize();
    for (const char* engine : {"inline5-2", "inline6-4", "inline24-4", "v16-4", "v24-4"}) {
        sizes[QString("detailed-%1").arg(engine)] = {1240, 900};
        sizes[QString("detailed-small-%1").arg(engine)] = {1000, 620};
        sizes[QString("speed-bars-firing-order-%1").arg(engine)] = {1100, 700};
        sizes[QString("speed-bars-%1").arg(engine)] = {1100, 700};
        sizes[QString("thermo-bars-%1").arg(engine)] = {800, 500};
    }
    sizes["speed-bars-inline6-4"] = {800, 500}; // the first, before anybody has made the window larger
    return sizes;
}

/// Written and drawn on, not only filled.
bool shows_something(const QImage& picture) {
    QSet<QRgb> colours;
    for (int y = 0; y < picture.height(); y += 4)
        for (int x = 0; x < picture.width(); ++x)
            colours.insert(picture.pixel(x, y));
    return colours.size() > 8;
}

} // namespace

class window_pictures_test : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() {
        QProcess program;
        program.start(WINDOW_PICTURES, {folder_.path()});
        QVERIFY(program.waitForFinished(60'000));
        QVERIFY2(program.exitStatus() == QProcess::NormalExit && program.exitCode() == 0,
                 program.readAllStandardError());
        QCOMPARE(program.readAllStandardOutput(), QByteArray()); // no window exceeds its screen
    }

    void every_picture_is_there_and_no_other() {
        QStringList names = QDir(folder_.path()).entryList({"*.png"}, QDir::Files, QDir::Name);
        names.replaceInStrings(".png", "");
        names.sort();
        QCOMPARE(names, expected_pictures().keys());
    }

    void each_has_its_size_and_shows_something() {
        const QMap<QString, QSize> expected = expected_pictures();
        for (const auto& [name, size] : expected.asKeyValueRange()) {
            const QImage picture(folder_.filePath(name + ".png"));
            QVERIFY2(picture.width() > 200 && picture.height() > 100, qPrintable(name));
            if (size.isValid()) QVERIFY2(picture.size() == size, qPrintable(name));
            QVERIFY2(shows_something(picture), qPrintable(name));
        }
    }

    void the_printed_page_is_a_document() {
        QFile page(folder_.filePath("printed-page.pdf"));
        QVERIFY(page.open(QIODevice::ReadOnly));
        QVERIFY(page.read(5) == "%PDF-");
        QVERIFY(page.size() > 10'000);
    }

  private:
    QTemporaryDir folder_;
};

static const desktop_test<window_pictures_test> known;
#include "window_pictures_test.moc"
