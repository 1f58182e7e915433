#include "header.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace months::check {

namespace {

/// Stands for any number, where the rules leave it open.
constexpr std::string_view any_number = "*";

class header_writer {
  public:
    std::string text;
    void line(std::string_view content) { text.append(content).append("\r\n"); }
    /// A tag whose value follows without a blank.
    void tight(std::string_view tag, std::string_view value, std::string_view indent = "        ") {
        text.append(indent).append("<").append(tag).append(">").append(value);
        text.append("</").append(tag).append(">\r\n");
    }
    void tag(std::string_view tag, std::string_view value) {
        text.append("        <").append(tag).append("> ").append(value);
        text.append(" </").append(tag).append(">\r\n");
    }
    void tag(std::string_view name, int value) { tag(name, std::to_string(value)); }
};

void write_chart(header_writer& out, const header_facts& facts) {
    constexpr std::string_view grey = "12632256";
    out.tight("AXISGRIDCOLOR", "4210752");
    out.tight("LEGENDFONTCOLOR", "0");
    out.tight("XAXISLABELFONTCOLOR", "0");
    out.tight("YAXISLABELFONTCOLOR", "0");
    out.tight("TITLEFONTCOLOR", "255");
    out.tight("XAXISTICKCOLOR", "0");
    const bool known = facts.chart_is_set_up;
    out.tight("XAXISDATETIMEFORMAT", known ? "d/m hh:nn:ss" : any_number);
    out.tight("BACKGROUNDCOLOR", grey);
    out.tight("GRIDBACKGROUNDCOLOR", grey);
    out.tight("GRIDLINESTYLE", any_number);
    out.tight("XAXISMIN", any_number);
    constexpr double spans[] = {1.0 / 720, 1.0 / 96, 1.0 / 24, 1};
    out.tight("XAXISSPAN", blank_number(spans[std::clamp(facts.plant.resolution, 0, 3)]));
    out.tight("XAXISTICKS", "6");
    out.tight("YAXISMIN", known ? " 0" : any_number);
    out.tight("YAXISSPAN", known ? " 150" : any_number);
    out.tight("YAXISTICKS", "7");
}

void write_evaluator(header_writer& out, const channel_record& r) {
    out.tag("ENGINETYPE", r.enginetype);
    out.tag("CYLCONF", r.cylconf);
    out.tag("NUMZYL", r.numzyl);
    out.tag("TSTTIME", r.tst_valid ? std::to_string(r.tsttime) : "NA");
    out.tag("TSTLEN", r.tst_valid ? std::to_string(r.tstlen) : "NA");
    out.tag("FWVERS", r.ext1_valid ? r.fwvers_ext : r.fwvers);
    if (r.ext1_valid) {
        out.tag("IALARMLEVEL1", r.ialarmlevel1);
        out.tag("IALARMLEVEL2", r.ialarmlevel2);
        out.tag("IALMRPM", r.ialmrpm);
    }
    if (r.ext2_valid) {
        out.tag("IMPOFFSET", r.impoffset);
        out.tag("IALARMDELAY", r.ialarmdelay);
        out.tag("IALARMLEN", r.ialarmlen);
        out.tag("IALARMLEVEL", r.ialarmlevel);
    }
    if (r.dcpercent_valid) out.tag("DCALARMPERCENT", r.dcalarmpercent);
    if (r.theff_alm != 9999) out.tag("THEFF_ALM", r.theff_alm);
    if (r.theff_cnt != 9999) out.tag("THEFF_CNT", r.theff_cnt);
    if (r.alminhibit_time != 99999) out.tag("ALMINHIBIT_TIME", r.alminhibit_time);
    out.tag("EVASNR", r.evasnr);
    out.tag("ALARMLEVEL", r.alarmlevel);
    out.tag("PREALARMLEVEL", r.prealarmlevel);
    out.tag("OVERSPEED", r.overspeed);
    out.tag("RATEDSPEED", r.ratedspeed);
}

/// False when the lists end the header.
bool write_firing(header_writer& out, const channel_record& r) {
    if (r.numzyl > 24) return false;
    std::string order, angles;
    for (std::size_t i = 0; i < static_cast<std::size_t>(r.numzyl); ++i) {
        const int cylinder = r.firingorder[i];
        if (cylinder > 200) order += " B" + std::to_string(cylinder - 200);
        if (cylinder > 100 && cylinder < 200) order += " A" + std::to_string(cylinder - 100);
        if (cylinder < 100) order += " " + std::to_string(cylinder);
        angles += " " + std::to_string(r.firingangle[i]);
    }
    out.tight("FIRINGORDER", order + " ");
    out.tight("FIRINGANGLE", angles + " ");
    return true;
}

void write_types(header_writer& out, const channel_record& r, const plant_settings& plant) {
    struct type {
        std::string name, unit, scale, colour;
    };
    const type types[] = {{"Time", "HH:MM:SS", "", ""},
                          {"Tsignal", "  % alarm", "1", "255"},
                          {"Speed", r.speed_unit, blank_number(r.speed_scale), "16711680"},
                          {"Angular Signal", "", blank_number(plant.scale_polar_t), "255"},
                          {"Angular Acceleration", "", blank_number(plant.scale_polar_a), "16711680"},
                          {"Tvoltage", "  mV x50", ".5", "65280"},
                          {"Teff DC", "  %alarm", "1", "16711935"},
                          {"Teff AC", "  %alarm", "1", "16777215"}};
    constexpr std::string_view deep = "            ";
    out.line("    <ENTRYTYPES>");
    int number = 0;
    for (const type& t : types) {
        const std::string tag = "T" + std::to_string(++number);
        out.line("        <" + tag + ">");
        out.tight("NAME", t.name, deep);
        out.tight("UNIT", t.unit, deep);
        if (number > 1) out.tight("SCALE", t.scale, deep);
        if (number > 1) out.tight("COLOR", t.colour, deep);
        out.line("        </" + tag + ">");
    }
    out.line("    </ENTRYTYPES>");
}

void write_columns(header_writer& out) {
    out.line("    <STRUCTURE>");
    out.line("        <REC1><LINEAR> T1 T2 T3 T6 T7 T8 </LINEAR></REC1>");
    for (const auto& [record, column] : {std::pair{"REC2", "T4 "}, std::pair{"REC3", "T5 "}}) {
        std::string columns;
        for (int i = 0; i < 256; ++i)
            columns += column;
        out.line(std::string("        <") + record + "><POLAR> T1 " + columns + "</POLAR></" + record + ">");
    }
    out.line("    </STRUCTURE>");
}

std::string_view take_line(std::string_view& text) {
    const auto end = std::min(text.find('\n'), text.size() - 1) + 1;
    const std::string_view line = text.substr(0, end);
    text.remove_prefix(end);
    return line;
}

/// The part of a line between its first tag and the last one.
std::string_view value_of(std::string_view line) {
    const auto from = line.find('>');
    const auto to = line.rfind("</");
    return from == line.npos || to == line.npos || to <= from ? "" : line.substr(from + 1, to - from - 1);
}

bool same_number(std::string_view a, std::string_view b) {
    const double x = leading_number(a), y = leading_number(b);
    return std::abs(x - y) <= 1e-12 * std::abs(y);
}

bool same_line(std::string_view seen, std::string_view wanted) {
    if (seen == wanted) return true;
    const std::string_view have = value_of(seen), want = value_of(wanted);
    const auto tag = wanted.find('>');
    if (seen.substr(0, tag + 1) != wanted.substr(0, tag + 1) || !seen.ends_with("\r\n")) return false;
    const bool open = want == any_number && !have.empty();
    // The shape of an exponent is nobody's business.
    const auto is_exponent = [](std::string_view number) {
        return number.find('E') != number.npos && number.find_first_not_of(" 0123456789.E+-") == number.npos;
    };
    const bool exponent = is_exponent(want) && is_exponent(have);
    return (open || (exponent && same_number(have, want))) &&
           seen.ends_with(wanted.substr(wanted.rfind("</")));
}

} // namespace

std::string header_text(const channel_record& record, const header_facts& facts) {
    header_writer out;
    out.text.reserve(4600);
    out.line("<?xml version=\"1.0\"?>");
    out.line("<!DOCTYPE LOG >");
    out.line("<HEADER>");
    out.line("    <INFO>");
    out.line("        <VERSION> MTyxo Version 2.10_4  02.07.2026 </VERSION> ");
    out.line("        <LOGNAME> " + std::string(facts.file_name) + " </LOGNAME> ");
    out.tag("LOGDATE", facts.now.digits);
    if (facts.plant.log_mode == 1) out.tag("LOGHOUR", facts.now.hms.substr(0, 2));
    out.line("    </INFO>");
    out.line("    <PARAMETER>");
    write_chart(out, facts);
    out.tag("TYPECODE", facts.channel.typecode);
    write_evaluator(out, record);
    if (!write_firing(out, record)) return out.text;
    out.line("    </PARAMETER>");
    write_types(out, record, facts.plant);
    write_columns(out);
    out.line("</HEADER>");
    out.line("<LOG>");
    return out.text;
}

std::size_t header_length(std::string_view text, std::string_view wanted) {
    if (!text.starts_with("<?xml")) return 0;
    const std::string_view last = "\r\n<LOG>\r\n";
    if (const auto end = text.find(last); end != text.npos) return end + last.size();
    std::size_t length = 0;
    for (auto lines = std::count(wanted.begin(), wanted.end(), '\n'); lines > 0; --lines) {
        const auto end = text.find('\n', length);
        if (end == text.npos) return text.size();
        length = end + 1;
    }
    return length;
}

std::optional<std::string> header_difference(std::string_view seen, std::string_view wanted) {
    int number = 0;
    while (!seen.empty() || !wanted.empty()) {
        ++number;
        const std::string_view is = seen.empty() ? "" : take_line(seen);
        const std::string_view should = wanted.empty() ? "" : take_line(wanted);
        if (same_line(is, should)) continue;
        return "line " + std::to_string(number) + " of the header should be " + shown(should) + ", is " +
               shown(is);
    }
    return std::nullopt;
}

} // namespace months::check
