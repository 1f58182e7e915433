#pragma once
// What the modal dialogs share: a window that opens and closes as its form says, and arrays of option
// buttons.

#include "controls/controls.h"
#include "platform/desktop/handlers.h"
#include "widgets/state_view.h"

#include <QButtonGroup>
#include <QDialog>

#include <cstddef>
#include <functional>
#include <optional>

class QBoxLayout;
class QGroupBox;
class QLabel;
class QPushButton;
class QRadioButton;

namespace tyxo {

inline constexpr int dialog_margin = 20;
inline constexpr int dialog_gap = 16; ///< between what stands in it

/// A dialog in front of all windows. It never closes by itself: Escape and the window's own close button run
/// the command that was given, and the form then says that the dialog is closed.
class modal_dialog : public QDialog, public state_view {
    Q_OBJECT

  public:
    /// `name` is the form's, which says whether the window is open; `close_command` is run as a command of
    /// the operator, like those of the buttons. A dialog that only tells something has view commands.
    modal_dialog(QWidget* parent, const char* name, const Form& form, std::function<void()> close_command,
                 desktop::source commands = desktop::source::operator_);

    void reject() override;

    /// What is bound, then the window itself.
    void show_state() override;

  protected:
    /// Opens, closes and names the window.
    void show_form();

    /// The form wants the window to be open, and it is not yet.
    [[nodiscard]] bool opens() const { return form_.Visible && !isVisible(); }

    /// A control of the dialog with its name, bound to its state.
    QGroupBox* add_frame(const char* name, const Frame& state, QBoxLayout& place);
    QLabel* add_label(const char* name, const Label& state, QBoxLayout& place);
    /// A label whose text is not a state of the core.
    QLabel* add_label(const char* name, QBoxLayout& place);
    /// A button that runs a command. Enter presses the button with the focus; where something else has it,
    /// the one that `is_default`.
    QPushButton* add_button(const char* name, const Command& state, std::function<void()> command,
                            bool is_default, QBoxLayout& place);

  private:
    const Form& form_;
    std::function<void()> close_command_;
    desktop::source commands_;
};

/// The option buttons of a control array. At most one is selected.
class option_array : public QObject {
    Q_OBJECT

  public:
    /// Elements are named "array(0)" and so on; `command` is run with the index of the one that is pressed.
    option_array(QObject* parent, const char* array, void (*command)(std::size_t));

    /// A new element at the end.
    QRadioButton* add(QWidget* parent);

    /// An element by its index.
    [[nodiscard]] QRadioButton* operator[](std::size_t index) const;

    /// Selects one element, or none.
    void show_control(std::optional<std::size_t> selected);

  private:
    const char* array_;
    QButtonGroup group_;
};

} // namespace tyxo
