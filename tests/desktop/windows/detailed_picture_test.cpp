// The Detailed Display on the screen, after many changes, is what a new window paints of the last state.

#include "desktop/control_pictures.h"
#include "desktop/desktop_test.h"
#include "desktop/detailed_window.h"
#include "desktop/random_steps.h"

#include <QBackingStore>

using namespace tyxo;

class detailed_picture_test : public detailed_window {
    Q_OBJECT

  private slots:
    void init() {
        make_window();
        open_and_draw(engine(4, 6, in_line));
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }
    void cleanup() { window_.reset(); }

    void every_step_leaves_the_picture_of_the_last_state_data() { add_seeds(4); }

    void every_step_leaves_the_picture_of_the_last_state() {
        QFETCH(const unsigned, seed);
        steps_ = random_steps(seed);
        for (int step = 0; step < 120; ++step) {
            const char* const what = change_something();
            window_->show_state();
            QCoreApplication::processEvents();
            if (steps_.below(3) != 0) continue;
            const QByteArray message = QByteArray(what) + " in step " + QByteArray::number(step);
            QVERIFY2(same_pixels(on_the_screen(), painted_anew()), message);
        }
    }

  private:
    /// Says what.
    const char* change_something() {
        switch (steps_.below(24)) {
        case 0:
            return change_engine();
        case 1:
            window_->resize(1000 + steps_.below(400), 620 + steps_.below(300));
            return "size";
        case 2:
            window_->setEnabled(!window_->isEnabled());
            return "enabled";
        case 3:
            window_->setFont(steps_.font());
            return "font";
        case 4:
            sensor::state.scale_polar_t = steps_.wild();
            pass();
            sensor::state.scale_polar_t = 3;
            return "wild curve";
        case 5:
            surface_->update(steps_.below(900), steps_.below(500), steps_.below(300), steps_.below(300));
            return "a part again";
        case 6:
            frmdetailedpic::state.form.Visible = false;
            window_->show_state();
            pass();
            frmdetailedpic::state.form.Visible = true;
            return "hidden and shown";
        case 18:
            window_->showMinimized();
            pass();
            window_->show_state();
            QCoreApplication::processEvents();
            window_->showNormal();
            return "minimised and back";
        case 7:
            frmdetailedpic::state.Lblzyl[static_cast<std::size_t>(steps_.below(24))].Left = steps_.wild();
            return "wild label";
        case 8:
        case 9:
            return print_something();
        case 10:
        case 11:
        case 12:
            return draw_wild_strokes();
        case 13:
        case 14:
        case 15:
        case 16:
            *steps_.one_of({&frmdetailedpic::state.Chck_tsrel, &frmdetailedpic::state.Chck_tsabs,
                            &frmdetailedpic::state.Chck_aa}) = static_cast<i16>(steps_.below(2));
            pass();
            return "check box";
        default:
            return take_new_curve();
        }
    }

    static void pass() { attempt(draw_pass); }

    const char* change_engine() {
        open_detailed_display(engine(steps_.one_of({2, 4}), 1 + steps_.below(24),
                                     steps_.one_of({in_line, v_type}), steps_.below(10)));
        pass();
        return "engine";
    }

    const char* take_new_curve() {
        const int noise = steps_.one_of({1, 4, 30, 30000});
        auto& samples = *steps_.one_of({&sensor::state.detail_thermo, &sensor::state.detail_angacc});
        take_curves(sensor::state.channels[0]);
        for (std::size_t k = static_cast<std::size_t>(steps_.below(200)); k < samples.size(); ++k)
            samples[k] += steps_.below(noise);
        pass();
        return "curve";
    }

    const char* draw_wild_strokes() {
        canvas& surface = frmdetailedpic::state.surface;
        if (steps_.below(4) == 0) surface.clear();
        for (int count = steps_.below(8); count > 0; --count) {
            surface.ForeColor = steps_.one_of({rgb(255, 255, 0), rgb(0, 0, 0), rgb(255, 0, 0)});
            surface.line(steps_.wild(), steps_.wild(), steps_.wild(), steps_.wild());
        }
        return "wild strokes";
    }

    const char* print_something() {
        canvas& surface = frmdetailedpic::state.surface;
        surface.CurrentX = steps_.below(300);
        surface.CurrentY = steps_.below(180);
        surface.print(steps_.one_of({"a text", "", "Angular acceleration rel. to average value"}));
        return "text";
    }

    QImage on_the_screen() const {
        const auto* const screen = dynamic_cast<QImage*>(window_->backingStore()->paintDevice());
        return screen->copy(
            QRectF(QPointF(), QSizeF(surface_->size()) * window_->devicePixelRatioF()).toAlignedRect());
    }

    /// By a window that has never shown anything else. It draws on the surface when it gets its size.
    QImage painted_anew() const {
        const frmdetailedpic::window last = frmdetailedpic::state;
        frmdetailedpic_view fresh(nullptr);
        fresh.setFont(window_->font());
        fresh.setEnabled(window_->isEnabled());
        fresh.resize(window_->size());
        fresh.show_state();
        QCoreApplication::processEvents();
        const unsigned passes = frmdetailedpic::state.surface.passes;
        frmdetailedpic::state = last;
        frmdetailedpic::state.surface.passes = passes + 1;
        fresh.show_state();
        return fresh.findChild<canvas_view*>("surface")->grab().toImage();
    }

    random_steps steps_{0};
};

static const desktop_test<detailed_picture_test> known;
#include "detailed_picture_test.moc"
