#include "dialogs/setup/frmsetup_sensor_view.h"

#include "dialogs/setup/frmsetup_firing_view.h"
#include "widgets/read_only_box.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>

namespace tyxo {

namespace {

constexpr int group_gap = 10;     // px, between columns
constexpr int group_line_gap = 6; // less: a tab is to be seen whole on a screen of 768 lines
constexpr int sensor_label_gap = 8;
constexpr int longest_title = 60; // letters of a location, a tool tip has the rest

using tab = sensor_tab;

constexpr std::array<sensor_field, 3> identity{{
    {"txt_Eva_ver", "Evaluator Version", &tab::txt_Eva_ver, 10},
    {"Txt_eva_snr", "Evaluator serial number", &tab::Txt_eva_snr, 10},
    {"txt_alminhibit", "Start alarminhibit time", &tab::txt_alminhibit},
}};
constexpr sensor_field arrangement{"txt_engine_anord", "Engine type: arrangement", &tab::txt_engine_anord,
                                   10};
constexpr std::array<sensor_field, 5> engine{{
    {"txt_engine_typ", "Engine type", &tab::txt_engine_typ, 8, &arrangement},
    {"txt_num_cyl", "Number of cylinders", &tab::txt_num_cyl},
    {"txt_nendehzahl", "Nominal speed", &tab::txt_nendehzahl},
    {"txt_overspeed", "Overspeed", &tab::txt_overspeed},
    {"txt_impoffset", "TDC Impulsoffset", &tab::txt_impoffset},
}};
constexpr std::array<sensor_field, 5> dc_alarm{{
    {"txt_alarmlevel", "Alarmlevel DC", &tab::txt_alarmlevel},
    {"txt_prealarmlevel", "Prealarmlevel", &tab::txt_prealarmlevel},
    {"Txt_dc_percent", "DC Alarm Level percent", &tab::Txt_dc_percent},
    {"Txt_theff_alm", "Theff for DC measuring", &tab::Txt_theff_alm},
    {"Txt_theff_cnt", "Values for Theff calc.", &tab::Txt_theff_cnt},
}};
constexpr std::array<sensor_field, 6> ac_alarm{{
    {"Txt_ialmlevel1", "Alarmlevel1 AC", &tab::Txt_ialmlevel1},
    {"Txt_ialmlevel2", "Alarmlevel2 AC", &tab::Txt_ialmlevel2},
    {"txt_ialmrpm", "RPM for Alarmlevel2 AC", &tab::txt_ialmrpm},
    {"txt_aimp_del", "Alarm Impuls Delay", &tab::txt_aimp_del},
    {"txt_aimp_len", "Alarm Impuls Length", &tab::txt_aimp_len},
    {"txt_aimp_level", "Alarm Impuls Level", &tab::txt_aimp_level},
}};

} // namespace

sensor_page::sensor_page(i16 channel, QWidget* parent)
    : QWidget(parent), channel_(channel), Frame_sensor(new QGroupBox(this)),
      tab_(frmSetup::state.sensors[static_cast<std::size_t>(channel)]) {
    auto* const page = new QVBoxLayout(this);
    Frame_sensor->setObjectName(element("Frame_sensor", channel));
    page->addWidget(Frame_sensor);
    auto* const rows = new QVBoxLayout(Frame_sensor);
    rows->setSpacing(group_line_gap);

    auto* const evaluator = new QGroupBox(tr("Evaluator"), Frame_sensor);
    evaluator->setAccessibleName(
        evaluator->title()); // else a frame is heard under the name of the one around it
    auto* const line = new QGridLayout(evaluator);
    line->setHorizontalSpacing(sensor_label_gap);
    for (int place = 0; place < static_cast<int>(identity.size()); ++place) {
        add_field(identity[static_cast<std::size_t>(place)], *line, 0, 2 * place);
        line->setColumnStretch(2 * place + 1, 1);
    }
    rows->addWidget(evaluator);

    auto* const columns = new QHBoxLayout;
    columns->setSpacing(group_gap);
    rows->addLayout(columns);
    columns->addWidget(make_group(tr("Engine"), engine), 1);
    columns->addWidget(make_group(tr("DC alarm"), dc_alarm), 1);
    columns->addWidget(make_group(tr("AC alarm"), ac_alarm), 1);

    const int first = channel * cylinder_max;
    Frame_exp = new firing_table(Frame_sensor, element("Frame_exp", channel), "Firing order",
                                 {"Text_zundfolge", "lbl_zundfolge", first}, tab_.Text_zundfolge);
    rows->addWidget(Frame_exp);
    frame_ignit = new firing_table(Frame_sensor, element("frame_ignit", channel), "Firing angle",
                                   {"Text_zuendw", "lbl_zuendw", first}, tab_.Text_zuendw);
    rows->addWidget(frame_ignit);
    rows->addStretch();
}

read_only_box* sensor_page::make_box(const sensor_field& field) {
    auto* const box =
        new read_only_box(Frame_sensor, element(field.name, channel_), field.label, field.digits);
    bind(box, tab_.*field.text);
    return box;
}

void sensor_page::add_field(const sensor_field& field, QGridLayout& grid, int row, int column) {
    auto* const label = new QLabel(field.label, Frame_sensor);
    read_only_box* const box = make_box(field);
    label->setBuddy(box);
    grid.addWidget(label, row, column);
    if (field.beside == nullptr) {
        grid.addWidget(box, row, column + 1);
        return;
    }
    auto* const line = new QHBoxLayout;
    line->setSpacing(sensor_label_gap / 2);
    line->addWidget(box);
    line->addWidget(make_box(*field.beside));
    grid.addLayout(line, row, column + 1);
}

template <std::size_t count>
QGroupBox* sensor_page::make_group(const QString& title, const std::array<sensor_field, count>& fields) {
    auto* const group = new QGroupBox(title, Frame_sensor);
    group->setAccessibleName(title);
    auto* const grid = new QGridLayout(group);
    grid->setHorizontalSpacing(sensor_label_gap);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (const sensor_field& field : fields) {
        add_field(field, *grid, row, 0);
        ++row;
    }
    grid->setRowStretch(row, 1);
    return group;
}

void sensor_page::show_state() {
    if (shown_ == tab_) return;
    shown_ = tab_;
    const QString location = qt_text(tab_.Frame_sensor.Caption);
    Frame_sensor->setTitle(without_mnemonic(front_of(location, longest_title)));
    show_name(*Frame_sensor, location);
    show_tool_tip(*Frame_sensor, location.size() > longest_title ? location : QString());
    show_bound();
    Frame_exp->show_state();
    frame_ignit->show_state();
}

} // namespace tyxo

#include "moc_frmsetup_sensor_view.cpp"
