// The charts of the log window on paper and in files: every lane, over the time that is in sight.

#include "view/lane_pictures.h"
#include "view/log_window.h"

#include <qcustomplot.h>

#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinter>
#include <QStatusBar>

namespace tyxo::view {

namespace {

/// A file without an ending that tells its format is one of pixels.
QString with_ending(const QString& file) {
    for (const char* const ending : {".png", ".svg", ".pdf"})
        if (file.endsWith(ending)) return file;
    return file + ".png";
}

} // namespace

void log_window::print() {
    QPrinter printer(QPrinter::HighResolution);
    printer.setPageOrientation(QPageLayout::Landscape);
    printer.setDocName(period_text(range_));
    QPrintDialog dialog(&printer, this);
    dialog.setObjectName("print_dialog");
    if (dialog.exec() != QDialog::Accepted) return;
    const auto failed = attempt([&] {
        QCPPainter painter;
        const bool begun = painter.begin(&printer);
        const double pixel = 1.0 * printer.resolution() / pixels_an_inch;
        const QRectF page(QPointF(), printer.pageLayout().paintRectPixels(printer.resolution()).size());
        if (begun) paint_lanes(painter, {page, pixel, true}, period_text(range_), lanes_, range_);
        if (!begun || !painter.end() || printer.printerState() == QPrinter::Error)
            throw failure("The charts could not be printed.");
    });
    if (failed) tell(QString::fromStdString(*failed));
}

void log_window::export_picture() {
    const QString file = QFileDialog::getSaveFileName(this, tr("Export picture"), {},
                                                      tr("Pictures (*.png);;Lines (*.svg);;Paper (*.pdf)"));
    if (!file.isEmpty()) export_to(with_ending(file).toStdString());
}

void log_window::export_to(const std::string& file) {
    const QString title = period_text(range_);
    const auto failed = attempt([&] {
        // The dialog has asked whether a file that is there may be replaced.
        write_picture(file, true, usual_size_of(lanes_.size(), file), title,
                      [&](QCPPainter& painter, const picture_place& place) {
                          paint_lanes(painter, place, title, lanes_, range_);
                      });
    });
    if (failed)
        tell(QString::fromStdString(*failed));
    else
        statusBar()->showMessage(tr("Written: %1").arg(QString::fromStdString(file)), 10'000);
}

} // namespace tyxo::view
