#pragma once
// A drawn picture of the program's own, and the program's icon.

#include "widgets/spoken.h"

#include <QIcon>
#include <QSvgRenderer>
#include <QWidget>

namespace tyxo {

class picture_view : public QWidget, public spoken_control {
  public:
    /// `picture` is the name of a drawing in `widgets/pictures`, without its ending; `side` is its preferred
    /// width and height in pixels.
    picture_view(QWidget* parent, const QString& name, const QString& picture, int side);

    [[nodiscard]] QSize sizeHint() const override { return {side_, side_}; }
    [[nodiscard]] QSize minimumSizeHint() const override { return {side_ / 2, side_ / 2}; }
    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Graphic; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    QSvgRenderer drawing_;
    int side_;
};

/// The icon of all windows.
[[nodiscard]] QIcon program_icon();

} // namespace tyxo
