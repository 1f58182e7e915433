#pragma once
// The first tab of the setup dialog: a row for each channel, and what concerns all of them.

#include "dialogs/setup/frmsetup.h"
#include "widgets/dialog.h"

#include <QWidget>

#include <utility>
#include <vector>

class QCheckBox;
class QComboBox;
class QGridLayout;
class QScrollBar;
class QVBoxLayout;

namespace tyxo {

class edit_box;
class read_only_box;
class wheel_filter;

class settings_page : public QWidget {
    Q_OBJECT

  public:
    explicit settings_page(QWidget* parent);

    void show_state();

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
    QGroupBox* Frame_events = nullptr;
    QGroupBox* XY_Chart = nullptr;
    QLabel* Lbl_locked = nullptr;
    option_array Opt_diffmode;
    option_array Opt_event;
    QScrollBar* scroll_max_commport = nullptr;
    read_only_box* Text_num_sensors = nullptr;
    // The other controls, each with what it shows.
    std::vector<std::pair<QComboBox*, const ComboBox&>> lists_;
    std::vector<std::pair<edit_box*, const TextBox&>> texts_;
    std::vector<std::pair<QPushButton*, const Command&>> buttons_;
    std::vector<std::pair<QCheckBox*, const CheckBox&>> checks_;
};

} // namespace tyxo
