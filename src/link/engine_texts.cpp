#include "link/engine_texts.h"

#include "basics/number_text.h"

namespace tyxo {

std::optional<std::string> cylinder_text(i32 entry) {
    constexpr i32 bank_a = 100;
    constexpr i32 bank_b = 200;
    if (entry > bank_b) return plain(entry - bank_b) + 'B';
    if (entry > bank_a && entry < bank_b) return plain(entry - bank_a) + 'A';
    if (entry < bank_a) return plain(entry);
    return std::nullopt;
}

std::string arrangement_text(const channel_rec& rec) {
    return plain(rec.numzyl) +
           (rec.cylconf == arrangement::v_type ? " cylinder V - type" : " cylinder in line");
}

} // namespace tyxo
