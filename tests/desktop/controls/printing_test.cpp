// A strip chart on paper, as a PDF file that is read back.

#include "desktop/chart_pictures.h"
#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "platform/printer.h"
#include "widgets/colour.h"
#include "widgets/plots/chart_page.h"

#include <QMessageBox>
#include <QPrintDialog>
#include <QPrinter>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

using namespace tyxo;

namespace {

constexpr int per_inch = 100;
const QColor ground(192, 192, 192);

iStripChartX printed_chart() {
    iStripChartX chart = engine_chart();
    chart.PrintFlag = true;
    chart.PrintMode = 1;
    chart.PrintFontName = "arial";
    chart.PrintFontSize = 12;
    chart.PrintFontBold = true;
    chart.PrintTitle = {" ", "Sensor 1:  K\xFChlung", " ",
                        "Printed by Quarvo | Tyxo Data Logger Version 2.10_4"};
    chart.PrinterMarginRight = chart.PrinterMarginBottom = 2;
    return chart;
}

QByteArray output_of(const QString& program, const QStringList& arguments) {
    QProcess process;
    process.start(program, arguments);
    const bool done = process.waitForFinished();
    return done && process.exitCode() == 0 ? process.readAllStandardOutput() : QByteArray("failed");
}

} // namespace

class printing_test : public QObject {
    Q_OBJECT

  private slots:
    void the_title_lines_stand_above_the_chart_in_their_order() {
        QVERIFY(print(printed_chart(), level_rows()));
        const QString text = page_text();
        const auto sensor = text.indexOf(QStringLiteral("Sensor 1: Kühlung"));
        const auto printed = text.indexOf("Printed by Quarvo | Tyxo Data Logger Version 2.10_4");
        const auto legend = text.indexOf("RPM /10");
        const auto scale = text.indexOf("150");
        QVERIFY(sensor >= 0);
        QVERIFY(sensor < printed);
        QVERIFY(printed < legend);
        QVERIFY(legend < scale);
    }

    void the_page_bears_legend_scale_and_times() {
        QVERIFY(print(printed_chart(), level_rows()));
        const QString text = page_text();
        for (const char* word : {"Tsig %DCA", "TAlm 100%", "TmV x50", "125", "100", "75", "50", "25"})
            QVERIFY2(text.contains(word), word);
        static const QRegularExpression time("\\d+/\\d+ \\d\\d:\\d\\d:[0-5]0");
        QVERIFY(time.globalMatch(text).hasNext());
    }

    void the_clock_has_labels_up_to_the_right_end_of_the_page() {
        QVERIFY(print(printed_chart(), level_rows()));
        static const QRegularExpression time("\\d+/\\d+ \\d\\d:\\d\\d:[0-5]0");
        auto labels = time.globalMatch(page_text());
        int count = 0;
        for (; labels.hasNext(); labels.next())
            ++count;
        QVERIFY2(count >= 5, qPrintable(QString::number(count)));
    }

    void only_visible_curves_are_printed() {
        iStripChartX chart = printed_chart();
        chart.curves[3].Visible = false;
        QVERIFY(print(chart, level_rows()));
        QVERIFY(!page_text().contains("TmV x50"));
        const QImage page = page_picture();
        QVERIFY(!has(page, qt_colour(curve_colours[3])));
        QVERIFY(has(page, qt_colour(curve_colours[0])));
    }

    void each_curve_can_be_seen_the_white_one_on_its_grey_ground() {
        QVERIFY(print(printed_chart(), level_rows()));
        const QImage page = page_picture();
        const QRect axes(0, page.height() / 5, page.width(), page.height()); // below the legend
        const double width = area_of(page.copy(axes), ground).width();
        for (std::size_t curve = 0; curve < strip_curves; ++curve) {
            const QColor color = qt_colour(curve_colours[curve]);
            const QRectF line = area_of(page.copy(axes), color);
            QVERIFY2(line.width() > width * 0.95, qPrintable(color.name()));
        }
    }

    void the_paper_lies_across_and_stays_white_outside_of_margins_in_centimetres() {
        QVERIFY(print(printed_chart(), level_rows()));
        const QImage page = page_picture();
        QVERIFY(page.width() > page.height());
        const auto centimetres = [](double length) { return qRound(length * per_inch / 2.54); };
        const QRect inside =
            page.rect().adjusted(centimetres(0.5), centimetres(0.5), -centimetres(2), -centimetres(2));
        QRect painted;
        for (int y = 0; y < page.height(); ++y)
            for (int x = 0; x < page.width(); ++x)
                if (page.pixelColor(x, y) != white) painted |= QRect(x, y, 1, 1);
        QVERIFY(inside.adjusted(-1, -1, 1, 1).contains(painted));
        // It fills what the margins leave.
        QVERIFY(painted.width() > inside.width() * 0.95);
        QVERIFY(painted.bottom() > inside.bottom() - per_inch / 4);
    }

    void print_mode_0_is_upright() {
        iStripChartX chart = printed_chart();
        chart.PrintMode = 0;
        QVERIFY(print(chart, level_rows()));
        const QImage page = page_picture();
        QVERIFY(page.width() < page.height());
    }

    void the_span_is_the_charts_and_all_its_rows_are_there() {
        iStripChartX chart = printed_chart();
        chart.XAxisSpan = 1.0 / 96;
        QVERIFY(print(chart, level_rows(90'000, strip_spans[1])));
        const QImage page = page_picture();
        // Below titles and legend.
        const QImage axes = page.copy(0, page.height() * 2 / 5, page.width(), page.height());
        const double share =
            area_of(axes, qt_colour(curve_colours[4])).width() / area_of(axes, ground).width();
        QVERIFY2(std::abs(share - 0.1) < 0.02, qPrintable(QString::number(share)));
    }

    void a_chart_without_rows_is_printed() {
        QVERIFY(print(printed_chart(), strip_window()));
        QVERIFY(page_text().contains("Tsig %DCA"));
    }

    void margins_wider_than_the_paper_leave_a_chart() {
        iStripChartX chart = printed_chart();
        chart.PrinterMarginLeft = chart.PrinterMarginRight = 50;
        chart.PrinterMarginTop = chart.PrinterMarginBottom = 50;
        chart.PrintTitle.clear();
        QVERIFY(print(chart, level_rows()));
        QVERIFY(has(page_picture(), ground));
    }

    void a_file_that_cannot_be_written_is_told() {
        file_ = folder_.filePath("no such folder/page.pdf");
        QVERIFY(!print(printed_chart(), level_rows()));
    }

    void a_print_that_fails_ends_with_a_message_box() {
        QString text;
        int boxes = 0;
        answer_boxes([&](QMessageBox& box) {
            text = box.text();
            ++boxes;
        });
        iStripChartX chart = printed_chart();
        chart.PrintFlag = false; // no dialog: the printer that the machine has, which is none
        print_chart(chart, level_rows());
        QCOMPARE(boxes, 1);
        QVERIFY(text.startsWith("The chart could not be printed"));
    }

    void the_operator_can_leave_the_dialog_without_printing() {
        int dialogs = 0;
        int boxes = 0;
        answer_boxes([&](QMessageBox&) { ++boxes; });
        QTimer look;
        connect(&look, &QTimer::timeout, this, [&] {
            auto* const dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) return;
            ++dialogs;
            dialog->reject();
        });
        look.start(10);
        print_chart(printed_chart(), level_rows());
        QCOMPARE(dialogs, 1);
        QCOMPARE(boxes, 0);
    }

    void a_location_makes_neither_a_folder_nor_markup_of_the_documents_name() {
        QString name;
        QTimer look;
        connect(&look, &QTimer::timeout, this, [&] {
            auto* const dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
            if (dialog == nullptr) return;
            name = dialog->printer()->docName();
            dialog->reject();
        });
        look.start(10);
        iStripChartX chart = printed_chart();
        chart.Title = "1: <b>port</b> / \\aft & bow";
        print_chart(chart, level_rows());
        QCOMPARE(name, QString("1: -b-port--b- - -aft - bow"));
    }

    void init() { file_ = folder_.filePath("page.pdf"); }
    void cleanup() {
        boxes_.stop();
        boxes_.disconnect();
    }

  private:
    bool print(const iStripChartX& chart, const strip_window& rows) {
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(file_);
        return paint_chart_page(printer, chart, rows);
    }

    QString page_text() {
        QString text = QString::fromUtf8(output_of("pdftotext", {"-layout", file_, "-"}));
        // Runs of blanks are a matter of the layout, ligatures of the font.
        static const QRegularExpression blanks("[ ]+");
        return text.replace(blanks, " ").replace(QChar(0xFB00), "ff");
    }

    QImage page_picture() {
        const QString base = folder_.filePath("page");
        output_of("pdftoppm", {"-r", QString::number(per_inch), "-png", "-singlefile", file_, base});
        return QImage(base + ".png").convertToFormat(QImage::Format_RGB32);
    }

    void answer_boxes(const std::function<void(QMessageBox&)>& seen) {
        connect(&boxes_, &QTimer::timeout, this, [seen] {
            auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            if (box == nullptr) return;
            seen(*box);
            box->accept();
        });
        boxes_.start(10);
    }

    QTemporaryDir folder_;
    QString file_;
    QTimer boxes_;
};

static const desktop_test<printing_test> known;
#include "printing_test.moc"
