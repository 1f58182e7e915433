#pragma once
// All fuzzers: each does with the system what its input says, and ends the process when a rule is broken.

#include "fuzz/input.h"

namespace tyxo::fuzzing {

void received_bytes(input in);
void settings_file(input in);
void modbus_answers(input in);
void curves_and_engines(input in);
void numbers_and_texts(input in);
void files_found(input in);
void logs_read(input in);

} // namespace tyxo::fuzzing
