#pragma once
// What a click is, for controls that are no buttons.

#include <QKeyEvent>
#include <QMouseEvent>

#include <utility>

namespace tyxo {

/// A widget that can be clicked: with the left button, pressed and released inside, or with the space bar,
/// Return or Enter while it has the focus. A double click is two clicks.
template <class Base> class clickable : public Base {
  public:
    using Base::Base;

  protected:
    /// Emits the signal, which a template cannot have.
    virtual void click() = 0;

    void mousePressEvent(QMouseEvent* event) override { pressed_ = event->button() == Qt::LeftButton; }
    void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
    void mouseReleaseEvent(QMouseEvent* event) override {
        if (event->button() != Qt::LeftButton || !std::exchange(pressed_, false)) return;
        if (Base::rect().contains(event->position().toPoint())) click();
    }
    void keyPressEvent(QKeyEvent* event) override {
        const int key = event->key();
        if (key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter) {
            click();
        } else {
            Base::keyPressEvent(event);
        }
    }

  private:
    bool pressed_ = false;
};

} // namespace tyxo
