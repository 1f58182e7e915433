#include "widgets/spoken.h"

#include "widgets/show.h"

#include <QAccessibleWidget>
#include <QApplication>
#include <QMetaObject>

namespace tyxo {

namespace {

/// A dialog in front takes the clicks of all windows but its own.
bool locked(const QWidget& widget) {
    const QWidget* const dialog = QApplication::activeModalWidget();
    return dialog != nullptr && dialog != widget.window();
}

constexpr spoken_control::scale none{0, 0, 0};

/// A painted control as listeners see it. Its text can be read in whole, and nothing else be done to it.
class spoken_interface : public QAccessibleWidget,
                         public QAccessibleValueInterface,
                         public QAccessibleTextInterface {
  public:
    using QAccessibleWidget::QAccessibleWidget;

    [[nodiscard]] QAccessible::Role role() const override {
        const spoken_control* const told = control();
        return told != nullptr ? told->spoken_role() : QAccessibleWidget::role();
    }

    [[nodiscard]] QAccessible::State state() const override {
        QAccessible::State now = QAccessibleWidget::state();
        if (scale()) now.readOnly = true;
        return now;
    }

    [[nodiscard]] QString text(QAccessible::Text kind) const override {
        QString own = QAccessibleWidget::text(kind);
        if (kind != QAccessible::Description || widget()->focusPolicy() == Qt::NoFocus) return own;
        return own.isEmpty() || value().isEmpty() ? value() + own : value() + ". " + own;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface)
            return scale() ? static_cast<QAccessibleValueInterface*>(this) : nullptr;
        if (type == QAccessible::TextInterface)
            return value().isEmpty() ? nullptr : static_cast<QAccessibleTextInterface*>(this);
        return QAccessibleWidget::interface_cast(type);
    }

    // What can be done to it.

    [[nodiscard]] QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (can_be_pressed()) names.prepend(pressAction());
        return names;
    }
    void doAction(const QString& name) override {
        if (name != pressAction()) {
            QAccessibleWidget::doAction(name);
        } else if (can_be_pressed() && !locked(*widget())) {
            // Later: whoever pressed does not wait for what the click opens.
            QMetaObject::invokeMethod(widget(), "clicked", Qt::QueuedConnection);
        }
    }

    // Its value.

    [[nodiscard]] QVariant currentValue() const override { return scale().value_or(none).now; }
    [[nodiscard]] QVariant minimumValue() const override { return scale().value_or(none).least; }
    [[nodiscard]] QVariant maximumValue() const override { return scale().value_or(none).greatest; }
    [[nodiscard]] QVariant minimumStepSize() const override { return 1.0; }
    void setCurrentValue(const QVariant& /*value*/) override {}

    // Its text, name first: four engines have a number each.

    [[nodiscard]] QString whole_text() const { return text(QAccessible::Name) + ": " + value(); }
    [[nodiscard]] QString text(int from, int to) const override { return whole_text().mid(from, to - from); }
    [[nodiscard]] int characterCount() const override { return static_cast<int>(whole_text().size()); }
    [[nodiscard]] QRect characterRect(int /*offset*/) const override { return rect(); }
    [[nodiscard]] int offsetAtPoint(const QPoint& point) const override {
        return rect().contains(point) ? 0 : -1;
    }
    QString attributes(int /*offset*/, int* from, int* to) const override {
        *from = 0;
        *to = characterCount();
        return {};
    }
    void selection(int /*index*/, int* from, int* to) const override { *from = *to = 0; }
    [[nodiscard]] int selectionCount() const override { return 0; }
    void addSelection(int /*from*/, int /*to*/) override {}
    void removeSelection(int /*index*/) override {}
    void setSelection(int /*index*/, int /*from*/, int /*to*/) override {}
    [[nodiscard]] int cursorPosition() const override { return 0; }
    void setCursorPosition(int /*position*/) override {}
    void scrollToSubstring(int /*from*/, int /*to*/) override {}

  private:
    /// None while the widget is taken apart, which is told too.
    [[nodiscard]] const spoken_control* control() const {
        return dynamic_cast<const spoken_control*>(object());
    }
    [[nodiscard]] QString value() const {
        const spoken_control* const told = control();
        return told != nullptr ? told->spoken_text() : QString();
    }
    [[nodiscard]] std::optional<spoken_control::scale> scale() const {
        const spoken_control* const told = control();
        return told != nullptr ? told->spoken_scale() : std::nullopt;
    }
    [[nodiscard]] bool can_be_pressed() const {
        return object()->metaObject()->indexOfSignal("clicked()") >= 0 && widget()->isEnabled() &&
               widget()->isVisible() && widget()->focusPolicy() != Qt::NoFocus;
    }
};

QAccessibleInterface* make_interface(const QString& /*class_name*/, QObject* object) {
    if (dynamic_cast<spoken_control*>(object) == nullptr) return nullptr;
    return new spoken_interface(static_cast<QWidget*>(object)); // owned by Qt's table of them
}

} // namespace

spoken_control::spoken_control() {
    QAccessible::installFactory(make_interface); // once, however often it is installed
}

void spoken_control::renew_description(QWidget& widget) {
    QAccessibleEvent changed(&widget, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
}

announcer::announcer(QWidget* parent) : QWidget(parent) {
    hide();
}

void announcer::say(const QString& what) {
    if (!QAccessible::isActive()) return;
    show_name(*this, what);
    QAccessibleEvent appeared(this, QAccessible::ObjectShow);
    QAccessible::updateAccessibility(&appeared);
}

} // namespace tyxo
