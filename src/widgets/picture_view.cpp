#include "widgets/picture_view.h"

#include <QPainter>
#include <QPixmap>

/// A library's resources are taken along only if somebody asks for them, outside of any namespace.
static void load_pictures() {
    Q_INIT_RESOURCE(pictures);
}

namespace tyxo {

picture_view::picture_view(QWidget* parent, const QString& name, const QString& picture, int side)
    : QWidget(parent), side_(side) {
    load_pictures();
    setObjectName(name);
    drawing_.load(QString(":/pictures/%1.svg").arg(picture));
    drawing_.setAspectRatioMode(Qt::KeepAspectRatio);
}

void picture_view::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    drawing_.render(&painter, QRectF(rect()));
}

QIcon program_icon() {
    load_pictures();
    QSvgRenderer drawing(QString(":/pictures/tyxo.svg"));
    QIcon icon;
    for (const int side : {16, 24, 32, 48, 64, 128, 256}) {
        QPixmap picture(side, side);
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        drawing.render(&painter);
        icon.addPixmap(picture);
    }
    return icon;
}

} // namespace tyxo
