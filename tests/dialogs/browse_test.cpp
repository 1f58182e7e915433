// The folder browser without its picture.

#include "dialogs/frmbrowse.h"

#include "platform/simulation.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace tyxo {
namespace {

class Browse : public testing::Test {
  protected:
    void SetUp() override { simulation::fresh_world(); }

    int chosen = 0;
    void open() {
        frmbrowse::browse([this] { ++chosen; });
    }
};

TEST_F(Browse, BearsItsCaptionAndIsShownUntilAFolderIsChosen) {
    EXPECT_EQ(frmbrowse::state.form.Caption, "Pathselect");
    EXPECT_FALSE(frmbrowse::state.form.Visible);
    open();
    EXPECT_TRUE(frmbrowse::state.form.Visible);
    EXPECT_TRUE(frmbrowse::state.form.Loaded);
    EXPECT_EQ(chosen, 0);
    frmbrowse::Ok_click("/var/log");
    EXPECT_FALSE(frmbrowse::state.form.Visible);
    EXPECT_FALSE(frmbrowse::state.form.Loaded);
    EXPECT_EQ(chosen, 1);
}

TEST_F(Browse, GivesThePathWithExactlyOneClosingSeparator) {
    struct path_row {
        std::string_view path;
        std::string_view result;
    };
    for (const path_row& row : {path_row{"/var/log", "/var/log/"},
                                {"/var/log/", "/var/log/"},
                                {"C:\\logs", "C:\\logs/"},
                                {"C:\\logs\\", "C:\\logs\\"},
                                {"/", "/"},
                                {"M\xFChle", "M\xFChle/"}}) {
        open();
        frmbrowse::Ok_click(row.path);
        EXPECT_EQ(frmbrowse::state.result, row.result);
    }
}

TEST_F(Browse, ClosedInAnotherWayChoosesNothing) {
    open();
    frmbrowse::unload();
    EXPECT_EQ(chosen, 0);
    open();
    frmbrowse::Ok_click("/first");
    open();
    frmbrowse::unload();
    EXPECT_EQ(chosen, 1);
    EXPECT_FALSE(frmbrowse::state.form.Visible);
}

TEST_F(Browse, ItsCallerIsToldOnceWithTheResultInPlaceAndTheWindowClosed) {
    std::string seen;
    frmbrowse::browse([&] { seen = frmbrowse::state.form.Visible ? "still open" : frmbrowse::state.result; });
    frmbrowse::Ok_click("/first");
    EXPECT_EQ(seen, "/first/");
    seen = "not again";
    frmbrowse::unload();
    EXPECT_EQ(seen, "not again");
}

TEST_F(Browse, ItsCallerMayBrowseAgainAtOnce) {
    frmbrowse::browse([this] { open(); });
    frmbrowse::Ok_click("/first");
    EXPECT_TRUE(frmbrowse::state.form.Visible);
    frmbrowse::Ok_click("/second");
    EXPECT_EQ(chosen, 1);
    EXPECT_EQ(frmbrowse::state.result, "/second/");
    EXPECT_FALSE(frmbrowse::state.form.Visible);
}

TEST_F(Browse, ALateClickBehindTheClosingChoosesNothing) {
    open();
    frmbrowse::unload();
    frmbrowse::Ok_click("/var/log");
    EXPECT_EQ(chosen, 0);
    EXPECT_FALSE(frmbrowse::state.form.Visible);
}

} // namespace
} // namespace tyxo
