#pragma once
// The alarm alert on the screen.

#include "widgets/spoken.h"
#include "widgets/state_view.h"

#include <QDialog>
#include <QElapsedTimer>
#include <QPointer>

#include <array>

class QBoxLayout;
class QKeyEvent;
class QPushButton;
class QWindow;

namespace tyxo {

class alert_plate;

/// A window that belongs to no other, so that no dialog locks it, and that stays in front of all. It takes
/// the keyboard only when nobody types: a half-typed password goes on, and the alert gets the keyboard when
/// the dialog has closed or the operator has left the window that he typed in. Some window systems give the
/// keyboard to whatever is new or in front; the alert then gives it back, and hands on what was typed
/// meanwhile. The mouse confirms at any time.
class frmalert_view : public QDialog, public state_view, public spoken_control {
    Q_OBJECT

  public:
    frmalert_view();

    void show_state() override;

    void reject() override;

    [[nodiscard]] QAccessible::Role spoken_role() const override { return QAccessible::AlertMessage; }

  protected:
    void changeEvent(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void make_headline(QBoxLayout& rows);
    void make_lines(QBoxLayout& rows);
    void fit_screen();
    void set_letters(double share);
    void show_ground();
    void say_new_lines();
    void appear();
    void keep_in_front();
    void take_keyboard();
    void follow_keyboard(QWindow* owner);
    void give_keyboard_back();
    void leave_locked_window();
    [[nodiscard]] QWidget* typed_in() const;
    [[nodiscard]] bool operator_types() const;
    bool withhold(QKeyEvent& key);

    alert_plate* Lbl_attention = nullptr;
    alert_plate* Lbl_relay = nullptr;
    std::array<alert_plate*, 4> lbl_inst{};
    std::array<alert_plate*, 4> lbl_inst1{};
    QPushButton* CmdAck = nullptr;
    announcer* announcer_;
    std::array<QString, 4> said_; // the lines that were announced
    QPointer<QWidget> owner_;     // the window that had the keyboard before the alert, unless it is gone
    bool owned_ = false;          // it was one of this program
    bool alert_had_it_ = false;
    bool covered_ = false; // another window may stand in front
    bool wants_keyboard_ = false;
    QElapsedTimer has_keyboard_; // since it has it by right
};

} // namespace tyxo
