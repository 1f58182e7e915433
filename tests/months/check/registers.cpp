#include "registers.h"

#include <vector>

namespace months::check {

namespace {

struct layout {
    int code, offset, count;
};
constexpr layout layouts[] = {{1, 0, 6}, {8, 6, 3}, {3, 10, 50}, {4, 60, 50}};

struct wanted_register {
    std::int64_t value;
    bool known = true;
};

std::vector<wanted_register> registers_of(const register_block& block, const channel_record& r) {
    std::vector<wanted_register> registers{{block.channel + 1}};
    const auto add = [&](std::int64_t value, bool known = true) { registers.push_back({value, known}); };
    if (block.code == 1) {
        for (const int value : {r.tsignal, r.speed, r.tvoltage, r.teff_dc, r.teff_ac})
            add(value);
    } else if (block.code == 8) {
        add(r.status_alarm);
        add(r.status_error);
    } else {
        const cylinder_values& of = block.code == 3 ? r.speed_of : r.thermo_of;
        add(r.numzyl);
        for (std::size_t i = 0; i < 24; ++i)
            add(of.value[i], !of.unknown[i]);
        for (std::size_t i = 0; i < 24; ++i)
            add(of.difference[i], !of.unknown[i]);
    }
    return registers;
}

int word_of(std::int64_t value) {
    if (value >= 0) return static_cast<int>(value);
    return static_cast<int>(value & 0x7fff) | 0x8000;
}

int word_at(std::string_view frame, std::size_t at) {
    return static_cast<unsigned char>(frame[at]) * 256 + static_cast<unsigned char>(frame[at + 1]);
}

} // namespace

std::optional<register_block> block_at(int address, int base) {
    const int distance = address - base;
    if (distance < 0 || distance >= 440) return std::nullopt;
    for (const layout& l : layouts)
        if (distance % 110 == l.offset) return register_block{l.code, distance / 110};
    return std::nullopt;
}

std::optional<std::string> block_difference(std::string_view frame, const register_block& block,
                                            const channel_record& record) {
    const layout* l = layouts;
    while (l->code != block.code)
        ++l;
    const auto count = static_cast<std::size_t>(l->count);
    if (frame.size() != 13 + 2 * count || word_at(frame, 4) != 7 + 2 * l->count ||
        word_at(frame, 10) != l->count || static_cast<unsigned char>(frame[12]) != 2 * l->count) {
        return "its lengths are not those of " + std::to_string(count) + " registers";
    }
    const auto wanted = registers_of(block, record);
    for (std::size_t i = 0; i < count; ++i) {
        const int seen = word_at(frame, 13 + 2 * i);
        if (!wanted[i].known || seen == word_of(wanted[i].value)) continue;
        return "the register at offset " + std::to_string(l->offset + static_cast<int>(i)) + " should be " +
               std::to_string(wanted[i].value) + ", is " + std::to_string(seen);
    }
    return std::nullopt;
}

std::optional<std::string> register_cycle::sent(const register_block& block, const plant_settings& plant,
                                                const clock_now& now) {
    constexpr int codes[] = {1, 8, 3, 4};
    const bool enabled[] = {plant.ip_linear == 1, plant.ip_status == 1, plant.ip_polar == 1,
                            plant.ip_polar == 1};
    constexpr int otherwise[] = {1, 2, 0, 0};
    constexpr int intervals[] = {600, 450, 300};
    const int interval = plant.ip_refresh >= 0 && plant.ip_refresh <= 2 ? intervals[plant.ip_refresh] : 300;

    std::optional<std::string> wrong;
    int step = 0;
    while (codes[step] != block.code)
        ++step;
    if (plant.ip_auto != 1) wrong = "sent though nothing is sent by itself";
    if (!enabled[step]) wrong = "sent though it is switched off";
    if (block.channel >= plant.max_sensors) wrong = "sent for a channel that is not configured";
    int ticks = 1;
    if (!unsure_ && !wrong) {
        int next = step_;
        for (int i = 0; i < 5 && !enabled[next]; ++i, ++ticks)
            next = otherwise[next];
        if (next != step || channel_ != block.channel) {
            wrong = "should be block " + std::to_string(codes[next]) + " of channel " +
                    std::to_string(channel_ + 1);
        }
    }
    const std::int64_t least = unsure_ ? 0 : std::int64_t{ticks} * interval - 20;
    if (!wrong && last_ms_ >= 0 && now.ms - last_ms_ < least) {
        wrong = "sent " + std::to_string(now.ms - last_ms_) + " ms behind the last one, " +
                std::to_string(ticks * interval) + " are the pace";
    }
    unsure_ = false;
    last_ms_ = now.ms;
    step_ = step;
    channel_ = block.channel + 1;
    if (channel_ >= plant.max_sensors) {
        channel_ = 0;
        step_ = (step + 1) % 4;
    }
    return wrong;
}

} // namespace months::check
