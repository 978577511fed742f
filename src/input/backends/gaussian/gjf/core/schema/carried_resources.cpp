// What is carried is written by the build for WebAssembly, which defines the macro as the path of its source.
#include <gjf/core/schema/carried_resources.hpp>

#include <iterator>
#include <utility>

namespace quor::input::gaussian {

#if defined(QUOR_GJF_CARRIED_RESOURCES)

namespace {

constexpr std::pair<std::string_view, std::string_view> resources[] = {
#include QUOR_GJF_CARRIED_RESOURCES
};

}  // namespace

std::string_view carried_resource(std::string_view name) noexcept {
    for (const auto& [key, text] : resources) {
        if (key == name) {
            return text;
        }
    }
    return {};
}

#else

std::string_view carried_resource(std::string_view) noexcept { return {}; }

#endif

}  // namespace quor::input::gaussian
