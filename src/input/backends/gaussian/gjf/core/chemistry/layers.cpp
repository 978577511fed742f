// Names of the ONIOM layers.
#include <gjf/core/chemistry/layers.hpp>

#include <gjf/core/text/text.hpp>

namespace quor::input::gaussian {

char layer_letter(std::string_view name) noexcept {
    if (name.empty()) {
        return 0;
    }
    for (const std::string_view known : {"high", "medium", "low"}) {
        if (equals_folded(name, known.substr(0, name.size()))) {
            return known.front();
        }
    }
    return '?';
}

}  // namespace quor::input::gaussian
