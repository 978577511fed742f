// Tells whether the facts that checks rest upon are there.
#pragma once

#include <core/export.hpp>

#include <string>

namespace quor::input::gaussian {

/// Returns what keeps a table of facts from being read, with its path; empty when all are there. Without them checks are
/// silent on much, so that a job which passes was hardly checked.
QUOR_GJF_API std::string missing_knowledge();

}  // namespace quor::input::gaussian
