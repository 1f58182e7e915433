// The labels of the Detailed Display with its real widgets: where they stand, and that they have room.

#include "desktop/desktop_test.h"
#include "desktop/detailed_window.h"

#include <QCheckBox>

using namespace tyxo;

namespace {

const std::vector<QSize> sizes{{1000, 620},  {1000, 700},  {1024, 768}, {1280, 1024},
                               {1920, 1080}, {1000, 1400}, {2560, 620}, {3840, 2160}};

} // namespace

class detailed_labels_view_test : public detailed_window {
    Q_OBJECT

  private slots:
    void init() { make_window(); }
    void cleanup() { window_.reset(); }

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
            check_place(label(QString("Lblzyl(%1)").arg(place)), frmdetailedpic::state.Lblzyl[index]);
            check_place(label(QString("Lblzyl2(%1)").arg(place)), frmdetailedpic::state.Lblzyl2[index]);
        }
        check_place(label("Lbl0deg"), frmdetailedpic::state.Lbl0deg);
        check_place(label("Lblenddeg"), frmdetailedpic::state.Lblenddeg);
        QVERIFY(!label("Lblzyl(6)")->isVisible());
        open_and_draw(engine(4, 4, in_line));
        QVERIFY(!label("Lblzyl(5)")->isVisible());
        QVERIFY(!label("Lblzyl2(4)")->isVisible());
    }

    void labels_stay_right_after_a_resize_without_a_curve() {
        open_and_draw(engine(4, 6, in_line));
        window_->resize(1000, 900);
        QCoreApplication::processEvents();
        check_place(label("Lblzyl(3)"), frmdetailedpic::state.Lblzyl[3]);
        check_place(label("Lblzyl2(3)"), frmdetailedpic::state.Lblzyl2[3]);
        check_labels("after a resize");
    }

    void texts_fit_their_columns_at_every_size() {
        for (const QSize& size : sizes) {
            window_->resize(size);
            open_and_draw(engine(4, 24, v_type));
            const QFontMetricsF metrics(surface_->text_font());
            for (const canvas_text& one : frmdetailedpic::state.surface.texts) {
                const QRectF box(surface_->place(one.x, one.y),
                                 QSizeF(metrics.horizontalAdvance(QString::fromStdString(one.text)),
                                        metrics.ascent() + metrics.descent()));
                QVERIFY2(QRectF(surface_->rect()).contains(box), one.text.c_str());
                for (const canvas_text& other : frmdetailedpic::state.surface.texts) {
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
};

static const desktop_test<detailed_labels_view_test> known;
#include "detailed_labels_view_test.moc"
