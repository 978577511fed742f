// Files that the library carries inside, where there are none around it: in WebAssembly. Private to the library.
#pragma once

#include <string_view>

namespace quor::input::gaussian {

/// Returns the file that is carried under a name, as "words.tsv" or "gaussian_route.yaml.image"; empty for any other, and in
/// all builds that carry nothing.
std::string_view carried_resource(std::string_view name) noexcept;

}  // namespace quor::input::gaussian
