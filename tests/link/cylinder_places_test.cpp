// Where on its curve each cylinder of an engine lies.

#include "link/cylinder_values.h"

#include "link/cylinder_model.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tyxo {
namespace {

using namespace cylinder_testing;
using namespace cylinder_values;

TEST(CylinderPlaces, TheIndexIsRoundedToEven) {
    channel_rec rec = in_line_engine();
    EXPECT_EQ(curve_index(rec, 120), 42) << "42.5";
    EXPECT_EQ(curve_index(rec, 360), 128) << "127.5";
    EXPECT_EQ(curve_index(rec, 720), 255);
    EXPECT_EQ(curve_index(rec, 0), 0);
    for (const i32 type : {2, 0, 3}) {
        rec.enginetype = type;
        EXPECT_EQ(curve_index(rec, 120), 85) << type;
        EXPECT_EQ(curve_index(rec, 360), 255) << type;
    }
}

TEST(CylinderPlaces, ACylinderLiesAtTheSumOfTheFiringAnglesUpToItsPlace) {
    const channel_rec rec = in_line_engine();
    const crank_angles angles = angles_by_cylinder(rec);
    constexpr std::array<i32, 7> by_cylinder{120, 600, 360, 720, 240, 480, 0};
    EXPECT_TRUE(std::equal(by_cylinder.begin(), by_cylinder.end(), angles.begin()));
    const crank_angles places = angles_by_firing_place(rec);
    constexpr std::array<i32, 7> by_place{120, 240, 360, 480, 600, 720, 0};
    EXPECT_TRUE(std::equal(by_place.begin(), by_place.end(), places.begin()));
}

TEST(CylinderPlaces, TheBanksOfAVEngineInterleave) {
    channel_rec rec = banked_engine(6);
    constexpr std::array<i32, 6> order{101, 203, 102, 201, 103, 202}; // bars 1 6 3 2 5 4
    std::copy(order.begin(), order.end(), rec.firingorder.begin());
    rec.firingangle = {10, 20, 30, 40, 50, 60};
    const crank_angles angles = angles_by_cylinder(rec);
    constexpr std::array<i32, 7> expected{10, 100, 60, 210, 150, 30, 0};
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), angles.begin()));
}

TEST(CylinderPlaces, AVEngineWithPlainNumbersIsShiftedByOneCylinder) {
    channel_rec rec = in_line_engine();
    rec.cylconf = 2;
    constexpr std::array<i32, 6> expected{600, 360, 720, 240, 480, 0};
    const crank_angles angles = angles_by_cylinder(rec);
    EXPECT_TRUE(std::equal(expected.begin(), expected.end(), angles.begin()));
}

TEST(CylinderPlaces, TheFirstEntryDecidesWhetherAVEngineHasBanks) {
    channel_rec rec = banked_engine(4);
    rec.firingangle = {10, 20, 30, 40};
    rec.firingorder = {100, 2, 3, 101}; // no banks: each less 1
    EXPECT_EQ(angles_by_cylinder(rec), (crank_angles{30, 60, 0, 0}));
    rec.firingorder = {101, 1, 100, 200}; // banks: the others name nothing
    EXPECT_EQ(angles_by_cylinder(rec), (crank_angles{10, 0, 0, 0}));
    rec.firingorder = {200, 1, 101, 201};
    EXPECT_EQ(angles_by_cylinder(rec), (crank_angles{60, 100, 0, 0}));
}

TEST(CylinderPlaces, OfTwoPlacesOfOneCylinderTheLaterCounts) {
    channel_rec rec = in_line_engine(3);
    rec.firingangle = {10, 20, 30};
    rec.firingorder = {2, 1, 2};
    EXPECT_EQ(angles_by_cylinder(rec), (crank_angles{30, 60, 0}));
}

TEST(CylinderPlaces, AnUnknownArrangementLeavesAllCylindersAt0) {
    channel_rec rec = in_line_engine();
    for (const i32 arrangement : {0, 1, 3, 5}) {
        rec.cylconf = arrangement;
        EXPECT_EQ(angles_by_cylinder(rec), crank_angles{}) << arrangement;
        EXPECT_EQ(angles_by_firing_place(rec)[5], 720) << "the firing order needs no arrangement";
    }
}

TEST(CylinderPlaces, MoreThan24CylindersAreASubscriptFailure) {
    for (const i32 arrangement : {2, 4, 0}) {
        channel_rec rec = in_line_engine(24);
        rec.cylconf = arrangement;
        EXPECT_NO_THROW((void)angles_by_cylinder(rec));
        rec.numzyl = 25;
        EXPECT_THROW((void)angles_by_cylinder(rec), failure) << arrangement;
        EXPECT_THROW((void)angles_by_firing_place(rec), failure) << arrangement;
    }
}

} // namespace
} // namespace tyxo
