#pragma once
// A strip chart on the screen: its frame, title, grid and Y scale.

#include "platform/strip_chart.h"

#include <QWidget>

namespace tyxo {

class chart_view : public QWidget {
    Q_OBJECT
    Q_PROPERTY(QString Title READ title)
    Q_PROPERTY(double XAxisMin READ x_axis_min)
    Q_PROPERTY(double XAxisSpan READ x_axis_span)
    Q_PROPERTY(double YAxisMin READ y_axis_min)
    Q_PROPERTY(double YAxisMax READ y_axis_max)

  public:
    explicit chart_view(QWidget* parent) : QWidget(parent) {}
    void show_control(const iStripChartX& control);

    [[nodiscard]] QString title() const;
    [[nodiscard]] double x_axis_min() const { return shown_.XAxisMin; }
    [[nodiscard]] double x_axis_span() const { return shown_.XAxisSpan; }
    [[nodiscard]] double y_axis_min() const { return shown_.YAxisMin; }
    [[nodiscard]] double y_axis_max() const { return shown_.YAxisMax; }

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    iStripChartX shown_;
};

} // namespace tyxo
