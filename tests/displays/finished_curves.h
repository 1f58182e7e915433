#pragma once
// Finished curves of three measuring channels, of either kind.

#include "displays/panel.h"
#include "displays/xy_plot.h"
#include "link/calls.h"
#include "link/frame_dispatch.h"
#include "logging/logging_machine.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <functional>

namespace tyxo::curve_testing {

using namespace simulation;

/// What tells the two kinds of curve apart.
struct curve_kind {
    const char* name;
    void (*process)(i16 channel);
    std::array<i32, curve_samples + 1> channel_rec::*data;
    std::size_t plot_curve;
    double* scale;
    double* other_scale;
    sensor::curve* detail;
    sensor::curve* other_detail;
    i16* bar_channel;
    i16* other_bar_channel;
    std::array<sensor::curve, 7>* mb;
    std::array<sensor::curve, 7>* other_mb;
    std::function<void(i16)> link_calls::*calc;
    const char* code;
    std::string_view record;
    per_channel<i16>* block_last;
};

inline const curve_kind thermo_kind{"thermo",
                                    process_thermo,
                                    &channel_rec::thermo_data,
                                    1,
                                    &sensor::state.scale_polar_t,
                                    &sensor::state.scale_polar_a,
                                    &sensor::state.detail_thermo,
                                    &sensor::state.detail_angacc,
                                    &sensor::state.bar_channel_thermo,
                                    &sensor::state.bar_channel_angacc,
                                    &sensor::state.mb_thermo,
                                    &sensor::state.mb_angacc,
                                    &link_calls::calc_thermo_cyl,
                                    ":03",
                                    "<REC2>",
                                    &sensor::state.thermo_block_last};
inline const curve_kind angacc_kind{"angacc",
                                    process_angacc,
                                    &channel_rec::angacc_data,
                                    2,
                                    &sensor::state.scale_polar_a,
                                    &sensor::state.scale_polar_t,
                                    &sensor::state.detail_angacc,
                                    &sensor::state.detail_thermo,
                                    &sensor::state.bar_channel_angacc,
                                    &sensor::state.bar_channel_thermo,
                                    &sensor::state.mb_angacc,
                                    &sensor::state.mb_thermo,
                                    &link_calls::calc_angacc_cyl,
                                    ":04",
                                    "<REC3>",
                                    &sensor::state.angacc_block_last};

/// An engine that all consumers of a curve can work with.
inline parameter_values plant_engine() {
    parameter_values values;
    values.alarmlevel = 3;
    values.firingangle = {120, 120, 120, 120, 120, 120};
    return values;
}

class curve_test : public testing::TestWithParam<curve_kind> {
  protected:
    void SetUp() override {
        start_on(logging_settings(3));
        for (i16 channel = 0; channel < 3; ++channel)
            start_logging(channel, plant_engine());
        kind_ = &GetParam();
        *kind().scale = 0.5;
        *kind().other_scale = 7;
        calls.calc_thermo_cyl = [this](i16 channel) { record_call("thermo", channel); };
        calls.calc_angacc_cyl = [this](i16 channel) { record_call("angacc", channel); };
        world().debug.clear();
    }

    void record_call(const std::string& name, i16 channel) {
        calculated.push_back(name + ' ' + std::to_string(channel));
        if (during_calc) during_calc();
    }
    [[nodiscard]] const curve_kind& kind() const { return *kind_; }
    [[nodiscard]] auto& data(i16 channel = 0) const { return sensor::state.channels[channel].*kind().data; }
    [[nodiscard]] plot_curve& drawn(i16 channel = 0) const {
        return panels.XYplot[channel].curves[kind().plot_curve];
    }
    /// A wave around `mean`, other for each channel.
    void fill(i16 channel = 0, i32 mean = 600) const {
        for (i32 index = 0; index < curve_samples; ++index)
            at(data(channel), index) = mean + (index * 7 + channel) % 41 - 20;
    }
    [[nodiscard]] sensor::curve samples(i16 channel = 0) const {
        sensor::curve result{};
        std::copy_n(data(channel).begin(), curve_samples, result.begin());
        return result;
    }
    void process(i16 channel = 0) const { kind().process(channel); }
    void feed_curve(i16 channel, i32 first) const {
        for (i32 block = 1; block <= 4; ++block)
            feed(channel, curve_body(kind().code, block, first));
    }
    [[nodiscard]] std::ptrdiff_t records(i16 channel = 0) const {
        const auto lines = logged(channel);
        return std::ranges::count_if(
            lines, [this](const std::string& line) { return line.starts_with(kind().record); });
    }

    text_lines calculated;
    std::function<void()> during_calc;

  private:
    const curve_kind* kind_ = nullptr;
};

} // namespace tyxo::curve_testing
