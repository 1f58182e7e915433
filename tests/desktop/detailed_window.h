#pragma once
// The window of the Detailed Display with its real widgets, for the tests that look at it.

#include "displays/engines.h"
#include "displays/frmdetailedpic_view.h"
#include "widgets/plots/canvas_view.h"

#include <QCoreApplication>
#include <QLabel>
#include <QTest>

#include <algorithm>
#include <memory>
#include <vector>

namespace tyxo {

class detailed_window : public QObject {
  protected:
    void make_window() {
        frmdetailedpic::unload();
        sensor::state.channels = {};
        window_ = std::make_unique<frmdetailedpic_view>(nullptr);
        surface_ = window_->findChild<canvas_view*>("surface");
        QVERIFY(surface_ != nullptr);
    }

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
        for (const canvas_text& one : frmdetailedpic::state.surface.texts) {
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

} // namespace tyxo
