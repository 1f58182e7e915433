#include "logging/log_header.h"

#include "basics/failure.h"
#include "basics/number_text.h"
#include "displays/chart.h"
#include "link/channel_rec.h"
#include "link/engine_texts.h"
#include "logging/log_columns.h"
#include "platform/clock.h"
#include "settings/settings.h"

namespace tyxo::log {

namespace {

/// Composes the header's lines of one channel.
class header_writer {
  public:
    explicit header_writer(i16 channel) : rec_(sensor::channel_at(channel)), chart_(charts.chart[channel]) {}

    /// As far as it could be composed.
    [[nodiscard]] const std::string& composed() const { return text_; }

    /// Failure: a subscript outside the firing tables.
    void compose() {
        info();
        chart_settings();
        engine_and_evaluator();
        firing_list("FIRINGORDER", rec_.firingorder, append_cylinder);
        firing_list("FIRINGANGLE", rec_.firingangle, append_angle);
        line("    </PARAMETER>");
        entry_types();
        structure();
        line("</HEADER>");
        line("<LOG>");
    }

  private:
    using text = std::string_view;

    void line(std::string_view content) { text_.append(content).append("\r\n"); }

    /// Chart settings stand close to their tags, everything behind them between blanks.
    void close_entry(text tag, const std::string& value) { entry(tag, value, ""); }
    void entry(text tag, const std::string& value, text gap = " ") {
        std::string content = "        <";
        content.append(tag).append(">").append(gap).append(value).append(gap).append("</").append(tag).append(
            ">");
        line(content);
    }
    void entry(text tag, i32 value) { entry(tag, plain(value)); }
    void close_entry(text tag, i32 value) { close_entry(tag, plain(value)); }

    void info() {
        const local_time now = local_now();
        line("<?xml version=\"1.0\"?>");
        line("<!DOCTYPE LOG >");
        line("<HEADER>");
        line("    <INFO>");
        line("        <VERSION> MTyxo " + std::string(version) + "  " + std::string(version_date) +
             " </VERSION> ");
        line("        <LOGNAME> " + rec_.logname + " </LOGNAME> ");
        entry("LOGDATE", date_digits(now));
        if (settings.log_mode == 1) entry("LOGHOUR", padded(now.hour, 2));
        line("    </INFO>");
    }

    void chart_settings() {
        line("    <PARAMETER>");
        close_entry("AXISGRIDCOLOR", chart_.AxisGridColor);
        close_entry("LEGENDFONTCOLOR", chart_.LegendFontColor);
        close_entry("XAXISLABELFONTCOLOR", chart_.XAxisLabelFontColor);
        close_entry("YAXISLABELFONTCOLOR", chart_.YAxisLabelFontColor);
        close_entry("TITLEFONTCOLOR", chart_.TitleFontColor);
        close_entry("XAXISTICKCOLOR", chart_.XAxisTickMajorColor);
        close_entry("XAXISDATETIMEFORMAT", chart_.XAxisDateTimeFormatString);
        close_entry("BACKGROUNDCOLOR", chart_.BackGroundColor);
        close_entry("GRIDBACKGROUNDCOLOR", chart_.GridBackGroundColor);
        close_entry("GRIDLINESTYLE", chart_.GridLineStyle);
        close_entry("XAXISMIN", signed_form(chart_.XAxisMin));
        close_entry("XAXISSPAN", signed_form(chart_.XAxisSpan));
        close_entry("XAXISTICKS", chart_.XAxisTickMajorCount);
        close_entry("YAXISMIN", signed_form(chart_.YAxisMin));
        close_entry("YAXISSPAN", signed_form(chart_.YAxisMax - chart_.YAxisMin));
        close_entry("YAXISTICKS", chart_.YAxisTickMajorCount);
    }

    void engine_and_evaluator() {
        entry("TYPECODE", rec_.typecode);
        entry("ENGINETYPE", rec_.enginetype);
        entry("CYLCONF", rec_.cylconf);
        entry("NUMZYL", rec_.numzyl);
        entry("TSTTIME", rec_.tst_valid ? plain(rec_.tsttime) : "NA");
        entry("TSTLEN", rec_.tst_valid ? plain(rec_.tstlen) : "NA");
        entry("FWVERS", rec_.ext1_valid ? rec_.fwvers_ext : rec_.fwvers);
        if (rec_.ext1_valid) {
            entry("IALARMLEVEL1", rec_.ialarmlevel1);
            entry("IALARMLEVEL2", rec_.ialarmlevel2);
            entry("IALMRPM", rec_.ialmrpm);
        }
        if (rec_.ext2_valid) {
            entry("IMPOFFSET", rec_.impoffset);
            entry("IALARMDELAY", rec_.ialarmdelay);
            entry("IALARMLEN", rec_.ialarmlen);
            entry("IALARMLEVEL", rec_.ialarmlevel);
        }
        if (rec_.dcpercent_valid) entry("DCALARMPERCENT", rec_.dcalarmpercent);
        if (rec_.theff_alm != unknown::theff) entry("THEFF_ALM", rec_.theff_alm);
        if (rec_.theff_cnt != unknown::theff) entry("THEFF_CNT", rec_.theff_cnt);
        if (rec_.alminhibit_time != unknown::alminhibit_time) entry("ALMINHIBIT_TIME", rec_.alminhibit_time);
        entry("EVASNR", rec_.evasnr);
        entry("ALARMLEVEL", rec_.alarmlevel);
        entry("PREALARMLEVEL", rec_.prealarmlevel);
        entry("OVERSPEED", rec_.overspeed);
        entry("RATEDSPEED", rec_.ratedspeed);
    }

    static void append_cylinder(std::string& list, i32 value) {
        const auto cylinder = bank_and_cylinder(value);
        // Looks like a mistake and stays: 100 and 200 have no entry at all, so that the list is shorter
        // (LogHeader.CylindersOneHundredAndTwoHundredHaveNoEntryInTheGoldenFile).
        if (cylinder) list += ' ' + *cylinder;
    }

    static void append_angle(std::string& list, i32 value) {
        list += ' ';
        append_plain(list, value);
    }

    void firing_list(text tag, const std::array<i32, cylinder_max>& table,
                     void (*append)(std::string&, i32)) {
        std::string content;
        for (i32 cylinder = 0; cylinder < rec_.numzyl; ++cylinder)
            append(content, at(table, cylinder));
        line("        <" + std::string(tag) + ">" + content + " </" + std::string(tag) + ">");
    }

    void entry_type(const log_column& column) {
        const std::string unit = text_of(column.unit, rec_);
        const std::string scale = text_of(column.scale, rec_);
        const auto nested = [this](text tag, text value) {
            line("            <" + std::string(tag) + ">" + std::string(value) + "</" + std::string(tag) +
                 ">");
        };
        line("        <" + std::string(column.type) + ">");
        nested("NAME", column.name);
        nested("UNIT", unit);
        if (!scale.empty()) nested("SCALE", scale);
        if (!column.color.empty()) nested("COLOR", column.color);
        line("        </" + std::string(column.type) + ">");
    }

    void entry_types() {
        line("    <ENTRYTYPES>");
        for (const log_column& column : log_columns())
            entry_type(column);
        line("    </ENTRYTYPES>");
    }

    void structure() {
        line("    <STRUCTURE>");
        for (const log_record_kind& kind : log_record_kinds()) {
            std::string row = "        <";
            row.append(kind.tag).append("><").append(kind.form).append("> ");
            append_types(row, kind);
            line(row.append("</").append(kind.form).append("></").append(kind.tag).append(">"));
        }
        line("    </STRUCTURE>");
    }

    const channel_rec& rec_;
    const iStripChartX& chart_;
    std::string text_;
};

} // namespace

std::string log_header(i16 channel) {
    header_writer writer(channel);
    attempt([&writer] { writer.compose(); });
    return writer.composed();
}

} // namespace tyxo::log
