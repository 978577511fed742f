// How keywords with options and the model chemistry are written in a route.
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

std::string format_model_chemistry(const ParsedKeywords& route) {
    if (!route.oniom_expression.empty()) {
        return route.oniom_expression;
    }
    if (route.method.empty()) {
        return route.basis_set.empty() ? std::string() : "basis=" + route.basis_set;
    }
    std::string text = route.method_options.empty() ? route.method : route.method_options;
    if (route.basis_set.empty()) {
        return text;
    }
    text += "/" + route.basis_set;
    if (!route.density_fitting_basis.empty()) {
        text += "/" + route.density_fitting_basis;
    }
    if (!route.secondary_method.empty() && !route.secondary_basis_set.empty()) {
        text += "//" + (route.secondary_method_options.empty() ? route.secondary_method : route.secondary_method_options);
        text += "/" + route.secondary_basis_set;
    }
    return text;
}

}  // namespace quor::input::gaussian
