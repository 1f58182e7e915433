#pragma once
// The dialog "Setup scales" on the screen.

#include "widgets/dialog.h"

#include <vector>

class QGridLayout;
class QVBoxLayout;

namespace tyxo {

class frmscale_polar_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmscale_polar_view(QWidget* parent);

    void show_state() override;

  private:
    void make_scales(QVBoxLayout& outer);
    void make_times(QVBoxLayout& outer);
    void make_buttons(QVBoxLayout& outer);
    void add_scale_options(option_array& options, QGroupBox& place, const Frame& frame);

    option_array Opt_scale;
    option_array Opt_scale_t;
    option_array Opt_refr;
    option_array Opt_logtime;
    std::vector<QLabel*> Lbl_scale; // of both scales, one after the other
    QLabel* locked_ = nullptr;
    QPushButton* Cmd_ok = nullptr;
};

} // namespace tyxo
