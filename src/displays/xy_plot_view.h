#pragma once
// A polar scope on the screen.

#include "platform/xy_plot.h"

#include <QFrame>

namespace tyxo {

class xy_plot_view : public QFrame {
    Q_OBJECT

  public:
    explicit xy_plot_view(QWidget* parent) : QFrame(parent) {}
    void show_control(const iXYPlotX& control);

  signals:
    void clicked();

  private:
    iXYPlotX shown_;
};

} // namespace tyxo
