#pragma once
// The gateway's window on the screen.

#include "widgets/state_view.h"

#include <QMainWindow>

class QBoxLayout;
class QGridLayout;
class QGroupBox;
class QPushButton;

namespace tyxo {

class edit_box;
class register_boxes;

/// Not modal, beside the main window. Its close box shows the core's message and leaves it open.
class frmsetuptcp_view : public QMainWindow, public state_view {
    Q_OBJECT

  public:
    explicit frmsetuptcp_view(QWidget* parent);

    void show_state() override;

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

    QGroupBox* IP_frame = nullptr;
    QGroupBox* IP_Test_Frame = nullptr;
    register_boxes* registers_ = nullptr;
    i32 summoned_ = 0;
};

} // namespace tyxo
