// Where the fuzzer's own main comes in.
#include <cstddef>
#include <cstdint>

#include "fuzz/FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    TryInput({reinterpret_cast<const char*>(data), size});
    return 0;
}
