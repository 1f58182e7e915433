#include "xlg/log_record.h"

#include "basics/ansi.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <optional>

namespace tyxo::xlg {

namespace {

std::optional<i32> number_in(std::string_view text) {
    i32 value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

/// "A3" is 103, "B3" is 203, "3" is 3.
i32 firing_entry(std::string_view text) {
    i32 bank = 0;
    if (text.starts_with('A')) bank = 100;
    if (text.starts_with('B')) bank = 200;
    if (bank != 0) text.remove_prefix(1);
    return bank + number_in(text).value_or(0);
}

i32 plain_entry(std::string_view text) {
    return number_in(text).value_or(0);
}

void read_list(std::string_view list, std::array<i32, cylinder_max>& into, i32 (*entry)(std::string_view)) {
    std::size_t place = 0;
    while (!list.empty() && place < into.size()) {
        const std::size_t blank = std::min(list.find(' '), list.size());
        if (blank > 0) into[place++] = entry(list.substr(0, blank));
        list.remove_prefix(std::min(blank + 1, list.size()));
    }
}

class header_reader {
  public:
    explicit header_reader(const header_lines& header) : header_(header) {}

    void read(channel_rec& rec) const {
        rec.typecode = header_.value("TYPECODE");
        take("ENGINETYPE", rec.enginetype);
        take("CYLCONF", rec.cylconf);
        take("NUMZYL", rec.numzyl);
        rec.tst_valid = take("TSTTIME", rec.tsttime);
        take("TSTLEN", rec.tstlen);
        rec.ext1_valid = take("IALARMLEVEL1", rec.ialarmlevel1);
        (rec.ext1_valid ? rec.fwvers_ext : rec.fwvers) = header_.value("FWVERS");
        take("IALARMLEVEL2", rec.ialarmlevel2);
        take("IALMRPM", rec.ialmrpm);
        take("IMPOFFSET", rec.impoffset);
        rec.ext2_valid = take("IALARMDELAY", rec.ialarmdelay);
        take("IALARMLEN", rec.ialarmlen);
        take("IALARMLEVEL", rec.ialarmlevel);
        rec.dcpercent_valid = take("DCALARMPERCENT", rec.dcalarmpercent);
        if (!take("THEFF_ALM", rec.theff_alm)) rec.theff_alm = unknown::theff;
        if (!take("THEFF_CNT", rec.theff_cnt)) rec.theff_cnt = unknown::theff;
        if (!take("ALMINHIBIT_TIME", rec.alminhibit_time)) rec.alminhibit_time = unknown::alminhibit_time;
        rec.evasnr = header_.value("EVASNR");
        take("ALARMLEVEL", rec.alarmlevel);
        take("PREALARMLEVEL", rec.prealarmlevel);
        take("OVERSPEED", rec.overspeed);
        take("RATEDSPEED", rec.ratedspeed);
        read_list(header_.value("FIRINGORDER"), rec.firingorder, firing_entry);
        read_list(header_.value("FIRINGANGLE"), rec.firingangle, plain_entry);
        rec.speed_unit = header_.of("T3", "UNIT");
        const std::string scale = header_.of("T3", "SCALE");
        std::from_chars(scale.data(), scale.data() + scale.size(), rec.speed_scale);
        rec.param_valid = !header_.value("NUMZYL").empty() && !header_.all_zero();
    }

  private:
    bool take(const char* tag, i32& value) const {
        const auto found = number_in(header_.value(tag));
        value = found.value_or(0);
        return found.has_value();
    }

    const header_lines& header_;
};

} // namespace

channel_rec record_of(const header_lines& header, std::string_view location) {
    channel_rec rec;
    rec.location = location;
    header_reader(header).read(rec);
    return rec;
}

std::string location_of(std::string_view path) {
    const auto slash = path.find_last_of("/\\");
    std::string_view name = slash == path.npos ? path : path.substr(slash + 1);
    if (name.ends_with(".xlg")) name.remove_suffix(4);
    if (const auto mark = name.find("Qu_"); mark == 8 || mark == 10) name.remove_prefix(mark + 3);
    return ansi_from_utf8(name);
}

} // namespace tyxo::xlg
