#include "platform/desktop/x_screen.h"

#include <cstdlib>
#include <xcb/dpms.h>
#include <xcb/screensaver.h>
#include <xcb/xcb.h>

namespace tyxo::desktop {

namespace {

bool present(xcb_connection_t* server, xcb_extension_t* extension) {
    const xcb_query_extension_reply_t* const reply = xcb_get_extension_data(server, extension);
    return reply != nullptr && reply->present != 0;
}

} // namespace

x_screen::x_screen() : server_(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(server_) != 0) return;
    has_saver_ = present(server_, &xcb_screensaver_id);
    has_power_saving_ = present(server_, &xcb_dpms_id);
    if (has_saver_) xcb_screensaver_query_version(server_, 1, 1); // the version that can be suspended
    send();
}

x_screen::~x_screen() {
    xcb_disconnect(server_);
}

void x_screen::suspend_saver(bool on) {
    if (has_saver_) xcb_screensaver_suspend(server_, on ? 1 : 0);
    send();
}

void x_screen::wake() {
    xcb_force_screen_saver(server_, XCB_SCREEN_SAVER_RESET);
    // An error where power saving is off, and nothing to wake then.
    if (has_power_saving_) xcb_dpms_force_level(server_, XCB_DPMS_DPMS_MODE_ON);
    send();
}

/// Hands the requests over. Errors that the server sends back are of no use, and would gather.
void x_screen::send() {
    xcb_flush(server_);
    while (xcb_generic_event_t* const answer = xcb_poll_for_event(server_))
        std::free(answer);
}

} // namespace tyxo::desktop
