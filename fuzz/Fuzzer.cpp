// One target as a program: the fuzzer's main function calls this for each input. An exception that leaves it ends the
// program, and the fuzzer keeps the input.

#include <cstddef>
#include <cstdint>

#include "fuzz/Targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    Fuzz::MORVUT_FUZZ_TARGET({reinterpret_cast<const char*>(data), size});
    return 0;
}
