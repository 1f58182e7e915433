#include "gateway/frmsetuptcp.h"

#include "basics/failure.h"
#include "basics/number_text.h"
#include "gateway/connection.h"
#include "link/main_timers.h"
#include "platform/message_box.h"
#include "settings/ini.h"
#include "settings/settings.h"

namespace tyxo::FrmSetupTCP {

namespace {

constexpr std::string_view manual_caption = "TCP IP manual transmission to holding registers";
constexpr std::string_view automatic_caption = "TCP IP FC16 transmission to holding registers";

/// By hand only while no block is sent automatically; the boxes then show the automatic frames.
void apply_frame_rule() {
    const bool automatic = settings.IPenaTRS == 1 || settings.IPpolar == 1 || settings.IPsysstat == 1;
    state.IP_Test_Frame.Enabled = !automatic;
    state.IP_Test_Frame.Caption = automatic ? automatic_caption : manual_caption;
}

void apply_view_rule() {
    const bool registers = settings.REGView == 1;
    state.Reg_content = registers;
    state.IP_Test_Frame.Visible = registers;
    state.Image_TCP_visible = !registers;
}

/// The menu item of every `IPRefresh`.
constexpr std::array<bool window::*, send_intervals.size()> refresh_items{&window::slow, &window::medium,
                                                                          &window::fast};

void check_item(u8 refresh) {
    for (std::size_t item = 0; item < refresh_items.size(); ++item)
        state.*refresh_items[item] = item == refresh;
}

void choose_refresh(u8 refresh) {
    if (state.*at(refresh_items, refresh)) return;
    check_item(refresh);
    settings.IPRefresh = refresh;
    Ini::ini_write("IPRefresh", signed_form(refresh));
    mainfrm::timers.Timer_TCP.Interval(at(send_intervals, refresh));
}

void fill() {
    window& form = state;
    if (settings.REGNumber == 0) settings.REGNumber = 123;
    form.Txt_IPadr = settings.IPAdr;
    form.Txt_IPport = plain(settings.IPport);
    form.Txt_regbase = plain(settings.REGBase);
    form.Txt_regnumber = plain(settings.REGNumber);
    form.Txt_sendbase = plain(settings.Sendbase);
    form.Check1 = settings.IPAutoC == 1 ? 1 : 0;
    form.Check2 = settings.IPenaTRS == 1 ? 1 : 0;
    form.Check3 = settings.IPpolar == 1 ? 1 : 0;
    form.Check4 = settings.IPsysstat == 1 ? 1 : 0;
    apply_frame_rule();
    apply_view_rule();
    if (settings.IPRefresh < refresh_items.size()) check_item(settings.IPRefresh);
}

template <class Setting> void click(i16& box, Setting& setting) {
    box = box == 1 ? 0 : 1;
    setting = box == 1 ? 1 : 0;
}

struct unload_row {
    close_reason reason;
    std::string_view message;
    bool refused;
};

constexpr std::array<unload_row, 6> unload_rows{{
    {close_reason::close_box,
     "User tries to close the form via the \"X\" ! Please use 'close' button below !", true},
    {close_reason::code, "The Unload statement is invoked from code.", false},
    {close_reason::system_shutdown, "The current Microsoft Windows operating environment session is ending.",
     false},
    {close_reason::task_manager, "The Microsoft Windows Task Manager is closing the application.", false},
    {close_reason::mdi_parent, "An MDI child form is closing because the MDI form is closing.", false},
    {close_reason::owner, "A form is closing because its owner is closing.", false},
}};

} // namespace

void load() {
    if (state.form.Loaded) return;
    state.form.Loaded = true;
    fill();
}

void Txt_IPadr_change(std::string_view text) {
    state.Txt_IPadr = text;
}
void Txt_IPport_change(std::string_view text) {
    state.Txt_IPport = text;
}
void Txt_regbase_change(std::string_view text) {
    state.Txt_regbase = text;
}
void Txt_sendbase_change(std::string_view text) {
    state.Txt_sendbase = text;
}
void Txt_regnumber_change(std::string_view text) {
    state.Txt_regnumber = text;
}
void Text4_change(std::size_t index, std::string_view text) {
    if (index >= state.Text4.size()) failures::subscript();
    state.Text4[index] = text;
}

void Check1_click() {
    click(state.Check1, settings.IPAutoC);
    if (settings.IPAutoC == 1) mainfrm::timers.Timer_TCP.Enabled(true);
}
void Check2_click() {
    click(state.Check2, settings.IPenaTRS);
    apply_frame_rule();
}
void Check3_click() {
    click(state.Check3, settings.IPpolar);
    apply_frame_rule();
}
void Check4_click() {
    click(state.Check4, settings.IPsysstat);
    apply_frame_rule();
}

void Reg_content_click() {
    settings.REGView = state.Reg_content ? 0 : 1;
    apply_view_rule();
    Ini::ini_write("REGView", signed_form(settings.REGView));
}

void slow_click() {
    choose_refresh(0);
}
void medium_click() {
    choose_refresh(1);
}
void fast_click() {
    choose_refresh(2);
}

void res_con_click() {
    tcp.tcp_locked = false;
    show_tcp_status("TCP IP connection reset!", status_colour::green);
    TCP_connect(1);
}

void Connect_click() {
    TCP_connect(1);
}

void cmd_discon_click() {
    TCP_disconnect();
    tcp.tcp_locked = false;
}

void Cmd_close_click() {
    state.form.Visible = false;
}

void query_unload(close_reason reason) {
    const unload_row& row = at(unload_rows, static_cast<std::size_t>(reason));
    message_box(row.message, box_icon::none, box_buttons::ok, "");
    if (!row.refused) state.form.Visible = false;
}

} // namespace tyxo::FrmSetupTCP

namespace tyxo {

void mainfrm::setup_tcp_click() {
    FrmSetupTCP::load();
    if (!FrmSetupTCP::state.form.Visible) FrmSetupTCP::fill();
    FrmSetupTCP::state.form.Visible = true;
    ++FrmSetupTCP::state.summoned;
}

} // namespace tyxo
