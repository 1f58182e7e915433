// The Detailed Display with its real widgets.

#include "desktop/control_pictures.h"
#include "displays/engines.h"
#include "displays/frmdetailedpic_view.h"
#include "widgets/plots/canvas_lines_view.h"
#include "widgets/plots/canvas_view.h"

#include <QCheckBox>
#include <QLabel>
#include <QTest>

#include <algorithm>

using namespace tyxo;

namespace {

const std::vector<QSize> sizes{{1000, 620},  {1000, 700},  {1024, 768}, {1280, 1024},
                               {1920, 1080}, {1000, 1400}, {2560, 620}, {3840, 2160}};

class paint_counter : public QObject {
  public:
    int paints = 0;
    bool eventFilter(QObject* /*watched*/, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints;
        return false;
    }
};

} // namespace

class frmdetailedpic_test : public QObject {
    Q_OBJECT

  private slots:
    void init() {
        frmdetailedpic_unload();
        sensor::channels.fill({});
        window_ = std::make_unique<frmdetailedpic_view>(nullptr);
        surface_ = window_->findChild<canvas_view*>("surface");
        QVERIFY(surface_ != nullptr);
    }

    void cleanup() { window_.reset(); }

    void opens_with_its_title_and_fills_a_good_part_of_the_screen() {
        window_->show_state();
        QVERIFY(!window_->isVisible());
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(window_->isVisible());
        QCOMPARE(window_->objectName(), QString("frmdetailedpic"));
        QCOMPARE(window_->windowTitle(), QString("Detailed Display Engine 1"));
        QCOMPARE(window_->windowModality(), Qt::WindowModal);
        QVERIFY(window_->width() >= 1100 && window_->width() <= 1280);
        QVERIFY(window_->height() >= 700 && window_->height() <= 960);
    }

    void tells_the_surfaces_size_and_what_is_on_it() {
        open_and_draw(engine(4, 6, in_line));
        QCOMPARE(surface_->property("ScaleWidth").toDouble(), frmdetailedpic.surface.ScaleWidth);
        QVERIFY(surface_->property("ScaleWidth").toDouble() >= 280);
        QVERIFY(surface_->property("ScaleHeight").toDouble() >= 160);
        QCOMPARE(surface_->property("StrokeCount").toInt(),
                 256 + 7 + 512 + 512 + 256 + 6 + 7 + 6 + 256 + 1536);
        QCOMPARE(surface_->property("TextCount").toInt(), 7);
        QVERIFY(surface_->property("Unit").toDouble() > 3);
    }

    void check_boxes_take_effect_with_the_next_curve() {
        const std::vector<std::pair<const char*, i16*>> boxes{{"Chck_tsrel", &frmdetailedpic.Chck_tsrel},
                                                              {"Chck_tsabs", &frmdetailedpic.Chck_tsabs},
                                                              {"Chck_aa", &frmdetailedpic.Chck_aa}};
        open_and_draw(engine(4, 6, in_line));
        for (const auto& [name, value] : boxes) {
            auto* const box = window_->findChild<QCheckBox*>(name);
            QVERIFY2(box != nullptr && box->isVisible() && box->isChecked(), name);
            QVERIFY(!box->accessibleName().isEmpty());
            draw_pass();
            const auto before = frmdetailedpic.surface.strokes;
            QTest::mouseClick(box, Qt::LeftButton, {}, {10, box->height() / 2});
            QCOMPARE(*value, i16{0});
            window_->show_state();
            QVERIFY2(!box->isChecked(), name);
            QVERIFY2(frmdetailedpic.surface.strokes == before, "no redraw");
            draw_pass();
            QVERIFY(frmdetailedpic.surface.strokes.size() < before.size());
            QTest::keyClick(box, Qt::Key_Space);
            QCOMPARE(*value, i16{1});
        }
        draw_pass();
        frmdetailedpic.Chck_aa = 0;
        window_->show_state();
        QVERIFY(!window_->findChild<QCheckBox*>("Chck_aa")->isChecked());
    }

    void escape_closes_it_and_it_opens_again_with_all_boxes_checked() {
        open_and_draw(engine(4, 6, in_line));
        QTest::mouseClick(window_->findChild<QCheckBox*>("Chck_aa"), Qt::LeftButton, {}, {10, 8});
        QTest::keyClick(window_->findChild<QCheckBox*>("Chck_aa"), Qt::Key_Escape);
        QVERIFY(!window_->isVisible());
        QCOMPARE(sensor::polar_channel, i16{0});
        QVERIFY(!frmdetailedpic.open);
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(window_->isVisible());
        QVERIFY(window_->findChild<QCheckBox*>("Chck_aa")->isChecked());
        QCOMPARE(surface_->ScaleWidth(), 316.0);
    }

    void closing_the_frame_closes_it() {
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(window_->close());
        QVERIFY(!window_->isVisible());
        QVERIFY(!frmdetailedpic.form.Loaded);
    }

    void hidden_by_the_core_it_stays_loaded_and_comes_back() {
        open_and_draw(engine(4, 6, in_line));
        frmdetailedpic.form.Visible = false;
        window_->show_state();
        QVERIFY(!window_->isVisible());
        QVERIFY(frmdetailedpic.open);
        QCOMPARE(sensor::polar_channel, i16{1});
        draw_pass();
        frmdetailedpic.form.Visible = true;
        window_->show_state();
        QVERIFY(window_->isVisible());
        QVERIFY(has(surface_picture(), red_));
    }

    void a_resize_draws_the_fixed_picture_until_the_next_curve() {
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(has(surface_picture(), red_));
        window_->resize(1000, 700);
        QCoreApplication::processEvents();
        window_->show_state();
        QVERIFY(!has(surface_picture(), red_));
        QVERIFY(has(surface_picture(), white));
        draw_pass();
        window_->show_state();
        QVERIFY(has(surface_picture(), red_));
    }

    void paints_every_colour_on_the_grey() {
        open_and_draw(engine(4, 6, in_line));
        const QImage shown = surface_picture();
        QCOMPARE(shown.pixelColor(2, 2), QColor(192, 192, 192));
        for (const QColor& color :
             {red_, QColor(0, 0, 255), QColor(255, 255, 0), white, QColor(255, 128, 0), black})
            QVERIFY2(has(shown, color), qPrintable(color.name()));
    }

    void it_is_painted_again_after_a_curve_and_only_then() {
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        QCoreApplication::processEvents();
        paint_counter counter;
        surface_->installEventFilter(&counter);
        window_->show_state();
        QCoreApplication::processEvents();
        QCOMPARE(counter.paints, 0);
        draw_pass();
        window_->show_state();
        QTRY_COMPARE(counter.paints, 1);
    }

    void the_picture_is_where_the_surface_says() {
        open_and_draw(engine(4, 6, in_line));
        // The orange line, 90 units above the lower edge; left of the first curve's end nothing crosses it.
        const QPointF line = surface_->place(150, 95);
        const QColor pixel = pixel_at(surface_picture(), line.x(), line.y());
        QVERIFY2(pixel.red() > 230 && pixel.blue() < 60, qPrintable(pixel.name()));
        const QPointF hub = surface_->place(68.2, 92.5);
        QVERIFY(pixel_at(surface_picture(), hub.x(), hub.y()).lightness() < 140);
    }

    void nothing_is_cut_off_and_no_labels_overlap() {
        for (const i32 kind : {in_line, v_type}) {
            for (i32 cylinders = kind == v_type ? 2 : 1; cylinders <= 24; ++cylinders) {
                for (const i32 uneven : {0, 5, kind == v_type ? 20 : 8}) {
                    if (kind == v_type && cylinders % 2 == 1) continue;
                    open_and_draw(engine(4, cylinders, kind, uneven));
                    check_labels(QString("%1 %2 %3").arg(kind).arg(cylinders).arg(uneven));
                }
            }
        }
        open_and_draw(engine(2, 12, in_line));
        check_labels("2 stroke");
    }

    void labels_keep_clear_at_every_size() {
        for (const channel_rec& rec :
             {engine(4, 24, in_line), engine(4, 24, v_type, 20), engine(2, 5, in_line)}) {
            for (const QSize& size : sizes) {
                window_->resize(size);
                open_and_draw(rec);
                QCOMPARE(window_->size(), size);
                check_labels(QString("%1 x %2").arg(size.width()).arg(size.height()));
            }
        }
    }

    void labels_are_where_the_core_puts_them() {
        open_and_draw(engine(4, 6, v_type));
        for (int place = 0; place < 6; ++place) {
            const auto index = static_cast<std::size_t>(place);
            check_place(label(QString("Lblzyl(%1)").arg(place)), frmdetailedpic.Lblzyl[index]);
            check_place(label(QString("Lblzyl2(%1)").arg(place)), frmdetailedpic.Lblzyl2[index]);
        }
        check_place(label("Lbl0deg"), frmdetailedpic.Lbl0deg);
        check_place(label("Lblenddeg"), frmdetailedpic.Lblenddeg);
        QVERIFY(!label("Lblzyl(6)")->isVisible());
        open_and_draw(engine(4, 4, in_line));
        QVERIFY(!label("Lblzyl(5)")->isVisible());
        QVERIFY(!label("Lblzyl2(4)")->isVisible());
    }

    void labels_stay_right_after_a_resize_without_a_curve() {
        open_and_draw(engine(4, 6, in_line));
        window_->resize(1000, 900);
        QCoreApplication::processEvents();
        check_place(label("Lblzyl(3)"), frmdetailedpic.Lblzyl[3]);
        check_place(label("Lblzyl2(3)"), frmdetailedpic.Lblzyl2[3]);
        check_labels("after a resize");
    }

    void texts_fit_their_columns_at_every_size() {
        for (const QSize& size : sizes) {
            window_->resize(size);
            open_and_draw(engine(4, 24, v_type));
            const QFontMetricsF metrics(surface_->text_font());
            for (const canvas_text& one : frmdetailedpic.surface.texts) {
                const QRectF box(surface_->place(one.x, one.y),
                                 QSizeF(metrics.horizontalAdvance(QString::fromStdString(one.text)),
                                        metrics.ascent() + metrics.descent()));
                QVERIFY2(QRectF(surface_->rect()).contains(box), one.text.c_str());
                for (const canvas_text& other : frmdetailedpic.surface.texts) {
                    const QPointF corner = surface_->place(other.x - 7, other.y + 1);
                    if (&other != &one) QVERIFY2(!box.contains(corner), other.text.c_str());
                }
            }
            QVERIFY(metrics.height() >= 8);
        }
    }

    void check_boxes_fit_at_every_size() {
        for (const QSize& size : sizes) {
            window_->resize(size);
            open_and_draw(engine(4, 6, in_line));
            for (const char* name : {"Chck_tsrel", "Chck_tsabs", "Chck_aa"}) {
                const auto* const box = window_->findChild<QCheckBox*>(name);
                QVERIFY2(window_->rect().contains(box->geometry()), name);
                QVERIFY2(box->width() >= box->sizeHint().width(), name);
                QVERIFY2(!surface_->geometry().intersects(box->geometry()), name);
            }
        }
    }

    void strange_coordinates_are_survived_and_the_rest_is_painted() {
        open_and_draw(engine(4, 6, in_line));
        canvas& surface = frmdetailedpic.surface;
        surface.clear();
        surface.ForeColor = rgb(255, 0, 0);
        for (const double strange : {infinite, -infinite, not_a_number, 1e300, -1e300, 1e18, 4e9}) {
            surface.line(strange, 20, 30, strange);
            surface.line(strange, strange, -strange, -strange);
            surface.line(10, 10, strange, 20);
            surface.CurrentX = strange;
            surface.print("nowhere");
        }
        surface.ForeColor = rgb(0, 255, 0);
        surface.line(20, 60, 200, 60);
        frmdetailedpic.Lblzyl[0].Left = not_a_number;
        frmdetailedpic.Lblzyl[1].Top = 1e300;
        window_->show_state();
        QVERIFY(has(surface_picture(), QColor(0, 255, 0)));
        QVERIFY(has(surface_picture(), red_));
    }

    void strange_curves_are_painted() {
        open_and_draw(engine(4, 6, in_line));
        for (const double scale : {0.0, 1e300, infinite, not_a_number}) {
            for (std::size_t k = 0; k < 256; ++k)
                sensor::detail_thermo[k] = sensor::detail_angacc[k] = k % 2 == 0 ? 0 : 65535;
            sensor::scale_polar_t = sensor::scale_polar_a = scale;
            draw_pass();
            window_->show_state();
            surface_picture();
        }
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(has(surface_picture(), red_));
    }

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
        QCOMPARE(runs[0].points, QPolygonF({{0, 0}, {40, 0}, {40, 20}}));
        QCOMPARE(runs[0].ForeColor, 1);
        QCOMPARE(runs[1].points, QPolygonF({{40, 20}, {0, 0}, {10, 10}}));
        QCOMPARE(runs[2].points, QPolygonF({{100, 100}, {120, 120}}));
    }

    void a_way_back_is_no_straight_way() {
        const std::vector<stroke> strokes{{0, 0, 50, 0, 1}, {50, 0, 20, 0, 1}, {20, 0, 90, 0, 1}};
        const auto runs = canvas_lines(strokes, {0, 0, 1, QRectF(0, 0, 100, 100)});
        QCOMPARE(runs[0].points, QPolygonF({{0, 0}, {50, 0}, {20, 0}, {90, 0}}));
    }

    void a_joined_circle_stays_within_a_tenth_of_a_pixel() {
        frmdetailedpic.surface.clear();
        frmdetailedpic_resize(316, 185);
        const double unit = 12; // of 3840 x 2160 pixels
        const auto runs =
            canvas_lines(frmdetailedpic.surface.strokes, {0, 0, unit, QRectF(0, 0, 3840, 2160)});
        const QPointF hub(68.2 * unit, 92.5 * unit);
        QVERIFY(runs[0].points.size() < 260);
        for (qsizetype k = 1; k < runs[0].points.size(); ++k) {
            const QPointF middle = (runs[0].points[k - 1] + runs[0].points[k]) / 2 - hub;
            QVERIFY(std::abs(std::hypot(middle.x(), middle.y()) - 45 * unit) < 0.25);
        }
    }

  private:
    void open_and_draw(const channel_rec& rec) {
        open_detailed_display(rec);
        window_->show_state();
        QCoreApplication::processEvents(); // the layout settles, the surface gets its size
        take_curves(rec);
        draw_pass();
        window_->show_state();
    }

    QImage surface_picture() { return surface_->grab().toImage(); }

    QLabel* label(const QString& name) {
        auto* const found = window_->findChild<QLabel*>(name);
        if (found == nullptr) qFatal("no label %s", qPrintable(name));
        return found;
    }

    void check_place(const QLabel* shown, const canvas_label& control) {
        QCOMPARE(shown->isVisible() ? shown->text() : "hidden", QString::fromStdString(control.Caption));
        QCOMPARE(shown->objectName().startsWith("Lblzyl(") ? shown->geometry().center() : shown->pos(),
                 surface_->place(control.Left, control.Top).toPoint());
        QVERIFY(shown->width() >= shown->sizeHint().width() && shown->height() >= shown->sizeHint().height());
    }

    /// All visible labels lie on the surface, apart from each other and from the legends.
    void check_labels(const QString& what) {
        const QFontMetricsF metrics(surface_->text_font());
        std::vector<QRectF> taken;
        for (const canvas_text& one : frmdetailedpic.surface.texts) {
            const double wide = metrics.horizontalAdvance(QString::fromStdString(one.text));
            taken.emplace_back(surface_->place(one.x - 7, one.y),
                               surface_->place(one.x, one.y) + QPointF(wide, metrics.height() - 1));
        }
        for (const QLabel* one : surface_->findChildren<QLabel*>()) {
            if (!one->isVisible()) continue;
            const QRectF box(one->geometry());
            const auto meets = [&box](const QRectF& other) { return other.intersects(box); };
            const QByteArray message = (what + ": " + one->objectName()).toUtf8();
            QVERIFY2(QRectF(surface_->rect()).contains(box), message);
            QVERIFY2(std::ranges::none_of(taken, meets), message);
            taken.push_back(box);
        }
    }

    const QColor red_{255, 0, 0};
    std::unique_ptr<frmdetailedpic_view> window_;
    canvas_view* surface_ = nullptr;
};

QTEST_MAIN(frmdetailedpic_test)
#include "frmdetailedpic_test.moc"
