#pragma once
// The folder browser on the screen.

#include <QObject>
#include <QPointer>

class QFileDialog;
class QWidget;

namespace tyxo {

/// The window itself lives only while it is open: it watches the folder that it shows.
class frmbrowse_view : public QObject {
    Q_OBJECT

  public:
    /// `parent` is the dialog that the browser stands in front of.
    explicit frmbrowse_view(QWidget* parent);

    /// Opens and closes the window as the core says.
    void show_state();

  private:
    QWidget* parent_;
    QPointer<QFileDialog> window_;
};

} // namespace tyxo
