#pragma once
// The real main window on a settings file of its own, and what an operator does with its dialogs.

#include "app/mainfrm.h"
#include "app/mainfrm_view.h"
#include "app/wiring.h"
#include "desktop/settings_file.h"
#include "desktop/shown_window.h"
#include "widgets/light_palette.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QGroupBox>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QRadioButton>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace tyxo {

class started_window {
  public:
    /// Starts the program on these settings in a folder of its own, and shows its window.
    void start(const char* settings_text) {
        QVERIFY(QDir::setCurrent(folder_.path()));
        QVERIFY(write_settings_file(settings_text));
        wire();
        use_light_palette();
        window_ = std::make_unique<mainfrm_view>();
        mainfrm::start_program(window_->width(), window_->height());
        show_state();
        window_->show();
        QVERIFY(QTest::qWaitForWindowExposed(window_.get()));
    }
    void end() { window_.reset(); }

    [[nodiscard]] mainfrm_view& view() const { return *window_; }
    void show_state() { window_->show_state(); }

    /// A dialog that was open already, or is about to open for the first time.
    [[nodiscard]] QDialog* dialog(const char* name) const {
        QDialog* found = nullptr;
        const bool made = QTest::qWaitFor([&] {
            found = window_->findChild<QDialog*>(name);
            return found != nullptr;
        });
        if (!made) qFatal("there is no %s", name);
        return found;
    }

    /// A dialog that is about to open, as soon as it is in front.
    [[nodiscard]] QDialog* opened(const char* name) const;

    /// A control of the main window itself; dialogs have some of the same names.
    [[nodiscard]] QWidget* widget(const char* array, int index) const {
        return window_->centralWidget()->findChild<QWidget*>(QString("%1(%2)").arg(array).arg(index));
    }

    void open_menu_entry(const char* menu_name, const char* entry_name) const {
        auto* const menu = window_->findChild<QMenu*>(menu_name);
        auto* const entry = window_->findChild<QAction*>(entry_name);
        menu->popup(window_->mapToGlobal(QPoint(10, 10)));
        QTest::mouseClick(menu, Qt::LeftButton, {}, menu->actionGeometry(entry).center());
    }

  private:
    QTemporaryDir folder_;
    std::unique_ptr<mainfrm_view> window_;
};

inline QRadioButton* option(const QDialog* dialog, const char* array, int index) {
    auto* const found = dialog->findChild<QRadioButton*>(QString("%1(%2)").arg(array).arg(index));
    if (found == nullptr) qFatal("no %s(%d)", array, index);
    return found;
}

inline QPushButton* button(const QDialog* dialog, const char* name, const char* caption) {
    auto* const found = dialog->findChild<QPushButton*>(name);
    if (found == nullptr || found->text() != caption) qFatal("no %s \"%s\"", name, caption);
    return found;
}

inline void close_with_escape(QDialog* dialog) {
    QTest::keyClick(dialog, Qt::Key_Escape);
    QTRY_VERIFY(!dialog->isVisible());
}

/// Gives a window the keyboard, which the one that was closed last may have left without an owner.
inline void to_front(QWidget* window) {
    window->activateWindow();
    if (!QTest::qWaitFor([window] { return QApplication::activeWindow() == window; }))
        qFatal("%s is not in front", qPrintable(window->objectName()));
}

inline QDialog* started_window::opened(const char* name) const {
    QDialog* const found = dialog(name);
    if (!QTest::qWaitFor([found] { return found->isVisible(); })) qFatal("%s does not open", name);
    to_front(found);
    return found;
}

/// Nothing on the dialog is smaller than what it says.
inline void check_texts(const QDialog* dialog) {
    QTest::qWait(50);
    for (const auto* const control : dialog->findChildren<QWidget*>()) {
        if (!control->isVisible()) continue;
        QVERIFY2(control->width() >= control->minimumSizeHint().width(), qPrintable(control->objectName()));
        if (const auto* const label = qobject_cast<const QLabel*>(control))
            QVERIFY2(label->fontMetrics().size(0, label->text()).width() <= label->width(),
                     qPrintable(label->text()));
        if (const auto* const frame = qobject_cast<const QGroupBox*>(control))
            QVERIFY2(frame->fontMetrics().size(0, frame->title()).width() <= frame->width(),
                     qPrintable(frame->title()));
    }
}

} // namespace tyxo
