// libFuzzer's entry point for one target; the build names the target in TITRON_FUZZ_TARGET.
#include <cstddef>
#include <cstdint>
#include <string_view>

#include "fuzz/fuzz_targets.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    titron::fuzz::TITRON_FUZZ_TARGET(std::string_view(reinterpret_cast<const char*>(data), size));
    return 0;
}
