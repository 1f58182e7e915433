#include "register_map.h"

#include <algorithm>
#include <cstdio>
#include <span>
#include <tuple>

namespace tyxo::controller_sim {

namespace {

struct Bit {
    unsigned mask;
    const char* meaning;
};

constexpr Bit alarm_bits[] = {
    {0x0020, "unit ready"},       {0x8000, "Main Alarm"},      {0x0002, "Main Alarm DC"},
    {0x0008, "Main Alarm AC"},    {0x4000, "Prealarm"},        {0x0001, "Prealarm DC"},
    {0x0004, "Prealarm AC"},      {0x2000, "Overspeed Alarm"}, {0x0100, "Main Error"},
    {0x0080, "main alarm relay"}, {0x0040, "prealarm relay"},
};

constexpr Bit error_bits[] = {
    {0x8000, "memory overflow"},   {0x4000, "CRC error"},         {0x2000, "memory timeout"},
    {0x1000, "memory error"},      {0x0020, "test signal error"}, {0x0010, "sync signal error"},
    {0x0008, "INCB signal error"}, {0x0004, "INCA signal error"},
};

// All four together: the Evaluator is not connected.
constexpr unsigned not_connected = 0x0063;

std::string join(const std::vector<std::string>& words) {
    std::string text;
    for (const std::string& word : words)
        text += (text.empty() ? "" : ", ") + word;
    return text.empty() ? "-" : text;
}

std::string hex4(unsigned value) {
    char text[8];
    std::snprintf(text, sizeof text, "%04X", value & 0xFFFFU);
    return text;
}

/// The meanings of `bits`, and what is left over as a number.
std::vector<std::string> meanings(unsigned status, std::span<const Bit> bits) {
    std::vector<std::string> words;
    for (const Bit& bit : bits)
        if ((status & bit.mask) != 0) {
            words.emplace_back(bit.meaning);
            status &= ~bit.mask;
        }
    if (status != 0) words.push_back("bits " + hex4(status));
    return words;
}

/// The registers of one channel; those beyond the last one are 0.
class Registers {
  public:
    Registers(const Image& image, std::size_t first) : image_(image), first_(first) {}
    unsigned word(std::size_t offset) const {
        return first_ + offset < image_.size() ? image_[first_ + offset] : 0U;
    }
    int number(std::size_t offset) const { return static_cast<std::int16_t>(word(offset)); }
    std::string text(std::size_t offset) const { return std::to_string(word(offset)); }

  private:
    const Image& image_;
    std::size_t first_;
};

std::string with_sign(int value) {
    return (value > 0 ? "+" : "") + std::to_string(value);
}

std::string hundredths(unsigned value) {
    char text[16];
    std::snprintf(text, sizeof text, "%u.%02u", value / 100, value % 100);
    return text;
}

std::string measured(const Registers& channel) {
    return "thermosignal " + channel.text(1) + " %, speed " + channel.text(2) + " rpm, thermovoltage " +
           hundredths(channel.word(3)) + " mV, effective DC " + channel.text(4) + " %, effective AC " +
           channel.text(5) + " %";
}

/// Whose number a block carries, if it is not its channel's.
std::string wrong_number(const Registers& registers, std::size_t offset, std::size_t channel) {
    if (registers.word(offset) == channel + 1) return "";
    return " (in registers of channel " + registers.text(offset) + ")";
}

} // namespace

std::optional<Place> place_of(std::size_t address, std::size_t count, std::size_t base) {
    if (address < base || address >= base + channels * registers_per_channel) return std::nullopt;
    const std::size_t offset = (address - base) % registers_per_channel;
    for (std::size_t i = 0; i < blocks.size(); ++i)
        if (blocks[i].offset == offset && blocks[i].count == count)
            return Place{(address - base) / registers_per_channel, i};
    return std::nullopt;
}

std::string alarm_words(unsigned status) {
    return join(meanings(status, alarm_bits));
}

std::string error_words(unsigned status) {
    if ((status & not_connected) != not_connected) return join(meanings(status, error_bits));
    std::vector<std::string> words = meanings(status & ~not_connected, error_bits);
    words.insert(words.begin(), "Not connected");
    return join(words);
}

std::vector<std::string> channel_in_words(const Image& image, std::size_t base, std::size_t channel,
                                          const std::array<std::size_t, blocks.size()>& frames) {
    const Registers mapped(image, base + channel * registers_per_channel);
    const std::string name = "channel " + std::to_string(channel + 1);
    std::vector<std::string> lines;
    if (frames[0] > 0) lines.push_back(name + ": " + measured(mapped) + wrong_number(mapped, 0, channel));
    if (frames[1] > 0)
        lines.push_back(name + ": status: " + alarm_words(mapped.word(7)) +
                        "; errors: " + error_words(mapped.word(8)) + wrong_number(mapped, 6, channel));
    for (const auto& [block, what, unit] :
         {std::tuple{2U, "speed", " rpm"}, std::tuple{3U, "thermosignal", " %"}}) {
        if (frames[block] == 0) continue;
        const std::size_t first = blocks[block].offset;
        const std::size_t cylinders = std::min<std::size_t>(mapped.word(first + 1), most_cylinders);
        std::vector<std::string> words;
        for (std::size_t i = 0; i < cylinders; ++i)
            words.push_back("cylinder " + std::to_string(i + 1) + ": " + mapped.text(first + 2 + i) + unit +
                            " (" + with_sign(mapped.number(first + 2 + most_cylinders + i)) + ")");
        lines.push_back(name + ": " + what + " of " + mapped.text(first + 1) + " cylinders: " + join(words) +
                        wrong_number(mapped, first, channel));
    }
    return lines;
}

} // namespace tyxo::controller_sim
