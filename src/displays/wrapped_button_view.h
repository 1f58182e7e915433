#pragma once
// A push button whose caption takes two lines where one is too narrow.

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
        painter.drawText(rect().adjusted(3, 1, -3, -1),
                         Qt::AlignCenter | Qt::TextWordWrap | Qt::TextShowMnemonic, text());
    }
};

} // namespace tyxo
