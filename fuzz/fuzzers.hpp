// The entry of every fuzzer: bytes in, 0 out, and an abort when a property does not hold.
//
// libFuzzer calls one of them through entry.cpp; tests/regressions replays stored inputs through all of them without clang.
#pragma once

#include <cstddef>
#include <cstdint>

namespace quor::fuzz {

int job_text(const std::uint8_t* data, std::size_t size);
int multi_job(const std::uint8_t* data, std::size_t size);
int route(const std::uint8_t* data, std::size_t size);
int schema_document(const std::uint8_t* data, std::size_t size);
int schema_image(const std::uint8_t* data, std::size_t size);
int editor_operations(const std::uint8_t* data, std::size_t size);
int check_text(const std::uint8_t* data, std::size_t size);
int document(const std::uint8_t* data, std::size_t size);
int messages(const std::uint8_t* data, std::size_t size);
int outputs(const std::uint8_t* data, std::size_t size);
int c_interface(const std::uint8_t* data, std::size_t size);

}  // namespace quor::fuzz
