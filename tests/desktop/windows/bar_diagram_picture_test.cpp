// A bar diagram after many changes, in a window that was hidden or minimised now and then: it looks like one
// that never knew another state, and works only where somebody sees it.

#include "desktop/desktop_test.h"
#include "desktop/random_steps.h"
#include "displays/bar_diagram_view.h"
#include "widgets/plots/bar_plot_view.h"

#include <QSignalSpy>
#include <QTest>

#include <memory>

using namespace tyxo;

class bar_diagram_picture_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        frmbarpic::unload();
        form_.form.Visible = true;
        form_.channel = 1; // none is selected: nobody else fills the form
        change_bars();
        window_ = std::make_unique<bar_diagram_view>(form_, "frmbarpic", nullptr);
        window_->show_state();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }
    void cleanup() { window_.reset(); }

    void every_step_leaves_the_picture_of_the_last_state_data() { add_seeds(3); }

    void every_step_leaves_the_picture_of_the_last_state() {
        QFETCH(const unsigned, seed);
        steps_ = random_steps(seed);
        for (int step = 0; step < 100; ++step) {
            const char* const what = change_something();
            window_->show_state();
            QCoreApplication::processEvents();
            const QByteArray message = QByteArray(what) + " in step " + QByteArray::number(step);
            if (window_->isVisible()) QVERIFY2(same_pixels(picture(*window_), painted_anew()), message);
        }
    }

    void only_a_window_that_is_seen_draws_its_bars_data() {
        QTest::addColumn<bool>("minimised");
        QTest::addRow("closed") << false;
        QTest::addRow("minimised") << true;
    }
    void only_a_window_that_is_seen_draws_its_bars() {
        QFETCH(const bool, minimised);
        const QSignalSpy drawings(plot(*window_), &QCustomPlot::afterReplot);
        change_bars();
        window_->show_state();
        QTRY_COMPARE(drawings.count(), 1);
        minimised ? window_->showMinimized() : hide();
        QCoreApplication::processEvents();
        const auto before = drawings.count();
        for (int curve = 0; curve < 3; ++curve) {
            change_bars();
            window_->show_state();
            QCoreApplication::processEvents();
        }
        QCOMPARE(drawings.count(), before);
        form_.form.Visible = true;
        window_->showNormal();
        window_->show_state();
        QTRY_VERIFY(drawings.count() > before);
        QVERIFY(same_pixels(picture(*window_), painted_anew()));
    }

  private:
    void hide() {
        form_.form.Visible = false;
        window_->show_state();
    }

    const char* change_something() {
        switch (steps_.below(8)) {
        case 0:
            window_->resize(800 + steps_.below(300), 500 + steps_.below(200));
            return "size";
        case 1:
            window_->setEnabled(!window_->isEnabled());
            return "enabled";
        case 2:
            window_->setFont(steps_.font());
            return "font";
        case 3:
            form_.form.Visible = !form_.form.Visible;
            return "shown or hidden";
        case 4:
            for (std::size_t bar = 0; bar < form_.Lbl_bar.size(); ++bar)
                form_.Lbl_bar[bar] = {std::to_string(steps_.below(300)), steps_.below(2) == 0};
            form_.Lbl_mtyp2.Caption = steps_.one_of({"6 cylinder in line", "24 cylinder V-Type", ""});
            return "labels";
        default:
            change_bars();
            return "bars";
        }
    }

    void change_bars() {
        iPlotX& plot = form_.plot;
        plot.Title = steps_.one_of({"Cylinder speed difference diagram", ""});
        plot.XAxis = {.Min = 0, .Span = 3.0 + steps_.below(20), .Increment = 1};
        plot.YAxes = {
            {.Name = "left", .Title = "RPM", .Span = steps_.one_of({100.0, 250.0}), .Increment = 20},
            {.Name = "right", .Title = "%", .Min = -60, .Span = steps_.below(4) == 0 ? steps_.wild() : 80}};
        plot.series.resize(1 + static_cast<std::size_t>(steps_.below(3)));
        for (bar_series& series : plot.series) {
            series.Title = steps_.one_of({"Speed absolut", "Signal difference"});
            series.Color = steps_.one_of({rgb(0, 0, 255), rgb(192, 0, 192)});
            series.YAxisName = steps_.one_of({"left", "right"});
            series.points.clear();
            for (int bar = 1; bar <= 24; ++bar)
                series.points.push_back({1.0 * bar, steps_.wild(), 0.4});
        }
    }

    static bar_plot_view* plot(const QWidget& window) { return window.findChild<bar_plot_view*>(); }

    static QImage picture(QWidget& window) { return window.grab().toImage(); }

    QImage painted_anew() const {
        bar_diagram_view fresh(form_, "frmbarpic", nullptr);
        fresh.setFont(window_->font());
        fresh.setEnabled(window_->isEnabled());
        fresh.resize(window_->size());
        fresh.show_state();
        QCoreApplication::processEvents();
        return picture(fresh);
    }

    random_steps steps_{0};
    bar_form& form_ = frmbarpic::state;
    std::unique_ptr<bar_diagram_view> window_;
};

static const desktop_test<bar_diagram_picture_test> known;
#include "bar_diagram_picture_test.moc"
