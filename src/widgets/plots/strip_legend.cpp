#include "widgets/plots/strip_legend.h"

#include <qcustomplot.h>

#include <QFontMetricsF>

#include <algorithm>
#include <vector>

namespace tyxo {

namespace {

constexpr int widest_legend = 100'000; // an empty one would take no width and leave none to the axes

} // namespace

strip_legend::strip_legend(QCustomPlot& plot, int indent)
    : plot_(plot), legend_(plot.legend), place_(new QCPLayoutGrid) {
    plot.axisRect()->insetLayout()->take(legend_);
    plot.plotLayout()->insertRow(0);
    plot.plotLayout()->addElement(0, 0, place_);
    place_->addElement(0, 0, legend_);
    legend_->setLayer("legend");
    legend_->setFillOrder(QCPLayoutGrid::foColumnsFirst);
    legend_->setIconTextPadding(4);
    legend_->setColumnSpacing(4);
    legend_->setRowSpacing(0);
    legend_->setMargins({indent, 0, 0, 0});
    legend_->setBorderPen(Qt::NoPen);
}

void strip_legend::set_colours(const QBrush& ground, const QColor& print) {
    legend_->setBrush(ground);
    legend_->setTextColor(print);
}

void strip_legend::set_letters(const QFont& font, const QSize& sample, const QMargins& room) {
    legend_->setFont(font);
    legend_->setIconSize(sample);
    place_->setMargins(room);
    renew();
}

void strip_legend::arrange(int width, int line) {
    std::vector<QCPGraph*> shown;
    double widest = 0;
    const QFontMetricsF metrics(legend_->font());
    for (int index = 0; index < plot_.graphCount(); ++index) {
        QCPGraph* const graph = plot_.graph(index);
        if (!graph->visible()) continue;
        shown.push_back(graph);
        widest = std::max(widest, metrics.horizontalAdvance(graph->name()));
    }
    const int count = static_cast<int>(shown.size());
    const int entry = static_cast<int>(widest) + legend_->iconSize().width() + legend_->iconTextPadding() +
                      legend_->columnSpacing();
    const int room = std::max(width / std::max(entry, 1), 1);
    const int lines = count == 0 ? 0 : (count + room - 1) / room;
    const int wrap = lines == 0 ? 0 : (count + lines - 1) / lines;
    if (wrap == wrap_) return;

    wrap_ = wrap;
    legend_->clearItems();
    legend_->simplify();
    legend_->setWrap(wrap);
    for (QCPGraph* const graph : shown)
        graph->addToLegend(legend_);
    legend_->setMinimumSize(0, lines * line);
    legend_->setMaximumSize(widest_legend, lines * line);
    legend_->setVisible(lines > 0);
}

} // namespace tyxo
