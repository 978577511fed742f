// How a keyword with options is written in a route.
#include <gjf/core/route/option_syntax.hpp>

#include <gjf/core/text/text.hpp>

namespace quor::input::gaussian {

std::string format_keyword(const std::string& name, const std::vector<RouteOption>& options) {
    if (options.empty()) {
        return name;
    }
    const bool is_iop = equals_folded(name, "iop");
    if (!is_iop && options.size() == 1 && !options.front().value) {
        return name + "=" + options.front().name;
    }
    std::string text = name + (is_iop ? "(" : "=(");
    for (const RouteOption& option : options) {
        text += &option == &options.front() ? "" : ",";
        text += option.name;
        if (option.value) {
            text += "=" + *option.value;
        }
    }
    return text + ")";
}

std::vector<RouteOption> to_route_options(const std::map<std::string, std::string>& options) {
    std::vector<RouteOption> list;
    list.reserve(options.size());
    for (const auto& [name, value] : options) {
        const bool bare = value.empty() || value == "TRUE";
        list.push_back({name, bare ? std::nullopt : std::optional<std::string>(value)});
    }
    return list;
}

}  // namespace quor::input::gaussian
