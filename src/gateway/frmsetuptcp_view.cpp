#include "gateway/frmsetuptcp_view.h"

#include "gateway/frmsetuptcp.h"
#include "gateway/register_boxes_view.h"
#include "gateway/status_line_view.h"
#include "gateway/tcp_picture_view.h"
#include "platform/desktop/handlers.h"
#include "platform/desktop/text.h"
#include "widgets/edit_box.h"
#include "widgets/screen_room.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QCloseEvent>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace tyxo {

namespace {

constexpr QSize usual_gateway_size(1000, 680);
constexpr int group_column_gap = 24;
constexpr int group_label_gap = 12;
constexpr int least_button_width = 130;
constexpr int number_width = 80;
constexpr int address_width = 160; // at least: any number, four of them with their points
constexpr QRgb gateway_disabled_print =
    0xFF4A5056; // the values of the automatic transmission are there to be read

} // namespace

frmsetuptcp_view::frmsetuptcp_view(QWidget* parent) : QMainWindow(parent) {
    setObjectName("FrmSetupTCP");
    set_disabled_print(*this, gateway_disabled_print);
    make_menu();
    auto* const client = new QWidget(this);
    setCentralWidget(new scroll_page(client));
    auto* const rows = new QVBoxLayout(client);
    make_parameters(*rows);
    make_status(*rows);
    make_registers(*rows);
    auto* const end = new QHBoxLayout;
    rows->addLayout(end);
    end->addStretch();
    add_button("Cmd_close", "close", FrmSetupTCP::Cmd_close_click, *end);
    resize(usual_gateway_size.boundedTo(screen_room(*this)));
}

QAction* frmsetuptcp_view::add_item(QMenu* menu, const char* name, const QString& caption,
                                    void (*command)()) {
    QAction* const item = menu->addAction(caption);
    item->setObjectName(name);
    connect(item, &QAction::triggered, this, desktop::on_command(command));
    return item;
}

void frmsetuptcp_view::make_menu() {
    const auto add_check_item = [this](QMenu* menu, const char* name, const QString& caption,
                                       void (*command)(), const bool& checked) {
        QAction* const item = add_item(menu, name, caption, command);
        item->setCheckable(true);
        bind(item, checked);
    };
    QMenu* const view = menuBar()->addMenu("View");
    view->setObjectName("TCP_view");
    add_check_item(view, "Reg_content", "Register Content", FrmSetupTCP::Reg_content_click,
                   FrmSetupTCP::state.Reg_content);
    add_item(view, "res_con", "Reset connection", FrmSetupTCP::res_con_click);
    QMenu* const refresh = menuBar()->addMenu("Data refresh");
    refresh->setObjectName("data_refresh");
    add_check_item(refresh, "slow", "slow", FrmSetupTCP::slow_click, FrmSetupTCP::state.slow);
    add_check_item(refresh, "medium", "medium", FrmSetupTCP::medium_click, FrmSetupTCP::state.medium);
    add_check_item(refresh, "fast", "fast", FrmSetupTCP::fast_click, FrmSetupTCP::state.fast);
}

edit_box* frmsetuptcp_view::add_box(const char* name, const QString& label, void (*change)(std::string_view),
                                    const std::string& text) {
    auto* const box = new edit_box(this, name, change);
    box->setAccessibleName(label);
    bind(box, text);
    return box;
}

QPushButton* frmsetuptcp_view::add_button(const char* name, const QString& caption, void (*command)(),
                                          QBoxLayout& place) {
    auto* const button = new QPushButton(caption, this);
    button->setObjectName(name);
    button->setMinimumWidth(std::max(least_button_width, button->sizeHint().width()));
    button->setAutoDefault(true); // Enter presses it, as in the dialogs
    connect(button, &QPushButton::clicked, this, desktop::on_command(command));
    place.addWidget(button);
    return button;
}

void frmsetuptcp_view::make_parameters(QBoxLayout& place) {
    IP_frame = new QGroupBox(this);
    IP_frame->setObjectName("IP_frame");
    bind(IP_frame, FrmSetupTCP::state.IP_frame);
    place.addWidget(IP_frame);
    auto* const grid = new QGridLayout(IP_frame);
    grid->setHorizontalSpacing(group_label_gap);
    grid->setColumnMinimumWidth(2, group_column_gap);
    grid->setColumnStretch(1, 1);
    grid->setColumnStretch(3, 1);
    auto add = [&, row = 0](edit_box* box) mutable {
        auto* const label = new QLabel(box->accessibleName(), IP_frame);
        label->setBuddy(box);
        box->setMinimumWidth(address_width);
        grid->addWidget(label, row, 0);
        grid->addWidget(box, row++, 1);
    };
    add(add_box("Txt_IPadr", "Target IP address", FrmSetupTCP::Txt_IPadr_change,
                FrmSetupTCP::state.Txt_IPadr));
    add(add_box("Txt_IPport", "Target IP port", FrmSetupTCP::Txt_IPport_change,
                FrmSetupTCP::state.Txt_IPport));
    add(add_box("Txt_regbase", "Register base address  0 - 62300", FrmSetupTCP::Txt_regbase_change,
                FrmSetupTCP::state.Txt_regbase));
    make_options(*grid);
    auto* const end = new QVBoxLayout;
    grid->addLayout(end, 0, 4, 4, 1);
    end->addStretch();
    add_button("Cmd_save", "Save parameters", FrmSetupTCP::Cmd_save_click, *end);
}

void frmsetuptcp_view::make_options(QGridLayout& grid) {
    auto add = [&, row = 0](const char* name, const QString& caption, void (*command)(),
                            const i16& value) mutable {
        auto* const check = new QCheckBox(caption, IP_frame);
        check->setObjectName(name);
        connect(check, &QCheckBox::clicked, this, desktop::on_command(command));
        bind(check, value);
        grid.addWidget(check, row++, 3);
    };
    add("Check1", "Enable automatic TCP IP connection", FrmSetupTCP::Check1_click, FrmSetupTCP::state.Check1);
    add("Check2", "Enable linear data over  TCP IP", FrmSetupTCP::Check2_click, FrmSetupTCP::state.Check2);
    add("Check3", "Enable differential data over TCP IP", FrmSetupTCP::Check3_click,
        FrmSetupTCP::state.Check3);
    add("Check4", "Enable system status over TCP IP", FrmSetupTCP::Check4_click, FrmSetupTCP::state.Check4);
}

void frmsetuptcp_view::make_status(QBoxLayout& place) {
    auto* const row = new QHBoxLayout;
    place.addLayout(row);
    auto* const label = new QLabel("Status", this);
    row->addWidget(label);
    auto* const Text5 = new status_line(this);
    bind(Text5, FrmSetupTCP::state.Text5);
    Text5->setObjectName("Text5");
    Text5->setAccessibleName(label->text());
    label->setBuddy(Text5);
    row->addWidget(Text5, 1);
    add_button("Connect", "Connect", FrmSetupTCP::Connect_click, *row);
    add_button("cmd_discon", "Disconnect", FrmSetupTCP::cmd_discon_click, *row);
}

void frmsetuptcp_view::make_registers(QBoxLayout& place) {
    IP_Test_Frame = new QGroupBox(this);
    IP_Test_Frame->setObjectName("IP_Test_Frame");
    bind(IP_Test_Frame, FrmSetupTCP::state.IP_Test_Frame);
    place.addWidget(IP_Test_Frame, 1);
    auto* const rows = new QVBoxLayout(IP_Test_Frame);
    auto* const commands = new QHBoxLayout;
    rows->addLayout(commands);
    const auto add = [&](edit_box* box) {
        auto* const label = new QLabel(box->accessibleName(), IP_Test_Frame);
        label->setBuddy(box);
        box->setFixedWidth(number_width);
        box->setAlignment(Qt::AlignRight);
        commands->addWidget(label);
        commands->addWidget(box);
        commands->addSpacing(group_label_gap);
    };
    add(add_box("Txt_sendbase", "Start register", FrmSetupTCP::Txt_sendbase_change,
                FrmSetupTCP::state.Txt_sendbase));
    add(add_box("Txt_regnumber", "number max.123", FrmSetupTCP::Txt_regnumber_change,
                FrmSetupTCP::state.Txt_regnumber));
    commands->addStretch();
    add_button("Cmd_read_R", "Read registers", FrmSetupTCP::Cmd_read_R_click, *commands);
    add_button("Cmd_write_R", "Write Registers", FrmSetupTCP::Cmd_write_R_click, *commands);
    registers_ = new register_boxes(IP_Test_Frame);
    auto* const area = new QScrollArea(IP_Test_Frame); // a large font leaves the registers no room
    area->setObjectName("register_area");
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setWidgetResizable(true);
    area->setWidget(registers_);
    registers_->setAutoFillBackground(false); // the frame's ground goes through
    area->viewport()->setAutoFillBackground(false);
    area->setMinimumWidth(registers_->minimumSizeHint().width() +
                          area->verticalScrollBar()->sizeHint().width());
    rows->addWidget(area, 1);
    auto* const Image_TCP = new tcp_picture(this);
    bind(Image_TCP, FrmSetupTCP::state.Image_TCP_visible);
    Image_TCP->setObjectName("Image_TCP");
    Image_TCP->setAccessibleName(tr("The way of the data to the plant controller"));
    place.addWidget(Image_TCP, 1);
}

/// As much of its rows as the screen has room for.
void frmsetuptcp_view::grow() {
    const QSize rows = centralWidget()->sizeHint() + QSize(0, menuBar()->sizeHint().height());
    resize(size().expandedTo(rows).boundedTo(screen_room(*this)));
}

void frmsetuptcp_view::show_window() {
    const Form& form = FrmSetupTCP::state.form;
    const QString caption = qt_text(form.Caption);
    if (windowTitle() != caption) setWindowTitle(caption);
    if (isVisible() != form.Visible) setVisible(form.Visible);
    if (summoned_ == FrmSetupTCP::state.summoned) return;
    summoned_ = FrmSetupTCP::state.summoned;
    setWindowState(windowState() & ~Qt::WindowMinimized);
    raise();
    activateWindow();
}

void frmsetuptcp_view::show_state() {
    if (!FrmSetupTCP::state.form.Visible && !isVisible()) return; // filled when it is opened
    const bool registers_shown = IP_Test_Frame->isVisibleTo(this);
    show_bound();
    registers_->show_state();
    if (!isVisible() || registers_shown != IP_Test_Frame->isVisibleTo(this)) grow();
    show_window();
}

void frmsetuptcp_view::closeEvent(QCloseEvent* event) {
    event->ignore(); // whoever asks: nothing of this system closes the window in this way
    desktop::run_handler(desktop::source::operator_,
                         [] { FrmSetupTCP::query_unload(FrmSetupTCP::close_reason::close_box); });
}

} // namespace tyxo

#include "moc_frmsetuptcp_view.cpp"
