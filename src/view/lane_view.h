#pragma once
// A lane in the window: the program's strip chart over any piece of time, the values under the cursor above
// it, and the scope of the cycle beside it.

#include "view/cycles.h"
#include "view/lane.h"
#include "widgets/plots/chart_view.h"

#include <QWidget>

#include <optional>
#include <string>

class QLabel;

namespace tyxo {
class xy_plot_view;
}

namespace tyxo::view {

class time_cursor_view;

/// The program's chart, which does not run here.
class history_chart_view : public chart_view {
  public:
    using chart_view::chart_view;
    [[nodiscard]] QString spoken_text() const override;
};

/// All times that it is given or tells are those of the window, in ms.
class lane_view : public QWidget {
    Q_OBJECT

  public:
    static constexpr int least_height = 150;

    lane_view(lane& shown, const QString& name, QWidget* parent);

    [[nodiscard]] lane& shown() const { return lane_; }
    [[nodiscard]] const strip_window& rows() const { return rows_; }

    /// Shows what differs from the call before; `changes` counts what else may have changed. The cycle of the
    /// selected lane is the one that the other windows show. Returns what could not be read.
    std::optional<std::string> show(const time_range& window, std::int64_t cursor, unsigned changes,
                                    bool selected);
    void set_selected(bool selected);
    void take_focus();

  signals:
    void pointed(qint64 ms);
    void dragged(qint64 by);
    void zoomed(double factor, qint64 at);
    void scrolled(double pages);
    void chosen();
    void scope_clicked();
    /// It may have to be drawn, whose turn was passed over while it was out of sight.
    void appeared();

  protected:
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

  private:
    void place();
    void show_range();
    void show_values(std::int64_t ms);
    void show_cycle_of(std::int64_t ms, bool selected);
    [[nodiscard]] QString values_text(std::int64_t ms) const;

    lane& lane_;
    strip_window rows_;
    history_chart_view* chart_;
    time_cursor_view* cursor_view_;
    QLabel* values_;
    xy_plot_view* scope_;
    QLabel* cycle_;
    time_range range_{0, 0};
    std::int64_t cursor_ = -1;
    unsigned changes_ = 0;
    bool shown_ = false;
    bool selected_ = false;
};

} // namespace tyxo::view
