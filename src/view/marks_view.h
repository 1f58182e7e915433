#pragma once
// All comments of all lanes in the order of their times, to jump along.

#include "view/lane.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

class QCheckBox;
class QTableView;

namespace tyxo::view {

/// A comment; its time is that of the window, in ms.
struct shown_mark {
    std::int64_t time = 0;
    std::size_t lane = 0;
    const xlg::log_mark* mark = nullptr;
};

class marks_model : public QAbstractTableModel {
    Q_OBJECT

  public:
    using QAbstractTableModel::QAbstractTableModel;

    void show(const std::vector<std::unique_ptr<lane>>& lanes, bool alarms_only);
    [[nodiscard]] const std::vector<shown_mark>& marks() const { return marks_; }

    [[nodiscard]] int rowCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex& parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex& index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

  private:
    std::vector<shown_mark> marks_;
    std::vector<QString> engines_;
    std::vector<std::int64_t> shifts_;
};

class marks_view : public QWidget {
    Q_OBJECT

  public:
    explicit marks_view(QWidget* parent);

    void show_lanes(const std::vector<std::unique_ptr<lane>>& lanes);
    /// The lanes are about to go.
    void clear();

    /// The nearest mark behind this time of the window, or before it.
    [[nodiscard]] std::optional<shown_mark> next(std::int64_t time) const;
    [[nodiscard]] std::optional<shown_mark> previous(std::int64_t time) const;
    /// The row of the last mark up to this time is the current one.
    void show_time(std::int64_t time);

  signals:
    void jumped(qint64 time, int lane);

  private:
    void fill();
    void jump(const QModelIndex& index);

    marks_model* model_;
    QTableView* table_;
    QCheckBox* alarms_only_;
    const std::vector<std::unique_ptr<lane>>* lanes_ = nullptr;
};

} // namespace tyxo::view
