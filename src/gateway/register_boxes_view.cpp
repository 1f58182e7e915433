#include "gateway/register_boxes_view.h"

#include "gateway/frmsetuptcp.h"
#include "widgets/edit_box.h"

#include <QGridLayout>
#include <QLabel>

namespace tyxo {

namespace {

constexpr int boxes_in_row = 10;
constexpr int grid_gap = 4;
constexpr int least_box_width = 58; // five digits
constexpr QRgb heading_print = 0xFF50565C;

void add_heading(QGridLayout& grid, int row, int column, int number, Qt::Alignment side) {
    auto* const heading = new QLabel(QString("+%1").arg(number), grid.parentWidget());
    QPalette colours = heading->palette();
    for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
        colours.setColor(group, QPalette::WindowText, QColor(heading_print));
    heading->setPalette(colours);
    grid.addWidget(heading, row, column, side | Qt::AlignVCenter);
}

} // namespace

register_boxes::register_boxes(QWidget* parent) : QWidget(parent) {
    auto* const grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(grid_gap);
    for (int column = 0; column < boxes_in_row; ++column) {
        add_heading(*grid, 0, column + 1, column, Qt::AlignHCenter);
        grid->setColumnStretch(column + 1, 1);
    }
    const int count = static_cast<int>(FrmSetupTCP::state.Text4.size());
    for (int index = 0; index < count; ++index) {
        const int row = index / boxes_in_row + 1;
        const int column = index % boxes_in_row + 1;
        if (column == 1) add_heading(*grid, row, 0, index, Qt::AlignRight);
        const auto change = [index](std::string_view text) {
            FrmSetupTCP::Text4_change(static_cast<std::size_t>(index), text);
        };
        auto* const box = new edit_box(this, element("Text4", index), change);
        box->setAccessibleName(tr("Register %1").arg(index));
        box->setAlignment(Qt::AlignRight);
        box->setMinimumWidth(least_box_width);
        grid->addWidget(box, row, column);
        bind(box, FrmSetupTCP::state.Text4[static_cast<std::size_t>(index)]);
    }
    grid->setRowStretch(grid->rowCount(), 1); // room to spare goes below the last row
}

} // namespace tyxo
