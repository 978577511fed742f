// What a job asks of the machine, for the limits of a site. Private to the room.
#pragma once

#include <gjf/core/check/checked_job.hpp>

#include <cstdint>
#include <optional>

namespace quor::input::gaussian {

/// An amount and where it stands.
struct AskedAmount {
    std::int64_t amount = 0;
    TextPlace place;
};

/// Returns the bytes of %mem; absent where there is none, or none that can be read.
std::optional<AskedAmount> asked_memory(const CheckedJob& job);
/// Returns the cores of %cpu, or of %nprocshared.
std::optional<AskedAmount> asked_cores(const CheckedJob& job);

}  // namespace quor::input::gaussian
