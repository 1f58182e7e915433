// Printing on Qt.

#include "platform/printer.h"

#include "platform/desktop/parent_window.h"
#include "platform/desktop/text.h"
#include "platform/message_box.h"
#include "widgets/plots/chart_page.h"

#include <QPrintDialog>
#include <QPrinter>

namespace tyxo {

namespace {

/// The answer of the operator, who can choose a file too.
bool printer_chosen(QPrinter& printer) {
    QPrintDialog dialog(&printer, dialog_parent());
    dialog.setWindowModality(Qt::WindowModal);
    dialog.setObjectName("print_dialog");
    dialog.setOptions(QAbstractPrintDialog::PrintToFile | QAbstractPrintDialog::PrintShowPageSize);
    return dialog.exec() == QDialog::Accepted;
}

/// The title as a name: a file that is printed into is called after it, and dialogs show it.
QString document_name(const iStripChartX& chart) {
    QString name = qt_text(chart.Title);
    for (const char separator : {'/', '\\', '<', '>', '&'})
        name.replace(separator, '-');
    return name;
}

std::string failure_text(const QPrinter& printer) {
    const QString file = printer.outputFileName();
    std::string text = "The chart could not be printed:\r\n";
    if (file.isEmpty()) return text += "there is no printer that takes it.";
    return text += "the file " + ansi_from_utf8(file.toStdString()) + " cannot be written.";
}

} // namespace

void print_chart(const iStripChartX& chart, const strip_window& rows) {
    // Copies: measuring goes on while the dialog is open, and a frozen chart may thaw.
    const struct {
        iStripChartX chart;
        strip_window rows;
    } printed{chart, rows};
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(document_name(printed.chart));
    printer.setPageOrientation(printed.chart.PrintMode == 1 ? QPageLayout::Landscape : QPageLayout::Portrait);
    if (printed.chart.PrintFlag && !printer_chosen(printer)) return;
    if (!paint_chart_page(printer, printed.chart, printed.rows))
        message_box(failure_text(printer), box_icon::critical);
}

} // namespace tyxo
