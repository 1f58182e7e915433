#pragma once
// The first tab of the setup dialog: a row for each channel, and what concerns all of them.

#include "dialogs/setup/frmsetup.h"
#include "widgets/dialog.h"

#include <QWidget>

class QCheckBox;
class QGridLayout;
class QVBoxLayout;

namespace tyxo {

class edit_box;
class wheel_filter;

class settings_page : public QWidget, public state_view {
    Q_OBJECT

  public:
    explicit settings_page(QWidget* parent);

    void show_state() override;

  private:
    void make_rows(QVBoxLayout& place);
    void make_row(i16 row, QGridLayout& grid);
    void make_count(QVBoxLayout& place);
    void make_diffmode(QVBoxLayout& place);
    void make_events(QVBoxLayout& place);
    void make_chart_boxes(QVBoxLayout& place);
    edit_box* add_text(const QString& name, const QString& spoken, const TextBox& text,
                       std::function<void(std::string_view)> change);
    QPushButton* add_browse(const QString& name, const QString& spoken, const Command& control,
                            std::function<void()> command);
    QCheckBox* add_check(const QString& name, const CheckBox& control, std::function<void()> command);

    wheel_filter* wheel_;
    QGroupBox* frame_comport;
    QGroupBox* XY_Chart = nullptr;
    QLabel* Lbl_locked = nullptr;
    option_array Opt_diffmode;
    option_array Opt_event;
};

} // namespace tyxo
