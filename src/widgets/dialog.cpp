#include "widgets/dialog.h"

#include <QBoxLayout>
#include <QPushButton>
#include <QRadioButton>

#include <utility>

namespace tyxo {

namespace {

constexpr int least_button_width = 120;
constexpr QRgb disabled_print = 0xFF686C70; ///< values that can only be looked at must still be legible

} // namespace

modal_dialog::modal_dialog(QWidget* parent, const char* name, const Form& form,
                           std::function<void()> close_command, desktop::source commands)
    : QDialog(parent), form_(form), close_command_(std::move(close_command)), commands_(commands) {
    setObjectName(name);
    // Locks the main window and all windows that belong to it; the alert, which belongs to none, stays
    // usable.
    setWindowModality(Qt::WindowModal);
    set_disabled_print(*this, disabled_print);
}

void modal_dialog::reject() {
    desktop::run_handler(commands_, close_command_);
}

void modal_dialog::show_state() {
    show_bound();
    show_form();
}

void modal_dialog::show_form() {
    const QString caption = qt_text(form_.Caption);
    if (windowTitle() != caption) setWindowTitle(caption);
    if (isVisible() != form_.Visible) setVisible(form_.Visible);
}

QGroupBox* modal_dialog::add_frame(const char* name, const Frame& state, QBoxLayout& place) {
    auto* const frame = new QGroupBox(this);
    frame->setObjectName(name);
    bind(frame, state);
    place.addWidget(frame);
    return frame;
}

QLabel* modal_dialog::add_label(const char* name, const Label& state, QBoxLayout& place) {
    QLabel* const label = add_label(name, place);
    bind(label, state);
    return label;
}

QLabel* modal_dialog::add_label(const char* name, QBoxLayout& place) {
    auto* const label = new QLabel(this);
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText); // an operator's text is a text, whatever it looks like
    place.addWidget(label);
    return label;
}

QPushButton* modal_dialog::add_button(const char* name, const Command& state, std::function<void()> command,
                                      bool is_default, QBoxLayout& place) {
    auto* const button = new QPushButton(this);
    button->setObjectName(name);
    bind(button, state);
    button->setMinimumWidth(least_button_width);
    button->setAutoDefault(true);
    button->setDefault(is_default);
    connect(button, &QPushButton::clicked, this,
            [from = commands_, command = std::move(command)] { desktop::run_handler(from, command); });
    place.addWidget(button);
    return button;
}

option_array::option_array(QObject* parent, const char* array, void (*command)(std::size_t))
    : QObject(parent), array_(array), group_(this) {
    connect(&group_, &QButtonGroup::idClicked, this, [command](int index) {
        desktop::run_handler(desktop::source::operator_,
                             [command, index] { command(static_cast<std::size_t>(index)); });
    });
}

QRadioButton* option_array::add(QWidget* parent) {
    const int index = static_cast<int>(group_.buttons().size());
    auto* const option = new QRadioButton(parent);
    option->setObjectName(element(array_, index));
    group_.addButton(option, index);
    return option;
}

QRadioButton* option_array::operator[](std::size_t index) const {
    return static_cast<QRadioButton*>(group_.button(static_cast<int>(index)));
}

void option_array::show_control(std::optional<std::size_t> selected) {
    group_.setExclusive(false); // else the selected one could not be deselected
    for (QAbstractButton* option : group_.buttons())
        option->setChecked(selected && group_.id(option) == static_cast<int>(*selected));
    group_.setExclusive(true);
}

} // namespace tyxo

#include "moc_dialog.cpp"
