#pragma once
// The columns of a log: one table for the header that describes them and for the records that fill them.

#include "link/channel_rec.h"

#include <array>
#include <span>
#include <string>
#include <string_view>
#include <variant>

namespace tyxo::log {

/// A text of the header: as it stands here, out of the record, or a number in signed form.
using column_text =
    std::variant<std::string_view, std::string channel_rec::*, double channel_rec::*, const double*>;

/// Stands for the time of the record, which is the first value of each.
struct record_time {};

/// All samples of a curve: as many values of one type.
using curve_samples_of = std::array<i32, curve_samples + 1> channel_rec::*;

/// What a record writes; a number with a fraction is rounded to even.
using column_value = std::variant<record_time, i32 channel_rec::*, double channel_rec::*, curve_samples_of>;

struct log_column {
    std::string_view type; ///< its name in the header's structure
    i32 frame;             ///< of the record that has it; 0: all of them
    column_value value;
    std::string_view name;
    column_text unit;
    column_text scale;      ///< the header tells none that is empty
    std::string_view color; ///< likewise
};

struct log_record_kind {
    i32 frame; ///< number of the frame that it records
    std::string_view tag;
    std::string_view form;
    std::string_view gap; ///< between the blank behind the last value and the closing tag
};

/// In the order of the header's entries and of the values in a record.
[[nodiscard]] std::span<const log_column> log_columns();

[[nodiscard]] std::span<const log_record_kind> log_record_kinds();

/// Failure: an infinity or NaN.
[[nodiscard]] std::string text_of(const column_text& text, const channel_rec& record);

/// The types of a record's values, a blank behind each.
void append_types(std::string& text, const log_record_kind& kind);

/// The values themselves, likewise. Failure: a number that does not fit; the text has a part of them then.
void append_values(std::string& text, const log_record_kind& kind, const channel_rec& record,
                   std::string_view time);

} // namespace tyxo::log
