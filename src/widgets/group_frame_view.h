#pragma once
// A group frame around instruments.

#include "widgets/paint_view.h"

#include <QGroupBox>

namespace tyxo {

/// Keeps the picture of its lines, its title and its ground. Painting them cost most of all that a needle
/// costs that moves above them; now the part beneath it is copied.
class group_frame : public QGroupBox {
  public:
    explicit group_frame(QWidget* parent = nullptr);

  protected:
    void paintEvent(QPaintEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void paint_face(QPainter& painter) const;

    face_cache face_;
    QString shown_title_;
};

} // namespace tyxo
