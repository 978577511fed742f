// TOML into settings. Private to the room: no other source knows the TOML library.
#pragma once

#include <gjf/core/configuration/configuration.hpp>

#include <string>
#include <vector>

namespace quor::input::gaussian {

/// Returns all keys of a TOML text with their lines, in no certain order. Throws `ConfigurationError`.
std::vector<Setting> toml_settings(const std::string& text, const std::string& file);

}  // namespace quor::input::gaussian
