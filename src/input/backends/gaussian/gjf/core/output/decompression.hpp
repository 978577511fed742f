// Takes gzip and xz apart as they are read. Private to the room.
#pragma once

#include <gjf/core/output/output_source.hpp>

#include <memory>
#include <string>

namespace quor::input::gaussian {

/// The sources of what `packed` holds; `begin` are bytes that were read from it already.
/// Throws `OutputError` where the library was built without the form.
std::unique_ptr<OutputSource> gzip_source(std::unique_ptr<OutputSource> packed, std::string begin);
std::unique_ptr<OutputSource> xz_source(std::unique_ptr<OutputSource> packed, std::string begin);

}  // namespace quor::input::gaussian
