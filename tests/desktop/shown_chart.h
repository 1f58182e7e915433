#pragma once
// A strip chart in its design size, shown and grabbed as the panel does it.

#include "desktop/chart_pictures.h"
#include "widgets/plots/chart_view.h"

#include <QImage>
#include <QObject>
#include <QStringList>

#include <memory>

namespace tyxo {

inline constexpr int title_line = 24;
inline const QSize design_size(635, 278);

/// A chart with rows of its own.
class chart_of_rows : public chart_view {
  public:
    explicit chart_of_rows(QWidget* parent = nullptr)
        : chart_view([this]() -> const strip_window& { return rows_; }, parent) {}

    void show_control(const iStripChartX& chart, const strip_window& rows) {
        rows_ = rows;
        chart_view::show_control(chart);
    }

  private:
    strip_window rows_;
};

class shown_chart : public QObject {
  protected:
    void make_chart() {
        view_ = std::make_unique<chart_of_rows>();
        view_->resize(design_size);
    }
    /// Shown as the panel does it: again after the widget has its size.
    void show(const iStripChartX& chart, const strip_window& rows) {
        view_->show_control(chart, rows);
        view_->grab();
        view_->show_control(chart, rows);
        view_->grab();
    }
    QImage picture() { return view_->grab().toImage(); }

    static QStringList ticks(const QCPAxis& axis) {
        QVector<double> places;
        QVector<QString> labels;
        axis.ticker()->generate(axis.range(), {}, 'g', 6, places, nullptr, &labels);
        return labels;
    }

    std::unique_ptr<chart_of_rows> view_;
};

} // namespace tyxo
