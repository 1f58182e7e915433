#include "logging/log_columns.h"

#include "basics/number.h"
#include "basics/number_text.h"

#include <array>

namespace tyxo::log {

namespace {

constexpr auto kinds = std::to_array<log_record_kind>({
    {1, "REC1", "LINEAR", ""},
    {3, "REC2", "POLAR", " "},
    {4, "REC3", "POLAR", " "},
});

using rec = channel_rec;

const auto columns = std::to_array<log_column>({
    {"T1", 0, record_time{}, "Time", "HH:MM:SS", "", ""},
    {"T2", 1, &rec::tsignal, "Tsignal", "  % alarm", "1", "255"},
    {"T3", 1, &rec::speed, "Speed", &rec::speed_unit, &rec::speed_scale, "16711680"},
    {"T4", 3, &rec::thermo_data, "Angular Signal", "", &sensor::state.scale_polar_t, "255"},
    {"T5", 4, &rec::angacc_data, "Angular Acceleration", "", &sensor::state.scale_polar_a, "16711680"},
    {"T6", 1, &rec::tvoltage, "Tvoltage", "  mV x50", ".5", "65280"},
    {"T7", 1, &rec::teff_dc, "Teff DC", "  %alarm", "1", "16711935"},
    {"T8", 1, &rec::teff_ac, "Teff AC", "  %alarm", "1", "16777215"},
});

bool has(const log_record_kind& kind, const log_column& column) {
    return column.frame == 0 || column.frame == kind.frame;
}

/// Appends one column's values.
class value_writer {
  public:
    value_writer(std::string& text, const channel_rec& record, std::string_view time)
        : text_(text), rec_(record), time_(time) {}

    void operator()(record_time /*value*/) { text_.append(time_).append(" "); }
    void operator()(i32 channel_rec::*value) { number(rec_.*value); }
    void operator()(double channel_rec::*value) { number(round_even<i32>(rec_.*value)); }
    void operator()(curve_samples_of value) {
        for (std::size_t sample = 0; sample < curve_samples; ++sample)
            number((rec_.*value)[sample]);
    }

  private:
    void number(i32 value) {
        append_plain(text_, value);
        text_ += ' ';
    }

    std::string& text_;
    const channel_rec& rec_;
    std::string_view time_;
};

/// Composes one text of the header.
class text_reader {
  public:
    explicit text_reader(const channel_rec& record) : rec_(record) {}

    std::string operator()(std::string_view text) const { return std::string(text); }
    std::string operator()(std::string channel_rec::*text) const { return rec_.*text; }
    std::string operator()(double channel_rec::*number) const { return signed_form(rec_.*number); }
    std::string operator()(const double* number) const { return signed_form(*number); }

  private:
    const channel_rec& rec_;
};

} // namespace

std::span<const log_column> log_columns() {
    return columns;
}

std::span<const log_record_kind> log_record_kinds() {
    return kinds;
}

std::string text_of(const column_text& text, const channel_rec& record) {
    return std::visit(text_reader(record), text);
}

void append_types(std::string& text, const log_record_kind& kind) {
    for (const log_column& column : columns) {
        if (!has(kind, column)) continue;
        const bool curve = std::holds_alternative<curve_samples_of>(column.value);
        for (i32 sample = 0; sample < (curve ? curve_samples : 1); ++sample)
            text.append(column.type).append(" ");
    }
}

void append_values(std::string& text, const log_record_kind& kind, const channel_rec& record,
                   std::string_view time) {
    for (const log_column& column : columns)
        if (has(kind, column)) std::visit(value_writer(text, record, time), column.value);
}

} // namespace tyxo::log
