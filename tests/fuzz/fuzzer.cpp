// What libFuzzer calls; TARGET is the fuzzer of this executable.

#include "fuzz/targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    tyxo::fuzzing::TARGET({data, size});
    return 0;
}
