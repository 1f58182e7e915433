// Commands that say what an Evaluator is: its port, its engine, its parameters, the forms of its frames.

#include "command.h"

namespace tyxo::evaluator_sim {

namespace {

constexpr std::string_view values_forms[] = {"short", "state", "voltage", "dc", "ac"};
constexpr std::string_view parameter_forms[] = {"base",      "test",    "impulse", "delay",
                                                "effective", "inhibit", "percent"};
constexpr std::string_view status_forms[] = {"short", "long"};

ChannelAction port(const Arguments& a) {
    const int port = read_integer(a.word(0), "port", 1, 999);
    a.at_most(1);
    return [port](Plant& plant, int number, double) { plant.attach(number, port); };
}

ChannelAction unit_kind(const Arguments& a) {
    constexpr std::string_view kinds[] = {"standard", "advanced", "plain"};
    const size_t kind = choose(a.word(0), "unit", kinds);
    a.at_most(1);
    return [kind](Plant& plant, int number, double time) {
        Unit& unit = unit_of(plant, number);
        const bool plain = kind == 2;
        const bool curves = kind != 1;
        unit.values_form = plain ? ValuesForm::brief : ValuesForm::effective_ac;
        unit.parameter_form = plain ? ParameterForm::base : ParameterForm::percent;
        unit.status_form = plain ? StatusForm::brief : StatusForm::full;
        unit.mode = kind == 1 ? 0 : 1;
        plant.channel(number).schedule.set_period(3, curves ? 2 : 0, time);
        plant.channel(number).schedule.set_period(4, curves ? 2 : 0, time + 1);
    };
}

Parameters read_engine(const Arguments& a) {
    if (a.count() == 1) {
        const auto preset = engine_preset(a.word(0));
        if (!preset)
            throw InputError("engine: '" + printable(a.word(0)) + "' is none of " + engine_preset_names());
        return *preset;
    }
    constexpr std::string_view layouts[] = {"inline", "v"};
    const bool v_engine = choose(a.word(0), "layout", layouts) == 1;
    const int cylinders = read_integer(a.word(1), "cylinders", 1, max_cylinders);
    const int strokes = read_integer(a.word(2), "strokes", 2, 4);
    if (strokes == 3) throw InputError("strokes: 3 is neither 2 nor 4");
    const int rated = read_integer(a.word(3), "rated speed", 0, 6500);
    const int overspeed = read_integer(a.word(4), "overspeed", 0, 6500);
    a.at_most(5);
    return plain_engine(v_engine, cylinders, strokes, rated, overspeed);
}

ChannelAction engine(const Arguments& a) {
    const Parameters layout = read_engine(a);
    return
        [layout](Plant& plant, int number, double time) { unit_of(plant, number).set_engine(layout, time); };
}

std::array<int, max_cylinders> read_list(const Arguments& a, std::string_view what, int most) {
    std::array<int, max_cylinders> list{};
    a.word(0);
    a.at_most(list.size());
    for (size_t i = 0; i < a.count(); ++i)
        list.at(i) = read_integer(a.word(i), what, 0, most);
    return list;
}

ChannelAction firing_order(const Arguments& a) {
    const auto list = read_list(a, "cylinder", 255);
    return [list](Plant& plant, int number, double) { unit_of(plant, number).parameters.firingorder = list; };
}

ChannelAction firing_angle(const Arguments& a) {
    const auto list = read_list(a, "angle", 65535);
    return [list](Plant& plant, int number, double) { unit_of(plant, number).parameters.firingangle = list; };
}

ChannelAction parameter(const Arguments& a) {
    std::vector<std::string_view> names;
    for (const NumberParameter& row : number_parameters())
        names.push_back(row.name);
    int Parameters::*const member = number_parameters()[choose(a.word(0), "parameter", names)].member;
    const int value = read_integer(a.word(1), a.word(0), 0, 65535);
    a.at_most(2);
    return [member, value](Plant& plant, int number, double) {
        unit_of(plant, number).parameters.*member = value;
    };
}

ChannelAction text(const Arguments& a) {
    constexpr std::string_view names[] = {"id1", "id2", "id3", "id4", "fwvers", "fwvers_ext", "evasnr"};
    const size_t which = choose(a.word(0), "text", names);
    const std::string value = unescape(trim(a.rest.substr(a.word(0).size())));
    return [which, value](Plant& plant, int number, double) {
        Unit& unit = unit_of(plant, number);
        std::string* const texts[] = {&unit.identification.text1,
                                      &unit.identification.text2,
                                      &unit.identification.text3,
                                      &unit.identification.text4,
                                      &unit.firmware,
                                      &unit.parameters.fwvers_ext,
                                      &unit.parameters.evasnr};
        *texts[which] = value;
    };
}

ChannelAction form(const Arguments& a) {
    constexpr std::string_view codes[] = {"01", "06", "08"};
    const size_t code = choose(a.word(0), "code", codes);
    const std::span<const std::string_view> forms[] = {values_forms, parameter_forms, status_forms};
    const size_t chosen = choose(a.word(1), "form", forms[code]);
    a.at_most(2);
    return [code, chosen](Plant& plant, int number, double) {
        Unit& unit = unit_of(plant, number);
        if (code == 0)
            unit.values_form = static_cast<ValuesForm>(chosen);
        else if (code == 1)
            unit.parameter_form = static_cast<ParameterForm>(chosen);
        else
            unit.status_form = static_cast<StatusForm>(chosen);
    };
}

ChannelAction mode(const Arguments& a) {
    const int mode = read_integer(a.word(0), "mode", 0, 255);
    a.at_most(1);
    return [mode](Plant& plant, int number, double) { unit_of(plant, number).mode = mode; };
}

ChannelAction extension(const Arguments& a) {
    const int value = read_integer(a.word(0), "value", 0, 255);
    a.at_most(1);
    return [value](Plant& plant, int number, double) { unit_of(plant, number).status_extension = value; };
}

constexpr Verb unit_rows[] = {
    {"port", "P", "put the channel on serial port P: the link COM<P>", port},
    {"unit", "standard|advanced|plain", "kind of Evaluator: forms, mode, curves", unit_kind},
    {"engine", "NAME | inline|v CYL STROKES RATED OVER", "engine under watch, see below", engine},
    {"firingorder", "CYL...", "up to 24 entries; bank A 100+n, bank B 200+n", firing_order},
    {"firingangle", "DEG...", "up to 24 angles from the position before", firing_angle},
    {"param", "NAME VALUE", "a whole-number parameter by its name", parameter},
    {"text", "id1|id2|id3|id4|fwvers|fwvers_ext|evasnr TEXT", "a text of the Evaluator", text},
    {"form", "01|06|08 NAME", "how much stands in a frame", form},
    {"mode", "0|1|99", "Evaluator mode in long status frames", mode},
    {"statusext", "VALUE", "two digits at the end of long status frames", extension},
};

} // namespace

std::span<const Verb> unit_verbs() {
    return unit_rows;
}

} // namespace tyxo::evaluator_sim
