// Hands libFuzzer's bytes to the one fuzzer that QUOR_FUZZER names.
#include "fuzzers.hpp"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    return quor::fuzz::QUOR_FUZZER(data, size);
}
