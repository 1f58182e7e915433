#include "gateway/register_image.h"

#include "basics/number.h"
#include "basics/number_text.h"
#include "gateway/frmsetuptcp.h"
#include "gateway/modbus.h"
#include "link/channel_rec.h"
#include "settings/settings.h"

#include <array>
#include <string>
#include <utility>
#include <variant>

namespace tyxo {

namespace {

struct own_number {};
template <class T> using field = T channel_rec::*;
template <class T> using slots = std::array<T, cylinder_max> channel_rec::*;

/// Whole numbers go out as they are; floats are rounded, and their boxes show them unrounded.
using register_source = std::variant<own_number, field<i32>, field<double>, slots<i32>, slots<double>>;

struct image_row {
    i16 offset;
    i16 block;
    register_source source;
    i16 count = 1;
};

/// Offset 9 belongs to no block.
constexpr image_row image[] = {
    {0, 1, own_number{}},
    {1, 1, &channel_rec::tsignal},
    {2, 1, &channel_rec::speed},
    {3, 1, &channel_rec::tvoltage},
    {4, 1, &channel_rec::teff_dc},
    {5, 1, &channel_rec::teff_ac},
    {6, 8, own_number{}},
    {7, 8, &channel_rec::status_alarm},
    {8, 8, &channel_rec::status_error},
    {10, 3, own_number{}},
    {11, 3, &channel_rec::numzyl},
    {12, 3, &channel_rec::mb_angacc_val, cylinder_max},
    {36, 3, &channel_rec::mb_angacc_diff, cylinder_max},
    {60, 4, own_number{}},
    {61, 4, &channel_rec::numzyl},
    {62, 4, &channel_rec::mb_thermo_val, cylinder_max},
    {86, 4, &channel_rec::mb_thermo_diff, cylinder_max},
};

/// Every row begins where the one before it ends, but for the gap.
constexpr bool image_complete() {
    i32 next = 0;
    for (const image_row& row : image) {
        if (next == 9) ++next;
        if (row.offset != next) return false;
        next += row.count;
    }
    return next == registers_per_channel;
}
static_assert(image_complete());

const image_row* first_row(i16 block) {
    for (const image_row& row : image) {
        if (row.block == block) return &row;
    }
    return nullptr;
}

/// Fills `mb_reg` and the boxes from the front.
class block_writer {
  public:
    explicit block_writer(i16 channel) : channel_(channel), rec_(sensor::channel_at(channel)) {}

    void add(const image_row& row) { std::visit(*this, row.source); }
    [[nodiscard]] i16 length() const { return length_; }

    void operator()(own_number) { put(channel_ + 1); }
    template <class T> void operator()(field<T> source) { put(rec_.*source); }
    template <class T> void operator()(slots<T> source) {
        for (const T value : rec_.*source)
            put(value);
    }

  private:
    void put(i32 value) { store(value, plain(value)); }
    void put(double value) { store(round_even<i32>(value), plain_number(value)); }
    void store(i32 value, std::string text) {
        at(modbus.mb_reg, length_) = value;
        at(FrmSetupTCP::state.Text4, length_) = std::move(text);
        ++length_;
    }

    i16 channel_;
    const channel_rec& rec_;
    i16 length_ = 0;
};

i32 block_address(i16 channel, i16 offset) {
    return narrow<i32>(settings.REGBase + std::int64_t{registers_per_channel} * channel + offset);
}

} // namespace

void TCP_send(i16 channel, i16 block) {
    const image_row* const first = first_row(block);
    if (first == nullptr) return;
    block_writer writer(channel);
    for (const image_row& row : image) {
        if (row.block == block) writer.add(row);
    }
    const i32 address = block_address(channel, first->offset);
    // Looks like a mistake and stays: the operator's number is replaced, but not in the settings file
    // (RegisterImage.ShowsTheBlockSentLastAndLeavesTheOtherBoxes).
    settings.REGNumber = writer.length();
    FrmSetupTCP::state.Txt_sendbase = plain(address);
    FrmSetupTCP::state.Txt_regnumber = plain(settings.REGNumber);
    FC16MB_write(address, settings.REGNumber);
}

} // namespace tyxo
