#include "view/marks_view.h"

#include "platform/desktop/text.h"
#include "view/time_texts.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QTableView>
#include <QVBoxLayout>

#include <algorithm>

namespace tyxo::view {

void marks_model::show(const std::vector<std::unique_ptr<lane>>& lanes, bool alarms_only) {
    beginResetModel();
    marks_.clear();
    engines_.clear();
    shifts_.clear();
    for (std::size_t index = 0; index < lanes.size(); ++index) {
        const lane& one = *lanes[index];
        engines_.push_back(qt_text(one.line.location()));
        shifts_.push_back(one.shift);
        for (const xlg::log_mark& mark : one.line.marks())
            if (mark.alarm || !alarms_only) marks_.push_back({mark.time * 1000 - one.shift, index, &mark});
    }
    std::ranges::stable_sort(marks_, {}, &shown_mark::time);
    endResetModel();
}

int marks_model::rowCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : static_cast<int>(marks_.size());
}

int marks_model::columnCount(const QModelIndex& parent) const {
    return parent.isValid() ? 0 : 3;
}

QVariant marks_model::data(const QModelIndex& index, int role) const {
    const shown_mark& one = marks_[static_cast<std::size_t>(index.row())];
    if (role == Qt::ForegroundRole && one.mark->alarm) return QColor(176, 0, 0);
    if (role == Qt::ToolTipRole) return tool_tip(qt_text(one.mark->text));
    if (role != Qt::DisplayRole) return {};
    switch (index.column()) {
    case 0:
        return moment_text(one.time + shifts_[one.lane]);
    case 1:
        return engines_[one.lane];
    default:
        return qt_text(one.mark->text);
    }
}

QVariant marks_model::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return QStringList{tr("Time"), tr("Engine"), tr("Comment")}.value(section);
}

marks_view::marks_view(QWidget* parent)
    : QWidget(parent), model_(new marks_model(this)), table_(new QTableView(this)),
      alarms_only_(new QCheckBox(tr("&Alarms only"), this)) {
    table_->setObjectName("marks");
    table_->setAccessibleName(tr("Comments"));
    table_->setModel(model_);
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setTabKeyNavigation(false);
    table_->setWordWrap(false);
    table_->verticalHeader()->hide();
    table_->verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->horizontalHeader()->setHighlightSections(false);
    table_->setColumnWidth(0, fontMetrics().horizontalAdvance("2026-00-00 00:00:00") + 14);
    table_->setColumnWidth(1, fontMetrics().horizontalAdvance("Engine 10") + 14);
    alarms_only_->setObjectName("alarms_only");
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(4, 4, 4, 4);
    column->addWidget(alarms_only_);
    column->addWidget(table_, 1);
    connect(alarms_only_, &QCheckBox::toggled, this, &marks_view::fill);
    connect(table_, &QTableView::activated, this, &marks_view::jump);
    connect(table_, &QTableView::clicked, this, &marks_view::jump);
}

void marks_view::show_lanes(const std::vector<std::unique_ptr<lane>>& lanes) {
    lanes_ = &lanes;
    fill();
}

void marks_view::clear() {
    lanes_ = nullptr;
    model_->show({}, false);
}

void marks_view::fill() {
    if (lanes_ != nullptr) model_->show(*lanes_, alarms_only_->isChecked());
}

void marks_view::jump(const QModelIndex& index) {
    const shown_mark& one = model_->marks()[static_cast<std::size_t>(index.row())];
    emit jumped(one.time, static_cast<int>(one.lane));
}

std::optional<shown_mark> marks_view::next(std::int64_t time) const {
    const auto& marks = model_->marks();
    const auto found = std::ranges::upper_bound(marks, time, {}, &shown_mark::time);
    if (found == marks.end()) return std::nullopt;
    return *found;
}

std::optional<shown_mark> marks_view::previous(std::int64_t time) const {
    const auto& marks = model_->marks();
    const auto found = std::ranges::lower_bound(marks, time, {}, &shown_mark::time);
    if (found == marks.begin()) return std::nullopt;
    return *(found - 1);
}

void marks_view::show_time(std::int64_t time) {
    const auto& marks = model_->marks();
    const auto behind = std::ranges::upper_bound(marks, time, {}, &shown_mark::time);
    const int row = static_cast<int>(behind - marks.begin()) - 1;
    if (table_->hasFocus() || row == table_->currentIndex().row()) return;
    if (row < 0)
        table_->clearSelection();
    else
        table_->selectRow(row);
}

} // namespace tyxo::view

#include "moc_marks_view.cpp"
