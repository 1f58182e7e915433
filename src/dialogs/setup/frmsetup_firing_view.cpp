#include "dialogs/setup/frmsetup_firing_view.h"

#include "widgets/read_only_box.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>

#include <algorithm>

namespace tyxo {

namespace {

constexpr int table_columns = 12;
constexpr int box_digits = 4; // "A12", "720"
constexpr int firing_column_gap = 8;
constexpr int firing_label_gap = 2;
constexpr int row_gap = 4;

/// How far an arrow key goes in a table that is read row by row; 0 for another key.
int step_of(int key) {
    switch (key) {
    case Qt::Key_Left:
        return -1;
    case Qt::Key_Right:
        return 1;
    case Qt::Key_Up:
        return -table_columns;
    case Qt::Key_Down:
        return table_columns;
    default:
        return 0;
    }
}

} // namespace

firing_table::firing_table(QWidget* parent, const QString& name, const QString& title, const names& controls,
                           const std::array<std::string, cylinder_max>& texts)
    : QGroupBox(title, parent) {
    setObjectName(name);
    setAccessibleName(title);
    auto* const grid = new QGridLayout(this);
    grid->setHorizontalSpacing(firing_column_gap);
    grid->setVerticalSpacing(firing_label_gap);
    grid->setRowMinimumHeight(2, row_gap);
    for (int place = 0; place < cylinder_max; ++place) {
        const int row = place / table_columns * 3; // a label, its box, a gap
        const int column = place % table_columns;
        auto* const label = new QLabel(QString::number(place + 1), this);
        label->setObjectName(element(controls.label, controls.first + place));
        label->setAlignment(Qt::AlignCenter);
        grid->addWidget(label, row, column);
        auto* const box = new read_only_box(this, element(controls.box, controls.first + place),
                                            QString("%1 %2").arg(title, label->text()), box_digits);
        box->setAlignment(Qt::AlignCenter);
        box->setFocusPolicy(place == 0 ? Qt::StrongFocus : Qt::ClickFocus);
        box->installEventFilter(this);
        label->setBuddy(box);
        grid->addWidget(box, row + 1, column);
        bind(box, texts[static_cast<std::size_t>(place)]);
        boxes_.push_back(box);
    }
}

bool firing_table::eventFilter(QObject* box, QEvent* event) {
    if (event->type() != QEvent::KeyPress) return false;
    const auto* const key = static_cast<QKeyEvent*>(event);
    if (key->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier)) return false; // selects text
    const int step = step_of(key->key());
    if (step == 0) return false;
    const auto here = std::ranges::find(boxes_, box) - boxes_.begin();
    const auto there = here + step;
    if (there >= 0 && there < cylinder_max)
        boxes_[static_cast<std::size_t>(there)]->setFocus(Qt::TabFocusReason);
    return true;
}

} // namespace tyxo

#include "moc_frmsetup_firing_view.cpp"
