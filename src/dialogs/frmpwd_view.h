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

    void show_state() override;

  private:
    edit_box* add_box(const char* name, const QString& label, const TextBox& state,
                      void (*change)(std::string_view), QGridLayout& grid);

    QGroupBox* Frame1 = nullptr;
    edit_box* oldpasswd = nullptr;
};

} // namespace tyxo
