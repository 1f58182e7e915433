#include "dialogs/frmscale_polar_view.h"

#include "dialogs/frmscale_polar.h"
#include "widgets/click_label_view.h"
#include "widgets/show.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QPushButton>
#include <QRadioButton>

namespace tyxo {

namespace {

constexpr int frame_gap = 12;
constexpr int scale_frame_width = 190; // the same for both, with room for either title
constexpr int scale_option_gap = 6;
constexpr int scale_rows = 4; // the eight scales stand in two columns

/// Names an option for those who hear it and do not see the frame around it.
void name_option(QRadioButton& option, const Frame& frame, std::string_view caption) {
    option.setAccessibleName(qt_text(frame.Caption) + ": " + qt_text(caption));
}

template <class Choices>
void add_options(option_array& options, QGroupBox& place, const Frame& frame, QBoxLayout& row,
                 const Choices& choices) {
    for (const auto& choice : choices) {
        QRadioButton* const option = options.add(&place);
        option->setText(qt_text(choice.caption));
        name_option(*option, frame, choice.caption);
        row.addWidget(option, 1);
    }
}

} // namespace

frmscale_polar_view::frmscale_polar_view(QWidget* parent)
    : modal_dialog(parent, "frmscale_polar", frmscale_polar::state.form, frmscale_polar::unload),
      Opt_scale(this, "Opt_scale", frmscale_polar::Opt_scale_click),
      Opt_scale_t(this, "Opt_scale_t", frmscale_polar::Opt_scale_t_click),
      Opt_refr(this, "Opt_refr", frmscale_polar::Opt_refr_click),
      Opt_logtime(this, "Opt_logtime", frmscale_polar::Opt_logtime_click) {
    auto* const rows = new QVBoxLayout(this);
    QGroupBox* const Frame1 = add_frame("Frame1", frmscale_polar::state.Frame1, *rows);
    auto* const outer = new QVBoxLayout(Frame1);
    outer->setSpacing(frame_gap);
    make_scales(*outer);
    make_times(*outer);
    bind(&Opt_scale, frmscale_polar::state.Opt_scale);
    bind(&Opt_scale_t, frmscale_polar::state.Opt_scale_t);
    bind(&Opt_refr, frmscale_polar::state.Opt_refr);
    bind(&Opt_logtime, frmscale_polar::state.Opt_logtime);
    locked_ = add_label("Lbl_locked", *rows);
    locked_->setText(tr("The values are locked. Stop all channels first."));
    make_buttons(*rows);
    rows->setSizeConstraint(QLayout::SetFixedSize);
}

void frmscale_polar_view::make_scales(QVBoxLayout& outer) {
    auto* const row = new QHBoxLayout;
    row->setSpacing(frame_gap);
    outer.addLayout(row);
    QGroupBox* const Frame_scale_a = add_frame("Frame_scale_a", frmscale_polar::state.Frame_scale_a, *row);
    QGroupBox* const Frame_scale_t = add_frame("Frame_scale_t", frmscale_polar::state.Frame_scale_t, *row);
    for (QGroupBox* frame : {Frame_scale_a, Frame_scale_t})
        frame->setMinimumWidth(scale_frame_width);
    add_scale_options(Opt_scale, *Frame_scale_a, frmscale_polar::state.Frame_scale_a);
    add_scale_options(Opt_scale_t, *Frame_scale_t, frmscale_polar::state.Frame_scale_t);
}

void frmscale_polar_view::add_scale_options(option_array& options, QGroupBox& place, const Frame& frame) {
    auto* const grid = new QGridLayout(&place);
    grid->setHorizontalSpacing(scale_option_gap);
    for (std::size_t index = 0; index < scale_choices.size(); ++index) {
        const int row = static_cast<int>(index) % scale_rows;
        const int column = static_cast<int>(index) / scale_rows * 2;
        QRadioButton* const option = options.add(&place);
        name_option(*option, frame, scale_choices[index].caption);
        auto* const label = new click_label(&place);
        label->setObjectName(element("Lbl_scale", static_cast<int>(Lbl_scale.size())));
        label->setText(qt_text(scale_choices[index].caption));
        label->setFocusPolicy(Qt::NoFocus); // the keyboard goes to the option beside it
        connect(label, &click_label::clicked, option, &QRadioButton::click);
        Lbl_scale.push_back(label);
        grid->addWidget(option, row, column);
        grid->addWidget(label, row, column + 1);
        grid->setColumnStretch(column + 1, 1);
    }
}

void frmscale_polar_view::make_times(QVBoxLayout& outer) {
    QGroupBox* const Frame_refresh = add_frame("Frame_refresh", frmscale_polar::state.Frame_refresh, outer);
    auto* const refresh = new QHBoxLayout(Frame_refresh);
    add_options(Opt_refr, *Frame_refresh, frmscale_polar::state.Frame_refresh, *refresh, refresh_choices);
    QGroupBox* const Frame_logtime = add_frame("Frame_logtime", frmscale_polar::state.Frame_logtime, outer);
    auto* const log_period = new QHBoxLayout(Frame_logtime);
    add_options(Opt_logtime, *Frame_logtime, frmscale_polar::state.Frame_logtime, *log_period,
                log_period_choices);
}

void frmscale_polar_view::make_buttons(QVBoxLayout& outer) {
    auto* const row = new QHBoxLayout;
    outer.addLayout(row);
    add_button("cmd_default", frmscale_polar::state.cmd_default, frmscale_polar::cmd_default_click, false,
               *row);
    row->addStretch();
    Cmd_ok = add_button("Cmd_ok", frmscale_polar::state.Cmd_ok, frmscale_polar::Cmd_ok_click, true, *row);
}

void frmscale_polar_view::show_state() {
    const bool locked = !frmscale_polar::state.Frame_scale_a.Enabled;
    const bool opens = !isVisible();
    show_on(*locked_, locked);
    modal_dialog::show_state();
    if (opens && isVisible() && locked) Cmd_ok->setFocus(); // the default settings do nothing now
}

} // namespace tyxo

#include "moc_frmscale_polar_view.cpp"
