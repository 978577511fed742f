// Lists the kinds of extra input sections.
#include "section_names.hpp"

#include <gjf/gjf.hpp>

#include <string_view>

namespace quor_gjf {
namespace {

using namespace quor::input::gaussian;

std::string padded(std::string_view text, std::size_t width) {
    std::string result(text);
    result.append(width > text.size() ? width - text.size() : 0, ' ');
    return result;
}

}  // namespace

std::string section_kind_list() {
    std::string list;
    for (std::size_t i = 0; const auto kind = find_extra_input_kind(std::to_string(i)); ++i) {
        const std::string request = extra_input_request(*kind);
        list += padded(std::to_string(i), 4) + padded(extra_input_short_name(*kind), 18) + extra_input_kind_name(*kind);
        list += request.empty() ? "\n" : " (" + request + ")\n";
    }
    return list;
}

}  // namespace quor_gjf
