// When a log begins and ends, and what stands in it.

#include "model.h"

namespace months::check {

std::int64_t checker::model::period() const {
    const wall_time& l = now.local;
    const std::int64_t day = (l.year * 100 + l.month) * 100 + l.day;
    return plant.log_mode == 1 ? day * 100 + l.hour : day * 1'000'000;
}

void checker::model::check_period() {
    if (period() == log_period) return;
    log_period = period();
    for (int index = 0; index < plant.max_sensors; ++index) {
        close_log(index);
        create_log(index);
    }
}

bool checker::model::logs(int index) {
    if (channel[index].log_state != 2) return false;
    check_period();
    return channel[index].log != nullptr;
}

void checker::model::log_comment(int index, std::string_view text) {
    if (!logs(index)) return;
    line.assign("<!-- ").append(now.hms).append(" ").append(text).append(" -->\r\n");
    files.demand(*channel[index].log, line);
}

void checker::model::log_note(int index, std::string_view text) {
    if (!logs(index)) return;
    line.assign("<#-- ").append(now.hms).append(" ").append(text).append(" -->\r\n");
    files.demand(*channel[index].log, line);
}

void checker::model::log_values(int index) {
    if (!logs(index)) return;
    const channel_record& r = channel[index].record;
    line.assign("<REC1> ").append(now.hms);
    for (const int value : {r.tsignal, r.speed, r.tvoltage, r.teff_dc, r.teff_ac}) {
        line += ' ';
        append_number(line, value);
    }
    line += " </REC1>\r\n";
    files.demand(*channel[index].log, line);
}

void checker::model::log_curve(int index, int code) {
    if (!logs(index)) return;
    const channel_record& r = channel[index].record;
    line.assign(code == 3 ? "<REC2> " : "<REC3> ").append(now.hms).append(" ");
    for (const int sample : code == 3 ? r.thermo : r.acceleration) {
        append_number(line, sample);
        line += ' ';
    }
    line += code == 3 ? " </REC2>\r\n" : " </REC3>\r\n";
    files.demand(*channel[index].log, line);
}

std::string checker::model::new_header(int index, std::string_view file_name) const {
    const channel_model& c = channel[index];
    return header_text(c.record, {file_name, plant.channel[index], plant, now, c.chart_is_set_up});
}

void checker::model::create_log(int index) {
    channel_model& c = channel[index];
    const channel_settings& settings = plant.channel[index];
    log_period = period();
    std::string name = now.digits;
    if (plant.log_mode == 1) name += now.hms.substr(0, 2);
    name += "Qu_" + settings.folder_name + ".xlg";
    if (c.log != nullptr) files.closes(*c.log);
    c.log = &files.at(settings.folder_root + settings.folder_name + "/" + name);
    c.log->channel = index;
    ++folders_made;
    files.opens(*c.log, new_header(index, name));
    log_comment(index, "Log Started");
}

void checker::model::close_log(int index) {
    channel_model& c = channel[index];
    log_comment(index, "Measure Stopped");
    if (c.log == nullptr) return;
    files.closes(*c.log);
    c.log = nullptr;
}

} // namespace months::check
