#include "channel.h"

#include "text.h"

#include <algorithm>

namespace tyxo::evaluator_sim {

namespace {

constexpr double line_baud = 38400;
constexpr double update_period = 0.05; // seconds between two comparisons with the alarm levels
constexpr int values_per_block = 2;    // in the mixture that fills a saturated line

std::string code_text(int code) {
    return {'0', static_cast<char>('0' + code)};
}

size_t curve_index(int code) {
    return code == 3 ? 0 : 1;
}

} // namespace

Channel::Channel(int number, std::uint64_t seed)
    : unit(seed * 8 + static_cast<std::uint64_t>(number)), number_(number),
      random_(seed * 8 + static_cast<std::uint64_t>(number)), pacer_(characters_per_second(line_baud)) {
    unit.identification.text3 = "00010" + std::to_string(number);
    unit.parameters.evasnr = "EV00471" + std::to_string(number);
}

bool Channel::strikes(Fault fault) {
    const bool struck = faults.strikes(fault, random_);
    if (struck) ++counters_.faults.at(static_cast<size_t>(fault));
    return struck;
}

void Channel::queue_built(const std::string& body, bool behind_values) {
    Outgoing item{close_frame(body), body.substr(1, 2)};
    // At most one fault changes a frame; upper case waits for check digits that have letters.
    if (strikes(Fault::badcheck)) {
        item.bytes = with_bad_check(item.bytes);
        item.intact = false;
    } else if (check_has_letters(item.bytes) && strikes(Fault::uppercheck)) {
        item.bytes = with_upper_check(item.bytes);
        item.intact = false;
    } else if (strikes(Fault::cut)) {
        item.bytes = cut_frame(item.bytes, random_);
        item.intact = false;
    }
    if (strikes(Fault::noise)) item.bytes.insert(0, noise_bytes(random_.between(1, 20), random_));
    if (behind_values)
        transmitter_.put_curve(std::move(item));
    else
        transmitter_.put(std::move(item));
}

void Channel::queue_curve(int code, double time, bool behind_values) {
    const Curve curve = unit.curve(code, time);
    std::array<int, curve_blocks> blocks = {1, 2, 3, 4};
    if (strikes(Fault::order)) std::swap(blocks[1], blocks[2]);
    for (const int block : blocks)
        queue_built(curve_body(code, block, curve), behind_values);
}

void Channel::send(int code, double time) {
    switch (code) {
    case 0:
        return queue_built(unit.identification_body(), false);
    case 1:
        return queue_built(unit.values_body(time), false);
    case 3:
    case 4:
        return queue_curve(code, time, false);
    case 6:
        return queue_built(unit.parameters_body(time), false);
    case 8:
        return queue_built(unit.status_body(time), false);
    default:
        return;
    }
}

void Channel::send_body(std::string_view body) {
    transmitter_.put({close_frame(body), std::string(body.substr(std::min<size_t>(1, body.size()), 2))});
}

void Channel::send_raw(std::string bytes) {
    transmitter_.put({std::move(bytes), ""});
}

void Channel::send_noise(size_t count) {
    send_raw(noise_bytes(count, random_));
}

void Channel::silence(double time, double seconds) {
    silent_until_ = time + seconds;
}

void Channel::queue_scheduled(int code, double time) {
    // A line that is too slow for the schedule skips frames instead of falling behind without end.
    if (transmitter_.waiting(code_text(code))) return;
    if (code == 3 || code == 4)
        queue_curve(code, time, true);
    else
        send(code, time);
}

void Channel::fill_gap(double time) {
    const int block_step = fill_step_ / (values_per_block + 1);
    const int block = block_step % curve_blocks + 1;
    const int code = block_step < curve_blocks ? 3 : 4;
    if (fill_step_ % (values_per_block + 1) != 0) {
        send(1, time);
    } else {
        Curve& curve = fill_curves_.at(curve_index(code));
        if (block == 1) curve = unit.curve(code, time);
        queue_built(curve_body(code, block, curve), false);
    }
    fill_step_ = (fill_step_ + 1) % (2 * curve_blocks * (values_per_block + 1));
}

std::string Channel::step(double time) {
    if (time >= next_update_) {
        unit.update(time);
        next_update_ = time + update_period;
    }
    const std::vector<int> due = schedule.due(time);
    const bool silent = time < silent_until_;
    if (silent)
        transmitter_.clear();
    else
        for (const int code : due)
            queue_scheduled(code, time);
    const size_t count = pacer_.allowance(time);
    while (!silent && schedule.fills_gaps() && transmitter_.waiting_bytes() < count)
        fill_gap(time);
    last_step_ = transmitter_.take(count);
    if (transmitter_.empty() && !schedule.fills_gaps()) pacer_.idle(time);
    return last_step_;
}

void Channel::settle(size_t sent) {
    counters_.sent_bytes += sent;
    counters_.lost_bytes += last_step_.size() - sent;
    for (const Outgoing& item : transmitter_.settle(sent))
        count(item);
}

void Channel::count(const Outgoing& item) {
    if (item.code.empty() || !item.intact) return;
    ++counters_.frames[item.code];
    const size_t begin = item.bytes.find(':');
    if ((item.code != "03" && item.code != "04") || begin + 4 >= item.bytes.size()) return;
    const size_t curve = item.code == "03" ? 0 : 1;
    const int block = item.bytes[begin + 4] - '0';
    int& last = last_block_.at(curve);
    if (block < 1 || block > curve_blocks) return;
    last = block == last + 1 ? block : 0;
    if (last == curve_blocks) {
        ++counters_.curves.at(curve);
        last = 0;
    }
}

std::vector<std::string> Channel::receive(std::string_view bytes, double time) {
    std::vector<std::string> lines;
    for (const std::string& frame : receiver_.take(bytes)) {
        const bool good = check_passes(frame);
        ++counters_.received_frames;
        lines.push_back("channel " + std::to_string(number_) + " received " + printable(frame) + " check " +
                        (good ? "ok" : "bad"));
        if (good && answers) answer(frame.substr(0, frame.size() - 2), time);
    }
    return lines;
}

void Channel::answer(const std::string& frame, double time) {
    if (frame.starts_with(":07"))
        send_body(write_answer_body(apply_parameter_write(unit.parameters, frame)));
    else if (frame == ":8009")
        unit.restart_inhibit(time);
    else if (frame.size() == 3 && frame[1] == '0' && frame[2] >= '0' && frame[2] <= '8')
        send(frame[2] - '0', time); // a request: the bare code asks for its frame
}

} // namespace tyxo::evaluator_sim
