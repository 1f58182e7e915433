// The Detailed Display with its real widgets.

#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "desktop/detailed_window.h"
#include "desktop/paint_counter.h"

#include <QCheckBox>
#include <QLabel>
#include <QTest>

#include <algorithm>

using namespace tyxo;

class frmdetailedpic_test : public detailed_window {
    Q_OBJECT

  private slots:
    void init() { make_window(); }
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
        QCOMPARE(surface_->property("ScaleWidth").toDouble(), frmdetailedpic::state.surface.ScaleWidth);
        QVERIFY(surface_->property("ScaleWidth").toDouble() >= 280);
        QVERIFY(surface_->property("ScaleHeight").toDouble() >= 160);
        QCOMPARE(surface_->property("StrokeCount").toInt(),
                 256 + 7 + 512 + 512 + 256 + 6 + 7 + 6 + 256 + 1536);
        QCOMPARE(surface_->property("TextCount").toInt(), 7);
        QVERIFY(surface_->property("Unit").toDouble() > 3);
    }

    void check_boxes_take_effect_with_the_next_curve() {
        const std::vector<std::pair<const char*, i16*>> boxes{
            {"Chck_tsrel", &frmdetailedpic::state.Chck_tsrel},
            {"Chck_tsabs", &frmdetailedpic::state.Chck_tsabs},
            {"Chck_aa", &frmdetailedpic::state.Chck_aa}};
        open_and_draw(engine(4, 6, in_line));
        for (const auto& [name, value] : boxes) {
            auto* const box = window_->findChild<QCheckBox*>(name);
            QVERIFY2(box != nullptr && box->isVisible() && box->isChecked(), name);
            QVERIFY(!box->accessibleName().isEmpty());
            draw_pass();
            const auto before = frmdetailedpic::state.surface.strokes;
            QTest::mouseClick(box, Qt::LeftButton, {}, {10, box->height() / 2});
            QCOMPARE(*value, i16{0});
            window_->show_state();
            QVERIFY2(!box->isChecked(), name);
            QVERIFY2(frmdetailedpic::state.surface.strokes == before, "no redraw");
            draw_pass();
            QVERIFY(frmdetailedpic::state.surface.strokes.size() < before.size());
            QTest::keyClick(box, Qt::Key_Space);
            QCOMPARE(*value, i16{1});
        }
        draw_pass();
        frmdetailedpic::state.Chck_aa = 0;
        window_->show_state();
        QVERIFY(!window_->findChild<QCheckBox*>("Chck_aa")->isChecked());
    }

    void escape_closes_it_and_it_opens_again_with_all_boxes_checked() {
        open_and_draw(engine(4, 6, in_line));
        QTest::mouseClick(window_->findChild<QCheckBox*>("Chck_aa"), Qt::LeftButton, {}, {10, 8});
        QTest::keyClick(window_->findChild<QCheckBox*>("Chck_aa"), Qt::Key_Escape);
        QVERIFY(!window_->isVisible());
        QCOMPARE(sensor::state.polar_channel, i16{0});
        QVERIFY(!frmdetailedpic::state.open);
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(window_->isVisible());
        QVERIFY(window_->findChild<QCheckBox*>("Chck_aa")->isChecked());
        QCOMPARE(surface_->ScaleWidth(), 316.0);
    }

    void closing_the_frame_closes_it() {
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(window_->close());
        QVERIFY(!window_->isVisible());
        QVERIFY(!frmdetailedpic::state.form.Loaded);
    }

    void hidden_by_the_core_it_stays_loaded_and_comes_back() {
        open_and_draw(engine(4, 6, in_line));
        frmdetailedpic::state.form.Visible = false;
        window_->show_state();
        QVERIFY(!window_->isVisible());
        QVERIFY(frmdetailedpic::state.open);
        QCOMPARE(sensor::state.polar_channel, i16{1});
        draw_pass();
        frmdetailedpic::state.form.Visible = true;
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
        const paint_counter counter(*surface_);
        window_->show_state();
        QCoreApplication::processEvents();
        QCOMPARE(counter.paints(), 0);
        draw_pass();
        window_->show_state();
        QTRY_COMPARE(counter.paints(), 1);
    }

    void a_new_curve_leaves_alone_what_lies_elsewhere() {
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
        QCoreApplication::processEvents();
        const paint_counter surface(*surface_);
        const paint_counter of_a_label(*label("Lblzyl(1)")); // the curve surrounds it
        const paint_counter of_a_box(*window_->findChild<QCheckBox*>("Chck_aa"));
        for (int curve = 1; curve <= 3; ++curve) {
            for (std::size_t sample = 0; sample < curve_samples; sample += 32)
                sensor::state.detail_thermo[sample] = 9000 + curve;
            draw_pass();
            window_->show_state();
            QTRY_COMPARE(surface.paints(), curve);
        }
        QCOMPARE(of_a_label.paints(), 0);
        QCOMPARE(of_a_box.paints(), 0);
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

    void strange_coordinates_are_survived_and_the_rest_is_painted() {
        open_and_draw(engine(4, 6, in_line));
        canvas& surface = frmdetailedpic::state.surface;
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
        frmdetailedpic::state.Lblzyl[0].Left = not_a_number;
        frmdetailedpic::state.Lblzyl[1].Top = 1e300;
        window_->show_state();
        QVERIFY(has(surface_picture(), QColor(0, 255, 0)));
        QVERIFY(has(surface_picture(), red_));
    }

    void strange_curves_are_painted() {
        open_and_draw(engine(4, 6, in_line));
        for (const double scale : {0.0, 1e300, infinite, not_a_number}) {
            for (std::size_t k = 0; k < 256; ++k)
                sensor::state.detail_thermo[k] = sensor::state.detail_angacc[k] = k % 2 == 0 ? 0 : 65535;
            sensor::state.scale_polar_t = sensor::state.scale_polar_a = scale;
            draw_pass();
            window_->show_state();
            surface_picture();
        }
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(has(surface_picture(), red_));
    }
};

static const desktop_test<frmdetailedpic_test> known;
#include "frmdetailedpic_test.moc"
