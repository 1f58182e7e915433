#pragma once
// How often a widget is painted.

#include <QEvent>
#include <QObject>
#include <QWidget>

#include <utility>

namespace tyxo {

/// Counts from its making on.
class paint_counter : public QObject {
  public:
    explicit paint_counter(QWidget& widget) { widget.installEventFilter(this); }

    [[nodiscard]] int paints() const { return paints_; }
    /// Those since the last call.
    int taken() { return std::exchange(paints_, 0); }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint) ++paints_;
        return QObject::eventFilter(watched, event);
    }

  private:
    int paints_ = 0;
};

} // namespace tyxo
