#pragma once
// A group frame around instruments.

#include "widgets/paint_view.h"

#include <QGroupBox>
#include <QStyleOptionGroupBox>

namespace tyxo {

/// Keeps the picture of its lines, its title and its ground, the desktop's style being what costs most of all
/// beneath a needle that moves: only that much of the picture is copied.
class group_frame : public QGroupBox {
  public:
    explicit group_frame(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    [[nodiscard]] bool looks_as(const QStyleOptionGroupBox& look) const;

    QStyleOptionGroupBox look_; ///< of the picture
    face_cache face_;
};

} // namespace tyxo
