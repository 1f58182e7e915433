#pragma once
// What the screen shows of a widget: only the parts that were painted since are new.

#include <QCoreApplication>
#include <QEvent>
#include <QImage>
#include <QObject>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>
#include <QRegion>
#include <QWidget>

namespace tyxo {

/// A shown widget as the window system has it: a part that changed and was not painted keeps its old look.
class screen_copy : public QObject {
  public:
    explicit screen_copy(QWidget& widget) : widget_(widget) { widget.installEventFilter(this); }

    /// After all paintings that wait.
    QImage picture() {
        QCoreApplication::processEvents();
        taking_ = true;
        const QPixmap now = widget_.grab();
        taking_ = false;
        if (seen_.size() != now.size()) {
            seen_ = now.toImage().convertToFormat(QImage::Format_RGB32);
        } else {
            QPainter painter(&seen_);
            painter.setClipRegion(painted_);
            painter.drawPixmap(0, 0, now);
        }
        painted_ = {};
        return seen_;
    }

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Paint && !taking_)
            painted_ += static_cast<QPaintEvent*>(event)->region();
        return QObject::eventFilter(watched, event);
    }

  private:
    QWidget& widget_;
    QImage seen_;
    QRegion painted_;
    bool taking_ = false;
};

} // namespace tyxo
