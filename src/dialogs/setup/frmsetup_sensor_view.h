#pragma once
// The tab of one channel in the setup dialog: what its Evaluator reported, to be read only.

#include "dialogs/setup/frmsetup.h"
#include "widgets/state_view.h"

#include <QWidget>

#include <array>

class QGridLayout;

namespace tyxo {

class firing_table;
class read_only_box;

/// One of the fields.
struct sensor_field {
    const char* name; ///< of the control array
    const char* label;
    std::string sensor_tab::*text;
    int digits = 6;                       ///< that it has room for at least
    const sensor_field* beside = nullptr; ///< a second box in the same line, without a label of its own
};

class sensor_page : public QWidget, public state_view {
    Q_OBJECT

  public:
    sensor_page(i16 channel, QWidget* parent);

    void show_state() override;

  private:
    /// A group with its fields one below the other.
    template <std::size_t count>
    QGroupBox* make_group(const QString& title, const std::array<sensor_field, count>& fields);
    void add_field(const sensor_field& field, QGridLayout& grid, int row, int column);
    read_only_box* make_box(const sensor_field& field);

    i16 channel_;
    QGroupBox* Frame_sensor;
    const sensor_tab& tab_;
    firing_table* Frame_exp;
    firing_table* frame_ignit;
    sensor_tab shown_;
};

} // namespace tyxo
