#pragma once
// Windows on screens that are smaller than they would like.

#include <QScreen>
#include <QScrollArea>
#include <QWidget>

namespace tyxo {

/// The room that a window has on its screen, within the frame that a window manager puts around it.
[[nodiscard]] inline QSize screen_room(const QWidget& window) {
    constexpr QSize frame(10, 40);
    return window.screen()->availableSize() - frame;
}

/// Asks for all the room of its content, and scrolls where there is less.
class scroll_page : public QScrollArea {
  public:
    explicit scroll_page(QWidget* content) {
        setFrameShape(QFrame::NoFrame);
        setFocusPolicy(Qt::NoFocus);
        setWidgetResizable(true);
        setWidget(content);
        content->setAutoFillBackground(false); // the window's ground goes through
        viewport()->setAutoFillBackground(false);
    }

    [[nodiscard]] QSize sizeHint() const override { return widget()->sizeHint(); }
    [[nodiscard]] QSize minimumSizeHint() const override {
        return widget()->minimumSizeHint().boundedTo(least);
    }

  private:
    static constexpr QSize least{300, 200};
};

} // namespace tyxo
