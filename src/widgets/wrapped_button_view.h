#pragma once
// A push button whose caption takes two lines where one is too narrow, and smaller letters where two are.

#include <QPushButton>
#include <QStyleOptionButton>
#include <QStylePainter>

namespace tyxo {

class wrapped_button : public QPushButton {
    Q_OBJECT

  public:
    explicit wrapped_button(QWidget* parent) : QPushButton(parent) {}

  protected:
    void paintEvent(QPaintEvent* /*event*/) override {
        QStylePainter painter(this);
        QStyleOptionButton option;
        initStyleOption(&option);
        option.text.clear();
        painter.drawControl(QStyle::CE_PushButton, option);
        painter.setPen(option.palette.color(QPalette::ButtonText));
        const QRect room = rect().adjusted(3, 1, -3, -1);
        painter.setFont(fitting_font(room.size()));
        painter.drawText(room, text_flags, text());
    }

  private:
    static constexpr int text_flags = Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic;
    static constexpr int least_pixels = 9;

    [[nodiscard]] QFont fitting_font(const QSize& room) const {
        QFont letters = font();
        for (int pixels = QFontInfo(letters).pixelSize(); pixels >= least_pixels; --pixels) {
            letters.setPixelSize(pixels);
            const QSize size = QFontMetrics(letters).boundingRect(QRect({}, room), text_flags, text()).size();
            if (size.width() <= room.width() && size.height() <= room.height()) break;
        }
        return letters;
    }
};

} // namespace tyxo
