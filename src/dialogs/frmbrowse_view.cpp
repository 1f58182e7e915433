#include "dialogs/frmbrowse_view.h"

#include "dialogs/frmbrowse.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/text.h"
#include "platform/message_box.h"
#include "widgets/screen_room.h"

#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QHeaderView>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>

namespace tyxo {

namespace {

constexpr int usual_letters = 110; // the window's size in print, so that it grows with the font
constexpr int usual_lines = 30;
constexpr int places_letters = 16;
constexpr int size_column = 1;
constexpr int type_column = 2;

/// Where the browser begins: the folder of the core, else the working directory.
QString start_folder() {
    const QString folder = qt_text(frmbrowse::state.start_folder).replace('\\', '/');
    return !folder.isEmpty() && QFileInfo(folder).isDir() ? folder : QDir::currentPath();
}

class folder_window : public QFileDialog {
  public:
    explicit folder_window(QWidget* parent) : QFileDialog(parent) {
        setObjectName("frmbrowse");
        setWindowTitle(qt_text(frmbrowse::state.form.Caption));
        setWindowModality(Qt::WindowModal); // the alert stays usable
        setOption(DontUseNativeDialog);
        setOption(ReadOnly); // nothing can be renamed or deleted here
        setFileMode(Directory);
        setOption(ShowDirsOnly);
        setDirectory(start_folder());
        setLabelText(Accept, "Ok");
        for (const char* const name : {"fileTypeLabel", "fileTypeCombo"}) // there is only one type
            findChild<QWidget*>(name)->hide();
        // The lists show no focus by themselves while none of their entries is chosen.
        for (const char* const name : {"sidebar", "treeView"})
            findChild<QWidget*>(name)->setStyleSheet(
                "#sidebar, #treeView { border: 2px solid palette(mid) }"
                "#sidebar:focus, #treeView:focus { border-color: palette(highlight) }");
        findChild<QWidget*>("sidebar")->setMinimumWidth(places_letters * fontMetrics().averageCharWidth());
        auto* const folders = findChild<QTreeView*>("treeView");
        for (const int column : {size_column, type_column}) // folders have none
            folders->hideColumn(column);
        folders->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        const QSize usual(usual_letters * fontMetrics().averageCharWidth(),
                          usual_lines * fontMetrics().lineSpacing());
        resize(usual.boundedTo(screen_room(*this)));
        auto* const buttons = findChild<QDialogButtonBox*>();
        buttons->button(QDialogButtonBox::Open)->setObjectName("Ok");
    }

    void accept() override {
        // What the box says counts: the list may still stand on a folder that was typed on the way.
        const QString typed = findChild<QLineEdit*>("fileNameEdit")->text();
        const QString folder = QDir::cleanPath(directory().absoluteFilePath(typed));
        if (!QFileInfo(folder).isDir()) return; // typed, and there is no such folder
        const std::string path = ansi_from_utf8(folder.toStdString());
        const bool storable = qt_text(path) == folder;
        desktop::run_handler(desktop::source::operator_, [path, storable] {
            if (storable) return frmbrowse::Ok_click(path);
            message_box("This folder's name has letters that the settings cannot hold:\r\n" + path,
                        box_icon::critical);
        });
    }

    void reject() override { desktop::run_handler(desktop::source::operator_, frmbrowse::unload); }
};

} // namespace

frmbrowse_view::frmbrowse_view(QWidget* parent) : parent_(parent) {}

void frmbrowse_view::show_state() {
    if (frmbrowse::state.form.Visible == !window_.isNull()) return;
    if (frmbrowse::state.form.Visible) {
        window_ = new folder_window(parent_);
        window_->show();
        return;
    }
    window_->hide();
    window_->deleteLater();
    window_.clear();
}

} // namespace tyxo
