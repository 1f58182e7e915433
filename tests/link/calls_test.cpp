// What leaves the link where nobody is wired to it.

#include "link/calls.h"
#include "platform/simulation.h"

#include <gtest/gtest.h>

namespace tyxo {
namespace {

TEST(Calls, ThatAreNotWiredDoNothing) {
    simulation::fresh_world();
    const link_calls unwired;
    unwired.createlog(0);
    unwired.log_record(0, "1");
    unwired.log_note(0, "note");
    unwired.log_comment(0, "comment");
    unwired.close_log(0);
    unwired.event_line("event");
    unwired.process_thermo(0);
    unwired.process_angacc(0);
    unwired.clear_curves(0);
    unwired.calc_thermo_cyl(0);
    unwired.calc_angacc_cyl(0);
    unwired.open_alert();
    unwired.show_alert_line(0);
    unwired.alert_text(0, "text");
    EXPECT_TRUE(unwired.stop_lock("channel 1"));
    EXPECT_TRUE(simulation::world().debug.empty());
    EXPECT_TRUE(simulation::world().boxes.empty());
    EXPECT_TRUE(simulation::world().opened.empty());
    EXPECT_TRUE(simulation::world().sounds.empty());
}

} // namespace
} // namespace tyxo
