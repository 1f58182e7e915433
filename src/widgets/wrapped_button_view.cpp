#include "widgets/wrapped_button_view.h"

#include <QStyleOptionButton>
#include <QStylePainter>

namespace tyxo {

namespace {

constexpr int caption_flags = Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic;
constexpr int least_caption_pixels = 9;

} // namespace

void wrapped_button::paintEvent(QPaintEvent* /*event*/) {
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.text.clear();
    painter.drawControl(QStyle::CE_PushButton, option);
    painter.setPen(option.palette.color(QPalette::ButtonText));
    const QRect room = rect().adjusted(3, 1, -3, -1);
    painter.setFont(fitting_font(room.size()));
    painter.drawText(room, caption_flags, text());
}

QFont wrapped_button::fitting_font(const QSize& room) const {
    QFont letters = font();
    for (int pixels = QFontInfo(letters).pixelSize(); pixels >= least_caption_pixels; --pixels) {
        letters.setPixelSize(pixels);
        const QSize size = QFontMetrics(letters).boundingRect(QRect({}, room), caption_flags, text()).size();
        if (size.width() <= room.width() && size.height() <= room.height()) break;
    }
    return letters;
}

} // namespace tyxo

#include "moc_wrapped_button_view.cpp"
