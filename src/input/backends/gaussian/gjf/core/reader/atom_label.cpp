// Reads atom labels: element, molecular-mechanics type and charge, parameters.
#include <gjf/core/reader/gjf_parser.hpp>

#include <gjf/core/reader/molecule_fields.hpp>
#include <gjf/core/text/number.hpp>
#include <gjf/core/text/text.hpp>

#include <algorithm>
#include <cmath>

namespace quor::input::gaussian {
namespace {

void read_label_parameters(std::string_view list, AtomInfo& info) {
    while (!list.empty()) {
        const std::size_t comma = std::min(list.find(','), list.size());
        const std::string_view item = list.substr(0, comma);
        list.remove_prefix(std::min(comma + 1, list.size()));
        const std::size_t equals = item.find('=');
        if (equals == std::string_view::npos) {
            const std::string_view key = trim_view(item);
            if (!key.empty()) {
                info.params[std::string(key)].clear();
            }
            continue;
        }
        const NameAndValue entry = cut_at_equals(item, equals);
        info.params[std::string(entry.name)] = entry.value;
    }
}

// Finds the first "-" after which the rest of the head is a finite number.
std::size_t find_charge_dash(std::string_view head, double& charge) noexcept {
    for (std::size_t dash = head.find('-'); dash != std::string_view::npos; dash = head.find('-', dash + 1)) {
        const std::optional<double> number = to_number(trim_view(head.substr(dash + 1)));
        if (number && std::isfinite(*number)) {
            charge = *number;
            return dash;
        }
    }
    return std::string_view::npos;
}

}  // namespace

void read_atom_label(std::string_view label, AtomInfo& info) {
    const std::size_t open = label.find('(');
    const std::size_t close = open == std::string_view::npos ? open : label.find(')', open);
    if (close != std::string_view::npos) {
        read_label_parameters(label.substr(open + 1, close - open - 1), info);
        label = label.substr(0, open);
    }
    std::string_view head = trim_view(label);
    double charge = 0;
    const std::size_t charge_dash = find_charge_dash(head, charge);
    if (charge_dash != std::string_view::npos) {
        info.mm_charge = charge;
        head = head.substr(0, charge_dash);
    }
    const std::size_t dash = head.find('-');
    if (dash == std::string_view::npos) {
        info.element = head;
        return;
    }
    info.element = trim_view(head.substr(0, dash));
    const std::string_view type = trim_view(head.substr(dash + 1));
    if (!type.empty()) {
        info.mm_type = type;
    }
}

void name_dummy(AtomInfo& info) {
    if (info.element.empty() && !info.mm_charge && !info.mm_type && info.params.empty()) {
        info.element = "-";
    }
}

AtomInfo GJFParser::parse_atom_info(const std::string& label) {
    AtomInfo info;
    read_atom_label(label, info);
    return info;
}

}  // namespace quor::input::gaussian
