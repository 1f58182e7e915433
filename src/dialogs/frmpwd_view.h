#pragma once
// The dialog "Setup Password" on the screen.

#include "widgets/dialog.h"

#include <string_view>

class QGridLayout;

namespace tyxo {

class edit_box;

class frmpwd_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmpwd_view(QWidget* parent);

    /// Shows, hides and fills the window as the core says.
    void show_state();

  private:
    edit_box* add_box(const char* name, const QString& label, void (*change)(std::string_view),
                      QGridLayout& grid);

    QGroupBox* Frame1 = nullptr;
    edit_box* oldpasswd = nullptr;
    edit_box* newpasswd = nullptr;
    edit_box* newpasswd2 = nullptr;
    QPushButton* CmdOK = nullptr;
    QPushButton* CmdCancel = nullptr;
};

} // namespace tyxo
