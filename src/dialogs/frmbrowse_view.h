#pragma once
// The folder browser on the screen.

#include "widgets/state_view.h"

#include <QPointer>

class QFileDialog;

namespace tyxo {

/// The window itself lives only while it is open: it watches the folder that it shows.
class frmbrowse_view : public state_view {
  public:
    /// `parent` is the dialog that the browser stands in front of.
    explicit frmbrowse_view(QWidget* parent);

    void show_state() override;

  private:
    QWidget* parent_;
    QPointer<QFileDialog> window_;
};

} // namespace tyxo
