// The tabs of the channels: what each Evaluator reported.

#include "dialogs/setup_world.h"

namespace tyxo {
namespace {

using namespace simulation;

class SetupSensorTab : public setup_world {
  protected:
    void SetUp() override { start(2); }

    static const sensor_tab& tab_of(const channel_rec& rec) {
        sensor::state.channels[1] = rec;
        mainfrm::setup_click();
        return dialog().sensors[1];
    }
};

/// A record whose Evaluator reports everything, each value another one.
channel_rec full_record() {
    channel_rec rec;
    rec.fwvers = "V2.07";
    rec.fwvers_ext = "V3.10-0042";
    rec.evasnr = "SN004711";
    rec.numzyl = 6;
    rec.ratedspeed = 1500;
    rec.overspeed = 1650;
    rec.alarmlevel = 320;
    rec.prealarmlevel = 75;
    rec.impoffset = 17;
    rec.ialarmlevel1 = 110;
    rec.ialarmlevel2 = 130;
    rec.ialmrpm = 800;
    rec.ialarmdelay = 3;
    rec.ialarmlen = 5;
    rec.ialarmlevel = 90;
    rec.theff_alm = 12;
    rec.theff_cnt = 64;
    rec.alminhibit_time = 300;
    rec.dcalarmpercent = 85;
    rec.ext1_valid = rec.ext2_valid = rec.dcpercent_valid = true;
    return rec;
}

struct field_row {
    std::string_view name;
    std::string sensor_tab::*text;
    std::string_view expected;
};

const std::vector<field_row> always_reported{
    {"Txt_eva_snr", &sensor_tab::Txt_eva_snr, "SN004711"},
    {"txt_num_cyl", &sensor_tab::txt_num_cyl, "6"},
    {"txt_nendehzahl", &sensor_tab::txt_nendehzahl, "1500"},
    {"txt_overspeed", &sensor_tab::txt_overspeed, "1650"},
    {"txt_alarmlevel", &sensor_tab::txt_alarmlevel, "320"},
    {"txt_prealarmlevel", &sensor_tab::txt_prealarmlevel, "75"},
    {"txt_impoffset", &sensor_tab::txt_impoffset, "17"},
};

/// Fields with a value that not every firmware reports.
struct optional_group {
    std::string_view name;
    void (*not_reported)(channel_rec& rec);
    std::vector<field_row> fields;
};

const std::vector<optional_group> groups{
    {"ext1_valid",
     [](channel_rec& rec) { rec.ext1_valid = false; },
     {{"Txt_ialmlevel1", &sensor_tab::Txt_ialmlevel1, "110"},
      {"Txt_ialmlevel2", &sensor_tab::Txt_ialmlevel2, "130"},
      {"txt_ialmrpm", &sensor_tab::txt_ialmrpm, "800"}}},
    {"ext2_valid",
     [](channel_rec& rec) { rec.ext2_valid = false; },
     {{"txt_aimp_del", &sensor_tab::txt_aimp_del, "3"},
      {"txt_aimp_len", &sensor_tab::txt_aimp_len, "5"},
      {"txt_aimp_level", &sensor_tab::txt_aimp_level, "90"}}},
    {"theff_alm",
     [](channel_rec& rec) { rec.theff_alm = 9999; },
     {{"Txt_theff_alm", &sensor_tab::Txt_theff_alm, "12"}}},
    {"theff_cnt",
     [](channel_rec& rec) { rec.theff_cnt = 9999; },
     {{"Txt_theff_cnt", &sensor_tab::Txt_theff_cnt, "64"}}},
    {"alminhibit_time",
     [](channel_rec& rec) { rec.alminhibit_time = 99999; },
     {{"txt_alminhibit", &sensor_tab::txt_alminhibit, "300"}}},
    {"dcpercent_valid",
     [](channel_rec& rec) { rec.dcpercent_valid = false; },
     {{"Txt_dc_percent", &sensor_tab::Txt_dc_percent, "85"}}},
};

TEST_F(SetupSensorTab, ShowsEveryFieldThatTheEvaluatorReported) {
    const sensor_tab& tab = tab_of(full_record());
    for (const field_row& field : always_reported)
        EXPECT_EQ(tab.*field.text, field.expected) << field.name;
    for (const optional_group& group : groups) {
        for (const field_row& field : group.fields)
            EXPECT_EQ(tab.*field.text, field.expected) << field.name;
    }
}

TEST_F(SetupSensorTab, NaStandsInTheFieldsThatTheFirmwareDoesNotReportAndInNoOthers) {
    for (const optional_group& missing : groups) {
        channel_rec rec = full_record();
        missing.not_reported(rec);
        const sensor_tab& tab = tab_of(rec);
        for (const field_row& field : always_reported)
            EXPECT_EQ(tab.*field.text, field.expected) << field.name;
        for (const optional_group& group : groups) {
            for (const field_row& field : group.fields)
                EXPECT_EQ(tab.*field.text, &group == &missing ? "NA" : field.expected)
                    << field.name << " without " << missing.name;
        }
    }
    EXPECT_TRUE(world().boxes.empty());
    EXPECT_TRUE(world().debug.empty());
}

TEST_F(SetupSensorTab, AValueBesideTheOneForUnknownIsShown) {
    channel_rec rec = full_record();
    rec.theff_alm = 9998;
    rec.theff_cnt = 10000;
    rec.alminhibit_time = 9999;
    const sensor_tab& tab = tab_of(rec);
    EXPECT_EQ(tab.Txt_theff_alm, "9998");
    EXPECT_EQ(tab.Txt_theff_cnt, "10000");
    EXPECT_EQ(tab.txt_alminhibit, "9999");
}

TEST_F(SetupSensorTab, TheVersionIsTheLongOneWhenTheEvaluatorSentIt) {
    channel_rec rec = full_record();
    EXPECT_EQ(tab_of(rec).txt_Eva_ver, "V3.10-0042");
    rec.ext1_valid = false;
    EXPECT_EQ(tab_of(rec).txt_Eva_ver, "V2.07");
}

TEST_F(SetupSensorTab, NamesStrokesAndArrangement) {
    struct engine_row {
        i32 enginetype;
        i32 cylconf;
        std::string_view type;
        std::string_view arrangement;
    };
    for (const engine_row& row : {engine_row{4, 4, "4 stroke", "in-line"},
                                  {2, 2, "2 stroke", "V-cylinder"},
                                  {4, 2, "4 stroke", "V-cylinder"},
                                  {2, 4, "2 stroke", "in-line"},
                                  {0, 0, "", ""},
                                  {3, 1, "", ""}}) {
        channel_rec rec = full_record();
        rec.enginetype = row.enginetype;
        rec.cylconf = row.cylconf;
        const sensor_tab& tab = tab_of(rec);
        EXPECT_EQ(tab.txt_engine_typ, row.type);
        EXPECT_EQ(tab.txt_engine_anord, row.arrangement);
    }
}

TEST_F(SetupSensorTab, OfAnotherEngineTypeAndOrderEntryARefreshLeavesTheFieldsAsTheyAre) {
    channel_rec rec = full_record();
    rec.enginetype = rec.cylconf = 4;
    rec.firingorder[0] = 103;
    rec.firingorder[1] = 205;
    tab_of(rec);
    sensor::state.channels[1].enginetype = sensor::state.channels[1].cylconf = 9;
    sensor::state.channels[1].firingorder[0] = 100;
    sensor::state.channels[1].firingorder[1] = 200;
    frmSetup::cmd_Refresh_click();
    const sensor_tab& tab = dialog().sensors[1];
    EXPECT_EQ(tab.txt_engine_typ, "4 stroke");
    EXPECT_EQ(tab.txt_engine_anord, "in-line");
    EXPECT_EQ(tab.Text_zundfolge[0], "A3");
    EXPECT_EQ(tab.Text_zundfolge[1], "B5");
}

TEST_F(SetupSensorTab, AFiringOrderEntryShowsItsBankInFront) {
    struct order_row {
        i32 entry;
        std::string_view text;
    };
    const std::vector<order_row> rows{{205, "B5"},  {103, "A3"}, {7, "7"},     {0, "0"},
                                      {99, "99"},   {100, ""},   {101, "A1"},  {200, ""},
                                      {199, "A99"}, {201, "B1"}, {255, "B55"}, {-1, "-1"}};
    channel_rec rec = full_record();
    for (std::size_t place = 0; place < rows.size(); ++place)
        rec.firingorder[place] = rows[place].entry;
    const sensor_tab& tab = tab_of(rec);
    for (std::size_t place = 0; place < rows.size(); ++place)
        EXPECT_EQ(tab.Text_zundfolge[place], rows[place].text) << rows[place].entry;
}

TEST_F(SetupSensorTab, All24EntriesAreFilledAlsoPastTheNumberOfCylinders) {
    channel_rec rec = full_record();
    rec.numzyl = 2;
    for (std::size_t place = 0; place < cylinder_max; ++place) {
        rec.firingorder[place] = static_cast<i32>(24 - place);
        rec.firingangle[place] = static_cast<i32>(30 * place) - 15;
    }
    const sensor_tab& tab = tab_of(rec);
    for (std::size_t place = 0; place < cylinder_max; ++place) {
        EXPECT_EQ(tab.Text_zundfolge[place], std::to_string(24 - place));
        EXPECT_EQ(tab.Text_zuendw[place], std::to_string(static_cast<i32>(30 * place) - 15));
    }
}

TEST_F(SetupSensorTab, EachChannelHasItsOwn) {
    sensor::state.channels[0] = full_record();
    sensor::state.channels[1] = full_record();
    sensor::state.channels[1].numzyl = 16;
    sensor::state.channels[1].evasnr = "inactive";
    mainfrm::setup_click();
    EXPECT_EQ(dialog().sensors[0].txt_num_cyl, "6");
    EXPECT_EQ(dialog().sensors[1].txt_num_cyl, "16");
    EXPECT_EQ(dialog().sensors[1].Txt_eva_snr, "inactive");
    EXPECT_EQ(dialog().sensors[2], sensor_tab{});
}

TEST_F(SetupSensorTab, ShowsWhatTheFramesBrought) {
    start_logging(0);
    feed(0, status_body());
    mainfrm::setup_click();
    const sensor_tab& tab = dialog().sensors[0];
    EXPECT_EQ(tab.txt_Eva_ver, "V3.10-0042");
    EXPECT_EQ(tab.Txt_eva_snr, "SN004711");
    EXPECT_EQ(tab.txt_engine_typ, "4 stroke");
    EXPECT_EQ(tab.txt_engine_anord, "in-line");
    EXPECT_EQ(tab.Txt_dc_percent, "85");
    EXPECT_EQ(tab.Text_zundfolge[1], "5");
    EXPECT_EQ(tab.Text_zuendw[1], "120");
}

TEST_F(SetupSensorTab, OfAnOldFirmwareReadsNaWhereItIsSilent) {
    start_logging(0, {}, parameter_form::shortest);
    feed(0, status_body());
    mainfrm::setup_click();
    const sensor_tab& tab = dialog().sensors[0];
    EXPECT_EQ(tab.txt_Eva_ver, "V2.07");
    EXPECT_EQ(tab.txt_alarmlevel, "320");
    for (const optional_group& group : groups) {
        for (const field_row& field : group.fields)
            EXPECT_EQ(tab.*field.text, "NA") << field.name;
    }
}

} // namespace
} // namespace tyxo
