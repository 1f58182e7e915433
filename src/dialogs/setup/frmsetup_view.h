#pragma once
// The dialog "Setup" on the screen.

#include "basics/per_channel.h"
#include "basics/types.h"
#include "widgets/dialog.h"

#include <vector>

class QTabWidget;
class QVBoxLayout;

namespace tyxo {

class sensor_page;
class settings_page;

class frmsetup_view : public modal_dialog {
    Q_OBJECT

  public:
    explicit frmsetup_view(QWidget* parent);

    void show_state() override;

  private:
    void make_tabs(QVBoxLayout& place);
    void make_buttons(QVBoxLayout& place);
    void show_tabs();
    void show_tab_tips();
    void fit_screen();
    void add_page(QWidget* page);

    QTabWidget* SSTab = nullptr;
    settings_page* settings_ = nullptr;
    per_channel<sensor_page*> sensors_{};
    std::vector<QWidget*> pages_; // of the tabs
    QPushButton* cmd_OK = nullptr;
};

} // namespace tyxo
