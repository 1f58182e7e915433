#include "replay.h"

#include "text.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>
#include <cmath>
#include <utility>
#include <vector>

namespace tyxo::evaluator_sim {

namespace {

constexpr int day = 86'400;            // seconds
constexpr double between_lines = 0.1;  // seconds between lines that have the same time
constexpr double last_in_second = 0.9; // where the last of many stands
constexpr size_t most_waiting = 2000;  // bytes in the queue behind which the log waits
constexpr unsigned ready = alarm_bit::ready;

/// A comment of a log and the bits of a status word that bring it.
struct StatusText {
    std::string_view text;
    unsigned alarms; ///< bits of the alarm status word
    unsigned errors; ///< of the error status word
    bool on;
};

constexpr StatusText status_texts[] = {
    {"Evaluator Memory Overflow", 0, 0x8000, true},
    {"Evaluator CRC Error", 0, 0x4000, true},
    {"Evaluator Memory Timeout", 0, 0x2000, true},
    {"Evaluator Memory Error", 0, 0x1000, true},
    {"KVD INCA Error", 0, 0x0004, true},
    {"KVD INCB Error", 0, 0x0008, true},
    {"KVD SYNC Error", 0, 0x0010, true},
    {"KVD TESTSIGNAL Error", 0, 0x0020, true},
    {"KVD Overspeed Alarm ON", alarm_bit::overspeed, 0, true},
    {"KVD Overspeed Alarm OFF", alarm_bit::overspeed, 0, false},
    {"KVD Main error", alarm_bit::main_error, 0, true},
    {"KVD Main ALARM DC ON", alarm_bit::main_dc, 0, true},
    {"KVD Main ALARM DC OFF", alarm_bit::main_dc, 0, false},
    {"KVD Prealarm DC ON", alarm_bit::pre_dc, 0, true},
    {"KVD Prealarm DC OFF", alarm_bit::pre_dc, 0, false},
    {"KVD Main ALARM AC ON", alarm_bit::main_ac, 0, true},
    {"KVD Main ALARM AC OFF", alarm_bit::main_ac, 0, false},
    {"KVD Prealarm AC ON", alarm_bit::pre_ac, 0, true},
    {"KVD Prealarm AC OFF", alarm_bit::pre_ac, 0, false},
    {"KVD Main ALARM ON", alarm_bit::main | alarm_bit::main_relay, 0, true},
    {"KVD Main ALARM OFF", alarm_bit::main | alarm_bit::main_relay, 0, false},
    {"KVD Prealarm ON", alarm_bit::pre | alarm_bit::pre_relay, 0, true},
    {"KVD Prealarm OFF", alarm_bit::pre | alarm_bit::pre_relay, 0, false},
};

std::optional<int> whole_number(std::string_view word) {
    int number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    return error == std::errc() && end == word.data() + word.size() ? std::optional(number) : std::nullopt;
}

/// "5", or with the letter of a bank "A5".
int cylinder_of(std::string_view word) {
    const int bank = word.starts_with('A') ? 100 : word.starts_with('B') ? 200 : 0;
    return bank + whole_number(bank > 0 ? word.substr(1) : word).value_or(0);
}

template <class Read> void read_list(std::array<int, max_cylinders>& list, std::string_view text, Read read) {
    list = {};
    const std::vector<std::string> words = split_words(text);
    for (size_t i = 0; i < std::min(words.size(), list.size()); ++i)
        list.at(i) = read(words.at(i));
}

void take_header_line(Parameters& parameters, std::string_view line) {
    line = trim(line);
    const size_t name_end = line.find('>');
    const size_t value_end = line.rfind("</");
    if (!line.starts_with('<') || name_end == line.npos || value_end == line.npos || value_end < name_end)
        return;
    std::string name(line.substr(1, name_end - 1));
    std::ranges::transform(name, name.begin(), [](char c) {
        return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
    });
    const std::string_view value = trim(line.substr(name_end + 1, value_end - name_end - 1));
    if (name == "fwvers") parameters.fwvers_ext = value;
    if (name == "evasnr") parameters.evasnr = value;
    if (name == "firingorder") read_list(parameters.firingorder, value, cylinder_of);
    if (name == "firingangle")
        read_list(parameters.firingangle, value,
                  [](std::string_view word) { return whole_number(word).value_or(0); });
    for (const NumberParameter& number : number_parameters())
        if (number.name == name)
            parameters.*number.member = whole_number(value).value_or(parameters.*number.member);
}

/// "13:05:09" at the beginning.
std::optional<int> second_of_day(std::string_view text) {
    if (text.size() < 8 || text[2] != ':' || text[5] != ':') return std::nullopt;
    const auto hour = whole_number(text.substr(0, 2));
    const auto minute = whole_number(text.substr(3, 2));
    const auto second = whole_number(text.substr(6, 2));
    if (!hour || !minute || !second) return std::nullopt;
    if (*hour < 0 || *hour > 23 || *minute < 0 || *minute > 59 || *second < 0 || *second > 59)
        return std::nullopt;
    return (*hour * 60 + *minute) * 60 + *second;
}

std::optional<Values> values_of(const std::vector<std::string>& words) {
    if (words.size() != 5) return std::nullopt;
    std::array<int, 5> numbers{};
    for (size_t i = 0; i < numbers.size(); ++i) {
        const auto number = whole_number(words.at(i));
        if (!number) return std::nullopt;
        numbers.at(i) = *number;
    }
    Values values;
    values.tsignal = numbers[0];
    values.speed = numbers[1];
    values.voltage = numbers[2] / 100.0;
    values.effective_dc = numbers[3];
    values.effective_ac = numbers[4];
    return values;
}

std::optional<ReplayedCurve> curve_of(int code, const std::vector<std::string>& words) {
    ReplayedCurve curve{code, {}};
    if (words.size() != curve.samples.size()) return std::nullopt;
    for (size_t i = 0; i < words.size(); ++i) {
        const auto sample = whole_number(words.at(i));
        if (!sample || *sample < 0 || *sample > 65'535) return std::nullopt;
        curve.samples.at(i) = static_cast<std::uint16_t>(*sample);
    }
    return curve;
}

} // namespace

Parameters parameters_of_log(std::istream& lines) {
    Parameters parameters;
    std::string line;
    while (std::getline(lines, line)) {
        if (trim(line) == "<LOG>") return parameters;
        take_header_line(parameters, line);
    }
    throw InputError("no log: it has no line <LOG>");
}

std::optional<ReplayedLine> line_of_log(std::string_view text) {
    text = trim(text);
    constexpr size_t mark = 5; // "<!-- ", or the six of "<REC1> "
    if (text.starts_with("<!-- ") || text.starts_with("<#-- ")) {
        const auto second = second_of_day(text.substr(mark));
        if (!second || !text.ends_with(" -->") || text.size() < mark + 13) return std::nullopt;
        return ReplayedLine{*second,
                            ReplayedEvent{std::string(text.substr(mark + 9, text.size() - mark - 13))}};
    }
    if (text.size() < 22 || !text.starts_with("<REC") || text.substr(5, 2) != "> ") return std::nullopt;
    const std::string name(text.substr(1, 4));
    if (!text.ends_with("</" + name + ">")) return std::nullopt;
    const auto second = second_of_day(text.substr(7));
    const std::vector<std::string> words = split_words(text.substr(15, text.size() - 15 - 7));
    if (!second) return std::nullopt;
    if (name == "REC1") {
        const auto values = values_of(words);
        return values ? std::optional(ReplayedLine{*second, *values}) : std::nullopt;
    }
    if (name != "REC2" && name != "REC3") return std::nullopt;
    const auto curve = curve_of(name == "REC2" ? 3 : 4, words);
    return curve ? std::optional(ReplayedLine{*second, *curve}) : std::nullopt;
}

Replay::Replay(const std::string& file, double speed) : file_(file, std::ios::binary), speed_(speed) {
    if (!file_) throw InputError("cannot read " + file);
    parameters_ = parameters_of_log(file_);
    read_next();
}

void Replay::read_next() {
    const auto before = next_ ? std::optional(next_->second) : std::nullopt;
    next_.reset();
    std::string line;
    while (!next_ && std::getline(file_, line))
        next_ = line_of_log(line);
    if (!next_ || !before) return;
    int passed = next_->second - *before;
    if (passed < -day / 2) passed += day; // over midnight
    in_second_ = passed == 0 ? in_second_ + 1 : 0;
    // Lines stand at whole seconds, those of the same one are spread over it. A clock that was set back costs
    // no time.
    const double second = std::floor(due_) + std::clamp(static_cast<double>(passed), 0.0, longest_gap);
    due_ = second + std::min(in_second_ * between_lines, last_in_second);
}

void Replay::take_over(Channel& channel, double time) const {
    Unit& unit = channel.unit;
    unit.set_engine(parameters_, time);
    unit.parameters = parameters_;
    unit.alarms = {};
    unit.alarms.word = ready;
    for (const int code : {1, 3, 4})
        channel.schedule.set_period(code, 0, time);
}

void Replay::step(Channel& channel, double time) {
    if (!listened_since_) led_in_ = false;
    const double listened = time - listened_since_.value_or(time);
    if (!listened_since_ || (!led_in_ && listened >= lead_in))
        for (const int code : {6, 8})
            channel.send(code, time);
    if (led_in_) clock_ += (time - last_step_) * speed_;
    listened_since_ = time - listened;
    led_in_ = listened >= lead_in;
    last_step_ = time;
    while (led_in_ && next_ && due_ <= clock_) {
        if (channel.transmitter().waiting_bytes() > most_waiting) {
            clock_ = due_;
            return;
        }
        play(channel, time);
        read_next();
    }
}

void Replay::play(Channel& channel, double time) {
    if (const auto* values = std::get_if<Values>(&next_->what)) {
        Values sent = *values;
        sent.test_signal = channel.unit.test_signal;
        channel.send_body(values_body(sent, ValuesForm::effective_ac));
    } else if (const auto* curve = std::get_if<ReplayedCurve>(&next_->what)) {
        for (int block = 1; block <= curve_blocks; ++block)
            channel.send_body(curve_body(curve->code, block, curve->samples));
    } else {
        tell(channel, std::get<ReplayedEvent>(next_->what).text, time);
    }
}

/// Brings the event about by a status frame, or by the next frame of values.
void Replay::tell(Channel& channel, std::string_view text, double time) {
    Unit& unit = channel.unit;
    if (text == "Evaluator not connected") return channel.schedule.pause();
    if (text == "Evaluator connected") return channel.schedule.resume(time);
    if (text == "Testsignal OFF") unit.test_signal = 0;
    if (text == "Testsignal1 ON") unit.test_signal = 1;
    if (text == "Testsignal2 ON") unit.test_signal = 2;
    if (text == "KVD Alarm Inhibit ON") unit.restart_inhibit(time);
    if (text == "KVD Alarm Inhibit OFF") unit.inhibit.stop();
    const auto* const known = std::ranges::find(status_texts, text, &StatusText::text);
    const bool inhibit = text.starts_with("KVD Alarm Inhibit");
    if (known == std::end(status_texts) && !inhibit) return;
    if (!inhibit) {
        const unsigned word = unit.alarms.word.value_or(ready);
        unit.alarms.word = known->on ? word | known->alarms : word & ~known->alarms;
        unit.alarms.errors = known->errors;
    }
    channel.send(8, time);
    if (inhibit) return;
    // What has no end in a log ends here: it is told again the next time.
    unit.alarms.errors = 0;
    unit.alarms.word = unit.alarms.word.value_or(ready) & ~alarm_bit::main_error;
}

} // namespace tyxo::evaluator_sim
