#include "link/engine_texts.h"

#include "basics/number_text.h"

namespace tyxo {

namespace {

struct cylinder_place {
    std::string bank;
    i32 number;
};

std::optional<cylinder_place> place_of(i32 entry) {
    constexpr i32 bank_a = 100;
    constexpr i32 bank_b = 200;
    if (entry > bank_b) return cylinder_place{"B", entry - bank_b};
    if (entry > bank_a && entry < bank_b) return cylinder_place{"A", entry - bank_a};
    if (entry < bank_a) return cylinder_place{"", entry};
    return std::nullopt;
}

} // namespace

std::optional<std::string> cylinder_text(i32 entry) {
    const auto place = place_of(entry);
    if (!place) return std::nullopt;
    return plain(place->number) + place->bank;
}

std::optional<std::string> bank_and_cylinder(i32 entry) {
    const auto place = place_of(entry);
    if (!place) return std::nullopt;
    return place->bank + plain(place->number);
}

std::string arrangement_text(const channel_rec& rec) {
    return plain(rec.numzyl) +
           (rec.cylconf == arrangement::v_type ? " cylinder V - type" : " cylinder in line");
}

} // namespace tyxo
