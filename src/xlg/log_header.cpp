#include "xlg/log_header.h"

#include "logging/log_columns.h"
#include "xlg/words.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <utility>

namespace tyxo::xlg {

namespace {

enum class value_form { none, whole, decimal, date, hour, text, list };

/// A line: what stands before and behind its value. Without a value it is `before`.
struct header_row {
    std::string name; ///< of its value
    std::string before;
    std::string behind{};
    value_form form = value_form::none;
    bool optional = false;
};

/// Tags of PARAMETER in their order. Those of the chart have no blanks around their values.
struct tag_row {
    std::string_view tag;
    value_form form;
    bool optional = false;
};

constexpr tag_row chart_tags[] = {
    {"AXISGRIDCOLOR", value_form::whole},       {"LEGENDFONTCOLOR", value_form::whole},
    {"XAXISLABELFONTCOLOR", value_form::whole}, {"YAXISLABELFONTCOLOR", value_form::whole},
    {"TITLEFONTCOLOR", value_form::whole},      {"XAXISTICKCOLOR", value_form::whole},
    {"XAXISDATETIMEFORMAT", value_form::text},  {"BACKGROUNDCOLOR", value_form::whole},
    {"GRIDBACKGROUNDCOLOR", value_form::whole}, {"GRIDLINESTYLE", value_form::whole},
    {"XAXISMIN", value_form::decimal},          {"XAXISSPAN", value_form::decimal},
    {"XAXISTICKS", value_form::whole},          {"YAXISMIN", value_form::decimal},
    {"YAXISSPAN", value_form::decimal},         {"YAXISTICKS", value_form::whole}};

constexpr tag_row engine_tags[] = {{"TYPECODE", value_form::text},
                                   {"ENGINETYPE", value_form::whole},
                                   {"CYLCONF", value_form::whole},
                                   {"NUMZYL", value_form::whole},
                                   {"TSTTIME", value_form::text},
                                   {"TSTLEN", value_form::text},
                                   {"FWVERS", value_form::text},
                                   {"IALARMLEVEL1", value_form::whole, true},
                                   {"IALARMLEVEL2", value_form::whole, true},
                                   {"IALMRPM", value_form::whole, true},
                                   {"IMPOFFSET", value_form::whole, true},
                                   {"IALARMDELAY", value_form::whole, true},
                                   {"IALARMLEN", value_form::whole, true},
                                   {"IALARMLEVEL", value_form::whole, true},
                                   {"DCALARMPERCENT", value_form::whole, true},
                                   {"THEFF_ALM", value_form::whole, true},
                                   {"THEFF_CNT", value_form::whole, true},
                                   {"ALMINHIBIT_TIME", value_form::whole, true},
                                   {"EVASNR", value_form::text},
                                   {"ALARMLEVEL", value_form::whole},
                                   {"PREALARMLEVEL", value_form::whole},
                                   {"OVERSPEED", value_form::whole},
                                   {"RATEDSPEED", value_form::whole}};

/// What a header of an Evaluator that has sent no parameters has as 0.
constexpr const char* never_all_zero[] = {"ENGINETYPE",    "CYLCONF",   "NUMZYL",    "ALARMLEVEL",
                                          "PREALARMLEVEL", "OVERSPEED", "RATEDSPEED"};

class row_maker {
  public:
    std::vector<header_row> rows;

    void fixed(std::string_view text) { rows.push_back({"", std::string(text)}); }
    void value(std::string_view indent, std::string_view tag, std::string_view name, std::string_view gap,
               value_form form, bool optional = false, std::string_view tail = "") {
        header_row row{std::string(name), std::string(indent)};
        row.before.append("<").append(tag).append(">").append(gap);
        row.behind.append(gap).append("</").append(tag).append(">").append(tail);
        row.form = form;
        row.optional = optional;
        rows.push_back(std::move(row));
    }
    void entry(const tag_row& row, std::string_view gap) {
        value("        ", row.tag, row.tag, gap, row.form, row.optional);
    }
    void entry_type(const log::log_column& column) {
        const std::string type(column.type);
        fixed("        <" + type + ">");
        const auto nested = [&](std::string_view tag, value_form form) {
            value("            ", tag, type + "/" + std::string(tag), "", form);
        };
        fixed("            <NAME>" + std::string(column.name) + "</NAME>");
        nested("UNIT", value_form::text);
        const auto* const literal = std::get_if<std::string_view>(&column.scale);
        if (literal == nullptr || !literal->empty()) nested("SCALE", value_form::decimal);
        if (!column.color.empty()) nested("COLOR", value_form::whole);
        fixed("        </" + type + ">");
    }
};

std::vector<header_row> make_rows() {
    row_maker make;
    const std::string_view indent = "        ";
    make.fixed(header_begin);
    make.fixed("<!DOCTYPE LOG >");
    make.fixed("<HEADER>");
    make.fixed("    <INFO>");
    make.value(indent, "VERSION", "VERSION", " ", value_form::text, false, " ");
    make.value(indent, "LOGNAME", "LOGNAME", " ", value_form::text, false, " ");
    make.value(indent, "LOGDATE", "LOGDATE", " ", value_form::date);
    make.value(indent, "LOGHOUR", "LOGHOUR", " ", value_form::hour, true);
    make.fixed("    </INFO>");
    make.fixed("    <PARAMETER>");
    for (const tag_row& row : chart_tags)
        make.entry(row, "");
    for (const tag_row& row : engine_tags)
        make.entry(row, " ");
    for (const std::string_view list : {"FIRINGORDER", "FIRINGANGLE"})
        make.value(indent, list, list, "", value_form::list);
    make.fixed("    </PARAMETER>");
    make.fixed("    <ENTRYTYPES>");
    for (const log::log_column& column : log::log_columns())
        make.entry_type(column);
    make.fixed("    </ENTRYTYPES>");
    make.fixed("    <STRUCTURE>");
    for (const log::log_record_kind& kind : log::log_record_kinds()) {
        std::string row = "        <";
        row.append(kind.tag).append("><").append(kind.form).append("> ");
        log::append_types(row, kind);
        make.fixed(row.append("</").append(kind.form).append("></").append(kind.tag).append(">"));
    }
    make.fixed("    </STRUCTURE>");
    make.fixed("</HEADER>");
    make.fixed(log_begin);
    return std::move(make.rows);
}

const std::vector<header_row>& rows() {
    static const std::vector<header_row> made = make_rows();
    return made;
}

bool has_place_of(const header_row& row, std::string_view text) {
    if (row.form == value_form::none) return text == row.before;
    return text.size() >= row.before.size() + row.behind.size() && text.starts_with(row.before) &&
           text.ends_with(row.behind);
}

/// True if the text is a beginning of this line, and says which one it is.
bool is_cut(const header_row& row, std::string_view text) {
    const auto told = text.find_first_not_of(" <");
    if (told == text.npos) return false;
    return row.before.starts_with(text) || (row.form != value_form::none && text.starts_with(row.before));
}

/// The name by which a message calls a row.
std::string name_of(const header_row& row) {
    if (const auto slash = row.name.find('/'); slash != row.name.npos)
        return row.name.substr(slash + 1) + " of " + row.name.substr(0, slash);
    if (row.form != value_form::none) return row.name;
    const auto first = row.before.find_first_not_of(' ');
    return row.before.substr(first, row.before.find('>') + 1 - first);
}

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(' ');
    if (first == text.npos) return {};
    return text.substr(first, text.find_last_not_of(' ') + 1 - first);
}

/// The number that is all of the text, if it is one.
std::optional<int> whole_number(std::string_view text) {
    int value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return value;
}

bool is_decimal(std::string_view text) {
    double value = 0;
    const std::string_view number = text.starts_with(' ') ? text.substr(1) : text;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    return error == std::errc() && end == number.data() + number.size();
}

bool only_digits(std::string_view text, std::size_t length) {
    return text.size() == length && text.find_first_not_of("0123456789") == text.npos;
}

bool has_form(value_form form, std::string_view value) {
    switch (form) {
    case value_form::whole:
        return whole_number(value).has_value();
    case value_form::decimal:
        return is_decimal(value);
    case value_form::date:
        return only_digits(value, 8) && value.substr(4, 2) > "00" && value.substr(4, 2) < "13" &&
               value.substr(6) > "00" && value.substr(6) < "32";
    case value_form::hour:
        return only_digits(value, 2) && value < "24";
    default:
        return true;
    }
}

} // namespace

std::string header_lines::take(std::string_view text) {
    const auto& all = rows();
    const auto here = all.begin() + static_cast<std::ptrdiff_t>(next_);
    const auto matches = [text](const header_row& row) { return has_place_of(row, text); };
    const auto found = std::find_if(here, all.end(), matches);
    if (found == all.end()) {
        const auto cut =
            std::find_if(here, all.end(), [text](const header_row& row) { return is_cut(row, text); });
        if (cut != all.end()) {
            next_ = static_cast<std::size_t>(cut - all.begin()) + 1;
            return "torn, cut in the header's " + name_of(*cut);
        }
        const auto before = std::find_if(all.begin(), here, matches);
        if (before != here) return name_of(*before) + " stands twice or too late in the header";
        return "no line of a header";
    }
    next_ = static_cast<std::size_t>(found - all.begin()) + 1;
    std::string fault;
    const auto needed = [](const header_row& row) { return !row.optional; };
    if (const auto first = std::find_if(here, found, needed); first != found) {
        const auto count = std::count_if(here, found, needed);
        fault = "the header has no " + name_of(*first);
        if (count > 1) fault += ", and " + counted(count - 1, "line", "lines") + " more are missing here";
    }
    if (found->form == value_form::none) return fault;
    const std::string_view value =
        text.substr(found->before.size(), text.size() - found->before.size() - found->behind.size());
    values_[found->name] = trimmed(value);
    if (has_form(found->form, value)) return fault;
    return (fault.empty() ? "" : fault + "; ") + name_of(*found) + " is wrong: " + shortened(value, 20);
}

std::string header_lines::missing() const {
    const auto& all = rows();
    if (next_ == all.size()) return {};
    const auto first = std::find_if(all.begin() + static_cast<std::ptrdiff_t>(next_), all.end(),
                                    [](const header_row& row) { return !row.optional; });
    if (ends_early()) return {};
    return "the header ends in front of its " + name_of(*first);
}

bool header_lines::ends_early() const {
    const auto& all = rows();
    return next_ < all.size() && all[next_].name == "FIRINGORDER" &&
           whole_number(value("NUMZYL")).value_or(0) > cylinder_max;
}

bool header_lines::all_zero() const {
    return std::ranges::all_of(never_all_zero, [this](const char* tag) { return value(tag) == "0"; });
}

std::string header_lines::value(const std::string& tag) const {
    const auto found = values_.find(tag);
    return found == values_.end() ? std::string() : found->second;
}

} // namespace tyxo::xlg
