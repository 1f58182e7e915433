#pragma once
// Pictures of the started program's windows.

#include "app/mainfrm_view.h"
#include "displays/layout.h"

#include <QApplication>
#include <QScreen>
#include <QSet>
#include <QString>
#include <QTextStream>

namespace tyxo {

class picture_taker {
  public:
    picture_taker(const QString& folder, mainfrm_view& main) : folder_(folder), main_(main) {}

    void resize(const QString& name, QSize size) {
        show();
        window(name)->resize(size.boundedTo(main_.screen()->availableSize()));
        show();
    }

    void maximise(bool wanted) {
        if (wanted) main_.showMaximized();
        if (!wanted && main_.minimumWidth() == design_client_width) main_.showNormal();
        show();
    }

    /// Shows what the core says and saves a window's picture.
    void take(const QString& name, const QString& file) {
        show();
        QWidget* const taken = window(name);
        taken_.insert(name);
        failed_ = failed_ || !taken->grab().save(folder_ + '/' + file + ".png");
        const QSize screen = main_.screen()->availableSize();
        if (taken->width() <= screen.width() && taken->height() <= screen.height()) return;
        QTextStream(stdout) << file << ": " << taken->width() << " x " << taken->height()
                            << " exceeds the screen\n";
    }

    /// A window of which there has to be a picture by now.
    void expect(const QString& name) {
        if (!taken_.contains(name)) QTextStream(stdout) << "no picture of " << name << '\n';
        failed_ = failed_ || !taken_.contains(name);
    }

    [[nodiscard]] bool failed() const { return failed_; }

  private:
    QWidget* window(const QString& name) {
        QWidget* widget = main_.findChild<QWidget*>(name);
        for (QWidget* top :
             QApplication::topLevelWidgets()) // the main window, and the alert, which has no parent
            if (top->objectName() == name) widget = top;
        if (widget == nullptr || !widget->isVisible()) qFatal("no window %s", qPrintable(name));
        return widget;
    }

    void show() {
        QCoreApplication::processEvents();
        main_.show_state();
        QCoreApplication::processEvents();
    }

    QString folder_;
    mainfrm_view& main_;
    QSet<QString> taken_; // the windows
    bool failed_ = false;
};

} // namespace tyxo
