#pragma once
// The gateway's window on the screen.

#include "controls/controls.h"

#include <QMainWindow>

#include <vector>

class QBoxLayout;
class QCheckBox;
class QGridLayout;
class QGroupBox;
class QPushButton;

namespace tyxo {

class edit_box;
class register_boxes;
class status_line;
class tcp_picture;

/// Not modal, beside the main window. Its close box shows the core's message and leaves it open.
class frmsetuptcp_view : public QMainWindow {
    Q_OBJECT

  public:
    explicit frmsetuptcp_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    void make_menu();
    void make_parameters(QBoxLayout& place);
    void make_options(QGridLayout& grid);
    void make_status(QBoxLayout& place);
    void make_registers(QBoxLayout& place);

    QAction* add_item(QMenu* menu, const char* name, const QString& caption, void (*command)());
    QPushButton* add_button(const char* name, const QString& caption, void (*command)(), QBoxLayout& place);
    /// A box with its label in front of it, which is its accessible name too.
    edit_box* add_box(const char* name, const QString& label, void (*change)(std::string_view),
                      const std::string& text);
    void grow();
    void show_window();

    /// A control and what it shows.
    template <class Widget, class Value> struct shown {
        Widget* widget;
        const Value& value;
    };
    std::vector<shown<edit_box, std::string>> boxes_;
    std::vector<shown<QCheckBox, i16>> checks_;
    std::vector<shown<QAction, bool>> items_;
    QGroupBox* IP_frame = nullptr;
    QGroupBox* IP_Test_Frame = nullptr;
    status_line* Text5 = nullptr;
    register_boxes* registers_ = nullptr;
    tcp_picture* Image_TCP = nullptr;
    i32 summoned_ = 0;
};

} // namespace tyxo
