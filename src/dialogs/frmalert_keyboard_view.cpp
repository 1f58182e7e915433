#include "dialogs/frmalert_keyboard_view.h"

#include <QApplication>
#include <QKeyEvent>
#include <QWindow>

#include <utility>

namespace tyxo {

namespace {

constexpr int deaf_time = 700; // ms: what somebody was typing when the alert came is not meant for it

} // namespace

alert_keyboard::alert_keyboard(QWindow& alert, QObject* parent) : QObject(parent), alert_(alert) {
    alert.installEventFilter(this);
    connect(qApp, &QGuiApplication::focusWindowChanged, this, &alert_keyboard::follow);
}

void alert_keyboard::follow(QWindow* window) {
    const bool from_alert = std::exchange(alert_had_it_, window == &alert_);
    if (window == &alert_) return;
    if (window == nullptr && from_alert) return; // the alert has gone, and nobody has got the keyboard yet
    owned_ = window != nullptr;
    QWidget* const owner = owned_ ? QWidget::find(window->winId()) : nullptr;
    if (owner != nullptr && owner != owner_) covered_ = true;
    owner_ = owner;
    leave_locked_window();
}

void alert_keyboard::leave_locked_window() {
    QWidget* const dialog = QApplication::activeModalWidget();
    const QWindow* const owner = QGuiApplication::focusWindow();
    if (dialog == nullptr || owner == nullptr || owner == &alert_) return;
    if (QApplication::activePopupWidget() != nullptr) return; // the dialog's own list
    if (owner != dialog->windowHandle()) dialog->activateWindow();
}

bool alert_keyboard::operator_types() const {
    if (QApplication::activeModalWidget() != nullptr || QApplication::activePopupWidget() != nullptr)
        return true;
    if (owner_ == nullptr || !owner_->isVisible()) return false;
    const QWidget* const box = owner_->focusWidget();
    return box != nullptr && box->testAttribute(Qt::WA_InputMethodEnabled);
}

/// Where the keyboard belongs while the operator types; nowhere if it was with another program.
QWidget* alert_keyboard::typed_in() const {
    if (!owned_) return nullptr;
    QWidget* const dialog = QApplication::activeModalWidget();
    return dialog != nullptr ? dialog : owner_.data();
}

/// Some window systems give the keyboard to whatever is new or in front.
void alert_keyboard::arrived() {
    if (operator_types()) {
        give_back();
    } else {
        has_keyboard_.start();
    }
}

void alert_keyboard::taken() {
    wants_keyboard_ = false;
    has_keyboard_.start();
}

void alert_keyboard::give_back() {
    wants_keyboard_ = true;
    if (QWidget* const window = typed_in()) window->activateWindow();
}

/// True if the alert must not see a key. Not every window system lets a window give the keyboard back, and
/// none does so at once: what reaches the alert meanwhile is handed on.
bool alert_keyboard::withhold(QKeyEvent& key) {
    if (QApplication::activePopupWidget() != nullptr) return false; // the popup gets all keys anyway
    if (operator_types()) {
        if (const QWidget* const window = typed_in())
            QCoreApplication::sendEvent(window->windowHandle(), &key);
        return true;
    }
    if (wants_keyboard_ || has_keyboard_.elapsed() < deaf_time) return true;
    return key.type() == QEvent::KeyPress && key.isAutoRepeat(); // still held down from before
}

bool alert_keyboard::eventFilter(QObject* watched, QEvent* event) {
    const bool is_key = event->type() == QEvent::KeyPress || event->type() == QEvent::KeyRelease;
    if (is_key && withhold(static_cast<QKeyEvent&>(*event))) return true;
    return QObject::eventFilter(watched, event);
}

} // namespace tyxo

#include "moc_frmalert_keyboard_view.cpp"
