// Reads whatever the fuzzer makes up as a data file, as it is and with right check sums.

#include "tests/fuzz/WriteBack.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const bytes(reinterpret_cast<char const*>(data), size);
    if (!WriteBack(bytes).same || !WriteBack(WithCheckSums(bytes)).same) {
        std::abort();
    }
    return 0;
}
