// The strokes of a canvas as the lines that are painted.

#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "displays/frmdetailedpic.h"
#include "widgets/plots/canvas_lines_view.h"

#include <QTest>

#include <cmath>

using namespace tyxo;

class canvas_lines_test : public QObject {
    Q_OBJECT

  private slots:
    void a_line_from_far_away_enters_at_the_right_place() {
        const std::vector<stroke> far{{-1e9, -1e9, 1e9, 1e9, 5}};
        const auto runs = canvas_lines(far, {0, 0, 1, QRectF(0, 0, 100, 100)});
        QCOMPARE(runs.size(), std::size_t{1});
        for (const QPointF& end : runs[0].points) {
            QVERIFY(std::abs(end.x() - end.y()) < 1e-6);
            QVERIFY(end.x() >= -51 && end.x() <= 151);
        }
        const std::vector<stroke> outside{{200, -500, 500, 200, 5}, {-1e300, 1e9, 1e300, 1e9, 5}};
        QVERIFY(canvas_lines(outside, {0, 0, 1, QRectF(0, 0, 100, 100)}).empty());
    }

    void a_line_without_a_finite_end_is_left_out() {
        std::vector<stroke> strokes;
        for (const double strange : {infinite, -infinite, not_a_number}) {
            strokes.push_back({strange, 20, 30, 40, 5});
            strokes.push_back({10, strange, 30, 40, 5});
            strokes.push_back({10, 20, strange, 40, 5});
            strokes.push_back({10, 20, 30, strange, 5});
        }
        QVERIFY(canvas_lines(strokes, {0, 0, 1, QRectF(0, 0, 100, 100)}).empty());
    }

    void strokes_that_continue_each_other_become_one_line() {
        const std::vector<stroke> strokes{{0, 0, 10, 0, 1},  {10, 0, 20, 0, 1}, {20, 0, 20, 10, 1},
                                          {20, 10, 0, 0, 2}, {0, 0, 5, 5, 2},   {50, 50, 60, 60, 2}};
        const auto runs = canvas_lines(strokes, {0, 0, 2, QRectF(0, 0, 400, 400)});
        QCOMPARE(runs.size(), std::size_t{3});
        QCOMPARE(runs[0].points, QPolygonF(QList<QPointF>{{0, 0}, {40, 0}, {40, 20}}));
        QCOMPARE(runs[0].ForeColor, 1);
        QCOMPARE(runs[1].points, QPolygonF(QList<QPointF>{{40, 20}, {0, 0}, {10, 10}}));
        QCOMPARE(runs[2].points, QPolygonF(QList<QPointF>{{100, 100}, {120, 120}}));
    }

    void a_way_back_is_no_straight_way() {
        const std::vector<stroke> strokes{{0, 0, 50, 0, 1}, {50, 0, 20, 0, 1}, {20, 0, 90, 0, 1}};
        const auto runs = canvas_lines(strokes, {0, 0, 1, QRectF(0, 0, 100, 100)});
        QCOMPARE(runs[0].points, QPolygonF(QList<QPointF>{{0, 0}, {50, 0}, {20, 0}, {90, 0}}));
    }

    void a_joined_circle_stays_within_a_tenth_of_a_pixel() {
        frmdetailedpic::state.surface.clear();
        frmdetailedpic::resize(316, 185);
        const double unit = 12; // of 3840 x 2160 pixels
        const auto runs =
            canvas_lines(frmdetailedpic::state.surface.strokes, {0, 0, unit, QRectF(0, 0, 3840, 2160)});
        const QPointF hub(68.2 * unit, 92.5 * unit);
        QVERIFY(runs[0].points.size() < 260);
        for (qsizetype k = 1; k < runs[0].points.size(); ++k) {
            const QPointF middle = (runs[0].points[k - 1] + runs[0].points[k]) / 2 - hub;
            QVERIFY(std::abs(std::hypot(middle.x(), middle.y()) - 45 * unit) < 0.25);
        }
    }
};

static const desktop_test<canvas_lines_test> known;
#include "canvas_lines_test.moc"
