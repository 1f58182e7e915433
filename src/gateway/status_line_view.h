#pragma once
// The gateway's status: a text on a coloured ground, to be read and copied.

#include "gateway/frmsetuptcp.h"

#include <QLineEdit>

namespace tyxo {

class status_line : public QLineEdit {
    Q_OBJECT
    Q_PROPERTY(int BackColor READ BackColor)

  public:
    explicit status_line(QWidget* parent);

    void show_control(const status_box& status);
    [[nodiscard]] int BackColor() const { return shown_.BackColor; }

  private:
    status_box shown_;
};

} // namespace tyxo
