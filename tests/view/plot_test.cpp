// Pictures of logs in files: what was measured is where it must be, and what cannot be drawn is told.

#include "basics/failure.h"
#include "desktop/desktop_test.h"
#include "view/plant_logs.h"
#include "view/run_plot.h"
#include "xlg/plot_words.h"

#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QSvgRenderer>

#include <algorithm>
#include <optional>
#include <string_view>
#include <vector>

using namespace tyxo;
using namespace tyxo::view;
using plant = plant_logs;

namespace {

enum class hue { red, purple };

/// Also where the edge of a line is smoothed over the grey ground.
bool is(hue wanted, const QColor& color) {
    const int red = color.red();
    const int green = color.green();
    const int blue = color.blue();
    if (wanted == hue::red) return red - std::max(green, blue) > 80 && std::abs(green - blue) < 40;
    return std::min(red, blue) - green > 80 && std::abs(red - blue) < 40;
}

/// Where the colour is in a column, from above.
std::vector<int> rows_with(const QImage& image, int column, hue wanted) {
    std::vector<int> rows;
    for (int y = 0; y < image.height(); ++y)
        if (is(wanted, image.pixelColor(column, y))) rows.push_back(y);
    return rows;
}

/// First and last row of the axes: the longest stretch of a column that is not white, but for a white curve.
std::pair<int, int> axes_of(const QImage& image, int column) {
    constexpr int white_curve = 3;
    std::pair<int, int> longest{0, -1};
    int begin = 0;
    int end = -1; // of what is not white so far
    for (int y = 0; y < image.height(); ++y) {
        if (image.pixelColor(column, y) == QColor(Qt::white)) continue;
        if (y - end > white_curve + 1) begin = y;
        end = y;
        if (end - begin > longest.second - longest.first) longest = {begin, end};
    }
    return longest;
}

/// The height of a value between 0 and 150, as a row.
double row_of(const QImage& image, int column, double value) {
    const auto [top, bottom] = axes_of(image, column);
    return bottom - value / 150 * (bottom - top);
}

QByteArray content(const std::string& name) {
    QFile file(QString::fromStdString(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QString output_of(const QString& program, const QStringList& words) {
    QProcess process;
    process.start(program, words);
    return process.waitForFinished() ? QString::fromUtf8(process.readAllStandardOutput()) : QString();
}

QImage drawn(const std::string& svg) {
    QSvgRenderer renderer(QString::fromStdString(svg));
    QImage image(renderer.viewBox().size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    renderer.render(&painter);
    return image;
}

} // namespace

class plot_test : public QObject {
    Q_OBJECT

  private slots:
    void init() { logs_.emplace(); }

    void a_curve_stands_at_the_height_of_its_value() {
        write(plant::steady(3600, 4200, 120));
        QCOMPARE(plot({"--from", "01:02", "--to", "01:05", "--size", "1000x400"}), 0);
        const QImage picture = image();
        QCOMPARE(picture.size(), QSize(1000, 400));
        for (const int column : {205, 505, 905}) {
            const std::vector<int> rows = rows_with(picture, column, hue::red);
            QVERIFY(!rows.empty());
            QVERIFY(rows.size() <= 4);
            QVERIFY(std::abs(rows.front() - row_of(picture, column, 120)) <= 3);
        }
    }

    void where_nothing_was_measured_there_is_no_curve() {
        write(plant::steady(3600, 4200, 120) + plant::steady(5400, 6000, 60));
        QCOMPARE(plot({"--from", "01:00", "--to", "01:40", "--size", "1000x400"}), 0);
        const QImage picture = image();
        QVERIFY(!rows_with(picture, 150, hue::red).empty());
        for (int column = 330; column < 720; ++column)
            QVERIFY(rows_with(picture, column, hue::red).empty());
        const std::vector<int> rows = rows_with(picture, 905, hue::red);
        QVERIFY(!rows.empty());
        QVERIFY(std::abs(rows.front() - row_of(picture, 905, 60)) <= 3);
    }

    void another_time_is_another_picture_and_the_same_one_the_same() {
        write(plant::steady(3600, 4200, 120) + plant::steady(4200, 4800, 60));
        QCOMPARE(plot({"--from", "01:02", "--to", "01:05"}), 0);
        const QByteArray first = content(file());
        QCOMPARE(plot({"--force", "--from", "01:12", "--to", "01:15"}), 0);
        QVERIFY(content(file()) != first);
        QCOMPARE(plot({"--force", "--from", "2026-07-02T01:02", "--to", "2026-07-02T01:05"}), 0);
        QCOMPARE(content(file()), first);
    }

    void an_end_before_the_beginning_is_one_of_the_next_day() {
        write(plant::steady(86'000, 86'400, 120) + plant::steady(0, 600, 60));
        QCOMPARE(plot({"--from", "23:55", "--to", "00:05", "--size", "1000x400"}), 0);
        QVERIFY(!rows_with(image(), 905, hue::red).empty());
    }

    void the_files_of_an_engine_are_one_line_and_engines_stand_below_each_other() {
        write(plant::steady(3600, 3900, 120));
        logs_->write("2026070202Qu_Engine 1.xlg", plant::steady(3900, 4200, 120));
        logs_->write("20260702Qu_Engine 2.xlg", plant::steady(3600, 4200, 60));
        QCOMPARE(plot({"--from", "01:02", "--to", "01:08", "--size", "1000x800"}), 0);
        const QImage picture = image();
        for (const int column : {205, 905}) {
            const std::vector<int> rows = rows_with(picture, column, hue::red);
            QVERIFY(!rows.empty());
            QVERIFY(rows.front() < 400);
            QVERIFY(rows.back() > 400);
        }
    }

    void svg_has_the_texts_and_the_lines_and_no_pixels() {
        write(plant::steady(3600, 4200, 120));
        QCOMPARE(plot({"--from", "01:02", "--to", "01:05"}, "a.svg"), 0);
        const QByteArray text = content(logs_->path("a.svg"));
        for (const char* const word : {"Tsig %DCA", "TAlm 100%", "2/7 01:03:00", ">150<",
                                       "Engine 1, 2026-07-02 01:02:00 to 01:05:00", "6 cylinder in line"})
            QVERIFY2(text.contains(word), word);
        QVERIFY(text.count("<polyline") + text.count("<path") > 10);
        QVERIFY(!text.contains("<image"));
    }

    void what_is_beyond_the_scale_stays_within_the_axes_of_svg_too() {
        write(plant::steady(3600, 3700, 400) + plant::steady(3700, 3800, 50) +
              plant::steady(3800, 4200, 400));
        QCOMPARE(plot({"--from", "01:00", "--to", "01:05", "--size", "1000x400"}, "a.svg"), 0);
        const QImage picture = drawn(logs_->path("a.svg"));
        const int top = axes_of(picture, 505).first;
        int up = 0;
        for (int column = 100; column < 1000; ++column) {
            const std::vector<int> rows = rows_with(picture, column, hue::red);
            if (rows.empty()) continue;
            ++up;
            QVERIFY2(rows.front() >= top - 2, qPrintable(QString("%1: %2").arg(column).arg(rows.front())));
        }
        QVERIFY(up > 100);
    }

    void pdf_is_one_page_of_the_size_with_the_texts() {
        write(plant::steady(3600, 4200, 120));
        QCOMPARE(plot({"--from", "01:02", "--to", "01:05", "--size", "960x480"}, "a.pdf"), 0);
        const QString name = QString::fromStdString(logs_->path("a.pdf"));
        const QString about = output_of("pdfinfo", {name});
        static const QRegularExpression one("Pages: +1\n");
        static const QRegularExpression size("Page size: +720 x 360 pts");
        QVERIFY2(about.contains(one) && about.contains(size), qPrintable(about));
        const QString text = output_of("pdftotext", {name, "-"});
        QVERIFY(text.contains("Engine 1, 2026-07-02 01:02:00 to 01:05:00"));
        QCOMPARE(output_of("pdfimages", {"-list", name}).count('\n'), 2); // the heading alone
    }

    void the_title_is_the_one_that_is_told() {
        write(plant::steady(3600, 4200, 120));
        QCOMPARE(plot({"--title", "Trial <3> K\xC3\xBChlung"}, "a.svg"), 0);
        QVERIFY(content(logs_->path("a.svg")).contains("Trial &lt;3&gt; K\xC3\xBChlung"));
    }

    void a_cycle_is_drawn_as_each_window_of_the_program_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<QString>("ending");
        for (const char* const kind : {"scope", "detail", "speed-bars", "thermo-bars"})
            for (const char* const ending : {"png", "svg", "pdf"})
                QTest::addRow("%s %s", kind, ending) << kind << ending;
    }
    void a_cycle_is_drawn_as_each_window_of_the_program() {
        QFETCH(QString, kind);
        QFETCH(QString, ending);
        write(plant::record(3600, 50) + plant::curve("REC2", 3601, 500) + plant::curve("REC3", 3602, 20'000) +
              plant::curve("REC2", 3701, 800) + plant::curve("REC3", 3702, 30'000));
        const std::string name = "a." + ending.toStdString();
        const std::string as = kind.toStdString();
        QCOMPARE(plot({"--cycle", "01:00:30", "--as", as}, name), 0);
        const QByteArray first = content(logs_->path(name));
        QCOMPARE(plot({"--force", "--cycle", "01:02", "--as", as}, name), 0);
        QVERIFY(!first.isEmpty());
        QVERIFY(content(logs_->path(name)) != first);
        if (ending == "svg") QVERIFY(!first.contains("<image"));
    }

    void the_scope_of_a_cycle_has_its_curve_around_the_middle() {
        write(plant::curve("REC2", 3601, 500));
        QCOMPARE(plot({"--cycle", "01:00:30"}), 0);
        const QImage picture = image();
        const std::vector<int> rows = rows_with(picture, picture.width() / 2 + 20, hue::red);
        QVERIFY(!rows.empty() && rows.front() < picture.height() / 2);
        QVERIFY(rows.back() > picture.height() / 2);
    }

    void bars_beyond_the_scale_stay_within_the_axes_of_svg_too() {
        std::string line = "<REC2> 01:00:01 ";
        for (int sample = 0; sample < 256; ++sample)
            line += sample < 40 ? "1000 " : "490 ";
        write(line + " </REC2>\r\n");
        QCOMPARE(plot({"--cycle", "01:01", "--as", "thermo-bars"}, "a.svg"), 0);
        const QImage picture = drawn(logs_->path("a.svg"));
        int found = 0;
        for (int column = 300; column < picture.width() - 130; ++column) {
            const std::vector<int> rows = rows_with(picture, column, hue::purple);
            found += rows.empty() ? 0 : 1;
            QVERIFY(rows.empty() || rows.front() > 100); // the legend's sample of the colour is below
        }
        QVERIFY(found > 100);
    }

    void where_nothing_was_measured_there_is_no_picture() {
        write(plant::steady(3600, 4200, 120));
        QCOMPARE(plot({"--from", "02:00", "--to", "03:00"}), 1);
        QCOMPARE(plot({"--from", "2025-01-01", "--to", "2025-01-02"}), 1);
        QCOMPARE(plot({"--from", "05:00"}), 1);
        QCOMPARE(plot({"--cycle", "01:05"}), 1);
        QVERIFY(content(file()).isEmpty());
    }

    void a_file_that_is_there_stays_unless_forced() {
        write(plant::steady(3600, 4200, 120));
        QCOMPARE(plot({}), 0);
        const QByteArray first = content(file());
        QVERIFY(refusal({"--from", "01:05"}).ends_with("is there already; --force replaces it"));
        QCOMPARE(content(file()), first);
        QVERIFY(content(file() + ".part").isEmpty());
    }

    void what_cannot_be_done_is_told() {
        write(plant::steady(3600, 4200, 120));
        QVERIFY(refusal({}, "no folder/a.png").starts_with("cannot create "));
        QVERIFY(refusal({"--settings", "/nowhere.ini"}) == "cannot read /nowhere.ini");
        QCOMPARE(refusal({"--from", "2026-07-02T02:00", "--to", "2026-07-02T01:00"}),
                 "the time from 2026-07-02 02:00:00 to 2026-07-02 01:00:00 has no length");
        logs_->write("20260702Qu_Engine 2.xlg", plant::steady(3600, 4200, 60));
        QCOMPARE(refusal({"--cycle", "01:05"}), "a cycle is one of a single engine, and the logs are of 2");
        logs_->write("20260702Qu_Engine 3.xlg", plant::steady(3600, 4200, 60));
        QCOMPARE(refusal({"--size", "1000x300"}), "a picture of 3 engines is at least 342 pixels high");
    }

    void curves_that_the_plant_does_not_show_are_not_drawn() {
        write(plant::steady(3600, 4200, 120));
        QFile settings(QString::fromStdString(logs_->path("tyxo.ini")));
        QVERIFY(settings.open(QIODevice::WriteOnly));
        settings.write("[tyxo]\r\nxy_tha=0\r\nxy_tmv=1\r\n");
        settings.close();
        QCOMPARE(plot({}, "a.svg"), 0);
        QVERIFY(!content(logs_->path("a.svg")).contains("Tsig"));
        QVERIFY(content(logs_->path("a.svg")).contains("TmV"));
    }

    void a_header_that_is_wrong_leaves_a_picture() {
        write(plant::steady(3600, 3700, 120) + plant::curve("REC2", 3601, 500) +
              plant::curve("REC3", 3602, 20'000));
        const QByteArray log = content(logs_->path(name_));
        const std::vector<std::pair<QByteArray, QByteArray>> changes{
            {"<ALARMLEVEL> 3 <", "<ALARMLEVEL> 320 <"}, {"<NUMZYL> 6 <", "<NUMZYL> 25 <"},
            {"<NUMZYL> 6 <", "<NUMZYL> 99999999 <"},    {"<OVERSPEED> ", "<OVERSPEED> -"},
            {"<FIRINGANGLE>", "<FIRINGANGLE> 99999"},   {"<FIRINGORDER>", "<FIRINGORDER> C99 -5"}};
        for (const auto& [from, to] : changes) {
            QVERIFY2(log.contains(from), from);
            QFile file(QString::fromStdString(logs_->path(name_)));
            QVERIFY(file.open(QIODevice::WriteOnly));
            file.write(QByteArray(log).replace(from, to));
            file.close();
            QVERIFY2(plot({"--force"}) == 0, to);
            for (const char* const kind : {"scope", "detail", "speed-bars", "thermo-bars"})
                QVERIFY2(plot({"--force", "--cycle", "01:01", "--as", kind}) == 0, to + " " + kind);
        }
    }

  private:
    void write(const std::string& lines) { logs_->write(name_, lines); }
    [[nodiscard]] std::string file() const { return logs_->path("a.png"); }
    [[nodiscard]] QImage image() const {
        return QImage(QString::fromStdString(file())).convertToFormat(QImage::Format_RGB32);
    }

    /// The exit code.
    int plot(const std::vector<std::string>& words, const std::string& name = "a.png") {
        const std::string output = logs_->path(name);
        const std::string folder = logs_->folder();
        std::vector<std::string_view> all{"plot"};
        all.insert(all.end(), words.begin(), words.end());
        all.insert(all.end(), {"-o", output, folder});
        return run_plot(xlg::arguments_of(all));
    }

    std::string refusal(const std::vector<std::string>& words, const std::string& name = "a.png") {
        return attempt([&] { plot(words, name); }).value_or("done");
    }

    const std::string name_ = "20260702Qu_Engine 1.xlg";
    std::optional<plant_logs> logs_;
};

static const desktop_test<plot_test> registered;

#include "plot_test.moc"
