#pragma once
// What lies over a lane's chart: the cursor, the marks, and the mouse that moves through time.

#include "view/history_rows.h"
#include "widgets/spoken.h"
#include "xlg/history/measured_log.h"

#include <QPixmap>
#include <QRect>
#include <QWidget>

#include <cstdint>
#include <functional>
#include <span>

namespace tyxo::view {

/// All times are those of the lane, in ms. Drags and wheel turns are told, and change nothing here.
class time_cursor_view : public QWidget, public spoken_control {
    Q_OBJECT

  public:
    /// `field` says where the curves are, in this widget.
    time_cursor_view(std::function<QRect()> field, QWidget* parent);

    void show_time(const time_range& range, std::int64_t cursor, std::span<const xlg::log_mark> marks);
    /// The words that are heard for the values under the cursor.
    void set_spoken(const QString& words) { words_ = words; }

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::Indicator; }
    [[nodiscard]] QString spoken_text() const override { return words_; }

  signals:
    void pointed(qint64 ms);
    /// Everything shall move by so much time; it began with a press.
    void dragged(qint64 by);
    void zoomed(double factor, qint64 at);
    void scrolled(double pages);
    void chosen();

  protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;

  private:
    [[nodiscard]] std::int64_t time_at(double x) const;
    [[nodiscard]] double place_of(std::int64_t ms) const;
    [[nodiscard]] std::span<const xlg::log_mark> marks_in_sight() const;
    [[nodiscard]] QPixmap mark_picture(QRgb colour) const;
    void paint_marks(QPainter& painter, const QRect& field) const;

    std::function<QRect()> field_;
    time_range range_;
    std::int64_t cursor_ = 0;
    std::span<const xlg::log_mark> marks_;
    QString words_;
    double pressed_at_ = 0;
    bool dragging_ = false;
};

} // namespace tyxo::view
