#pragma once
// The alarm alert on the screen.

#include "basics/per_channel.h"
#include "widgets/spoken.h"
#include "widgets/state_view.h"

#include <QDialog>

class QBoxLayout;
class QPushButton;

namespace tyxo {

class alert_keyboard;
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

    alert_plate* Lbl_attention = nullptr;
    alert_plate* Lbl_relay = nullptr;
    per_channel<alert_plate*> lbl_inst{};
    per_channel<alert_plate*> lbl_inst1{};
    QPushButton* CmdAck = nullptr;
    announcer* announcer_;
    per_channel<QString> said_; // the lines that were announced
    alert_keyboard* keyboard_ = nullptr;
};

} // namespace tyxo
