#pragma once
// A label that an operator can click: one left click, or the space bar or Return when it has the focus.

#include "widgets/paint_view.h"
#include "widgets/spoken.h"

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>

namespace tyxo {

class click_label : public QLabel, public spoken_control {
    Q_OBJECT

  public:
    explicit click_label(QWidget* parent) : QLabel(parent) {
        setCursor(Qt::PointingHandCursor);
        setFocusPolicy(Qt::TabFocus);
    }

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Button; }

  signals:
    void clicked();

  protected:
    void paintEvent(QPaintEvent* event) override {
        QLabel::paintEvent(event);
        if (!hasFocus()) return;
        QPainter painter(this);
        paint_focus_rim(painter, rect());
    }
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) emit clicked();
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (clicks(*event)) {
            emit clicked();
        } else {
            QLabel::keyPressEvent(event);
        }
    }
};

} // namespace tyxo
