#include "fuzz/numbers_and_texts.h"

#include "fuzz/targets.h"

namespace tyxo::fuzzing {

void numbers_and_texts(input in) {
    constexpr auto checks = std::to_array<void (*)(input&)>({check_numbers, check_texts, check_pictures});
    at(checks, in.below(static_cast<i32>(checks.size())))(in);
}

} // namespace tyxo::fuzzing
