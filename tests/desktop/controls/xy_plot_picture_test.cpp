// The polar scope keeps pictures of itself: after many changes it looks like one that never knew another
// state.

#include "desktop/desktop_test.h"
#include "desktop/paint_counter.h"
#include "desktop/random_steps.h"
#include "widgets/plots/xy_plot_view.h"
#include "widgets/show.h"

#include <QTest>

using namespace tyxo;

class xy_plot_picture_test : public QObject {
    Q_OBJECT

  private slots:
    void every_step_leaves_the_picture_of_the_last_state_data() { add_seeds(3); }

    void every_step_leaves_the_picture_of_the_last_state() {
        QFETCH(const unsigned, seed);
        steps_ = random_steps(seed);
        plot_ = {};
        QWidget page;
        auto* const view = new xy_plot_view(&page);
        place(*view, {110, 110});
        for (int step = 0; step < 300; ++step) {
            const char* const what = change_something(*view);
            view->show_control(plot_);
            const QByteArray message = QByteArray(what) + " in step " + QByteArray::number(step);
            QVERIFY2(same_pixels(picture_of(*view), painted_anew(*view)), message);
            for (int curve = 0; curve < static_cast<int>(plot_.curves.size()); ++curve)
                check_properties(*view, curve);
        }
    }

    void what_did_not_change_is_not_painted() {
        xy_plot_view view;
        plot_ = {};
        plot_.curves = {some_curve(), some_curve(), some_curve()};
        view.resize(110, 110);
        view.show_control(plot_);
        view.show();
        QVERIFY(QTest::qWaitForWindowExposed(&view));
        QCoreApplication::processEvents();
        const paint_counter counter(view);
        view.show_control(plot_);
        QCoreApplication::processEvents();
        QCOMPARE(counter.paints(), 0);
        plot_.curves[1] = some_curve();
        view.show_control(plot_);
        QTRY_COMPARE(counter.paints(), 1);
    }

  private:
    /// At an odd place, where pixels of the screen and of the view do not begin alike.
    static void place(xy_plot_view& view, QSize size) { view.setGeometry(QRect(QPoint(7, 3), size)); }

    const char* change_something(xy_plot_view& view) {
        switch (steps_.below(12)) {
        case 0:
            place(view, {40 + steps_.below(200), 40 + steps_.below(200)});
            return "size";
        case 1:
            view.setEnabled(!view.isEnabled());
            return "enabled";
        case 2:
            view.setFont(steps_.font());
            return "font";
        case 3:
            (steps_.below(2) == 0 ? plot_.XAxis : plot_.YAxis) = {-1.0 * steps_.below(70), steps_.wild()};
            return "axis";
        case 4:
            plot_.XAxis = plot_.YAxis = {-65, 130};
            return "usual axes";
        case 5:
            plot_.curves.resize(static_cast<std::size_t>(steps_.below(5)));
            return "number of curves";
        case 6:
            place(view, {1000 + steps_.below(60), 100});
            return "a size without a kept picture";
        default:
            if (plot_.curves.size() < 3) plot_.curves.resize(3);
            plot_.curves[static_cast<std::size_t>(steps_.below(3))] = some_curve();
            return "curve";
        }
    }

    plot_curve some_curve() {
        plot_curve curve{
            steps_.one_of({"", "zero"}), steps_.one_of({rgb(255, 0, 0), rgb(0, 0, 255)}), true, {}};
        curve.Visible = steps_.below(8) != 0;
        const bool wild = steps_.below(4) == 0;
        for (int count = steps_.below(60); count > 0; --count)
            curve.points.push_back(wild ? plot_point{steps_.wild(), steps_.wild()}
                                        : plot_point{steps_.below(130) - 65.0, steps_.below(130) - 65.0});
        return curve;
    }

    QImage painted_anew(const xy_plot_view& view) const {
        QWidget page;
        auto* const fresh = new xy_plot_view(&page);
        fresh->setGeometry(view.geometry());
        fresh->setEnabled(view.isEnabled());
        fresh->setFont(view.font());
        fresh->show_control(plot_);
        return picture_of(*fresh);
    }

    void check_properties(const xy_plot_view& view, int index) const {
        const plot_curve& curve = plot_.curves[static_cast<std::size_t>(index)];
        const auto told = [&](const char* array) { return view.property(element(array, index).toLatin1()); };
        QCOMPARE(told("CurveTitle").toString(), QString::fromStdString(curve.Title));
        QCOMPARE(told("CurveVisible").toBool(), curve.Visible);
        QCOMPARE(told("CurveColor").toInt(), curve.Color);
        QCOMPARE(told("CurvePoints").toInt(), static_cast<int>(curve.points.size()));
    }

    random_steps steps_{0};
    iXYPlotX plot_;
};

static const desktop_test<xy_plot_picture_test> known;
#include "xy_plot_picture_test.moc"
