// The plot of a bar diagram by itself.

#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "widgets/plots/bar_plot_view.h"

#include <QTest>

using namespace tyxo;

namespace {

/// Two series of two bars over axes from 0 to 100 and from -60 to 20.
iPlotX plot_of(double first, double second) {
    iPlotX plot;
    plot.XAxis = {.Min = 0, .Span = 3, .Increment = 1};
    plot.YAxes = {{.Name = "left", .Min = 0, .Span = 100, .Increment = 20},
                  {.Name = "right", .Min = -60, .Span = 80, .Increment = 20}};
    plot.series = {{.Title = "value", .Color = rgb(255, 0, 0), .points = {{1, first, 0.4}, {2, 50, 0.4}}},
                   {.Title = "difference",
                    .Color = rgb(0, 0, 255),
                    .YAxisName = "right",
                    .points = {{1, second, 0.4}, {2, -10, 0.4}}}};
    return plot;
}

} // namespace

class bar_plot_view_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        view_ = std::make_unique<bar_plot_view>(nullptr);
        view_->resize(800, 500);
        view_->set_places({100, 60, 600, 350}, 12);
    }
    void cleanup() { view_.reset(); }

    void a_bar_that_goes_beyond_its_axis_bears_a_mark_at_the_end_data() {
        QTest::addColumn<double>("first");
        QTest::addColumn<double>("second");
        QTest::addColumn<QList<int>>("marks"); // up and down, of each series
        QTest::newRow("within") << 99.0 << 19.0 << QList<int>{0, 0, 0, 0};
        QTest::newRow("up to the end") << 100.0 << 20.0 << QList<int>{0, 0, 0, 0};
        QTest::newRow("value above") << 101.0 << 5.0 << QList<int>{1, 0, 0, 0};
        QTest::newRow("difference above") << 50.0 << 300.0 << QList<int>{0, 0, 1, 0};
        QTest::newRow("difference below") << 50.0 << -61.0 << QList<int>{0, 0, 0, 1};
    }
    void a_bar_that_goes_beyond_its_axis_bears_a_mark_at_the_end() {
        QFETCH(const double, first);
        QFETCH(const double, second);
        QFETCH(const QList<int>, marks);
        view_->show_control(plot_of(first, second));
        const QImage image = view_->toPixmap(800, 500).toImage();
        for (int graph = 0; graph < 4; ++graph) {
            const QCPGraph& mark = *view_->graph(graph);
            QCOMPARE(mark.data()->size(), marks[graph]);
            if (marks[graph] == 0) continue;
            const QCPGraphData& place = *mark.data()->constBegin();
            QVERIFY(mark.valueAxis()->range().contains(place.value)); // inside, else nobody saw it
            const double x = view_->xAxis->coordToPixel(place.key);
            QCOMPARE(pixel_at(image, x, mark.valueAxis()->coordToPixel(place.value)), QColor(Qt::white));
        }
    }

    void marks_have_no_entries_in_the_legend_and_go_with_their_series() {
        view_->show_control(plot_of(200, 200));
        QCOMPARE(view_->legend->itemCount(), 2);
        iPlotX fewer = plot_of(50, 5);
        fewer.series.pop_back();
        view_->show_control(fewer);
        QCOMPARE(view_->graphCount(), 2);
        QCOMPARE(view_->legend->itemCount(), 1);
    }

  private:
    std::unique_ptr<bar_plot_view> view_;
};

static const desktop_test<bar_plot_view_test> known;
#include "bar_plot_view_test.moc"
