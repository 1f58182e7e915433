#pragma once
// The functions that turn numbers into texts and back, each against another way to the same result.

#include "fuzz/input.h"

namespace tyxo::fuzzing {

void check_numbers(input& in);
void check_texts(input& in);
void check_pictures(input& in);

} // namespace tyxo::fuzzing
