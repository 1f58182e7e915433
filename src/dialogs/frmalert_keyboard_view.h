#pragma once
// When the alarm alert may have the keyboard, and which keys it may see.

#include <QElapsedTimer>
#include <QObject>
#include <QPointer>
#include <QWidget>

class QKeyEvent;
class QWindow;

namespace tyxo {

/// Follows the keyboard from window to window, and keeps from the alert what somebody types for another one.
class alert_keyboard : public QObject {
    Q_OBJECT

  public:
    /// `alert` is the alert's window, which lives as long as this.
    alert_keyboard(QWindow& alert, QObject* parent);

    /// In a dialog, or in a text box of another window.
    [[nodiscard]] bool operator_types() const;

    /// The alert wants the keyboard as soon as nobody types.
    void want() { wants_keyboard_ = true; }
    [[nodiscard]] bool is_due() const { return wants_keyboard_ && !operator_types(); }

    /// The alert takes it by right.
    void taken();

    /// The alert has got it, whoever gave it.
    void arrived();

    /// Another window may stand in front of the alert.
    [[nodiscard]] bool covered() const { return covered_; }
    void uncovered() { covered_ = false; }

    /// When the alert goes, some window managers give the keyboard to the main window, which loses all keys
    /// while a dialog locks it, and they may not hear the first request for another one.
    void leave_locked_window();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void follow(QWindow* window);
    void give_back();
    [[nodiscard]] QWidget* typed_in() const;
    bool withhold(QKeyEvent& key);

    QWindow& alert_;
    QPointer<QWidget> owner_; // the window that had the keyboard before the alert, unless it is gone
    bool owned_ = false;      // it was one of this program
    bool alert_had_it_ = false;
    bool covered_ = false;
    bool wants_keyboard_ = false;
    QElapsedTimer has_keyboard_; // since the alert has it by right
};

} // namespace tyxo
