#pragma once
// A label that an operator can click: one left click, or the space bar when it has the focus.

#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>

namespace tyxo {

class click_label : public QLabel {
    Q_OBJECT

  public:
    explicit click_label(QWidget* parent) : QLabel(parent) {
        setCursor(Qt::PointingHandCursor);
        setFocusPolicy(Qt::TabFocus);
    }

  signals:
    void clicked();

  protected:
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() == Qt::LeftButton && rect().contains(event->position().toPoint())) emit clicked();
    }
    void keyPressEvent(QKeyEvent* event) override {
        if (event->key() == Qt::Key_Space || event->key() == Qt::Key_Return) {
            emit clicked();
        } else {
            QLabel::keyPressEvent(event);
        }
    }
};

} // namespace tyxo
